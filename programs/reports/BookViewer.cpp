#include "programs/reports/BookViewer.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QStandardPaths>

#include "platform/host/Text.h"
#include "programs/frame/Messages.h"

bool showBook(const QString& file, const QString& folder) {
    const QString beside = folder.isEmpty() ? QCoreApplication::applicationDirPath() : folder;
    QString program = QStandardPaths::findExecutable("NotePad", {beside});
    if (program.isEmpty()) program = QStandardPaths::findExecutable("NotePad");
    if (!program.isEmpty() && QProcess::startDetached(program, {QDir::toNativeSeparators(file)})) return true;
    ReportError(Text::tr("生成计算书失败"), 1);
    return false;
}
