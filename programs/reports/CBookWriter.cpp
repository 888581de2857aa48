#include "programs/reports/CBookWriter.h"

#include <QFile>

#include "platform/host/Text.h"
#include "programs/engine/Sensitivity.h"
#include "programs/frame/Messages.h"
#include "programs/reports/BookText.h"

namespace {

bool fail() {
    ReportError(Text::tr("生成计算书失败"), 0);
    return false;
}

}  // namespace

CBookWriter::CBookWriter(int caseNo, int rTypeNo, const QString& typeText, const QString& caseName,
                         std::function<QDateTime()> clock)
    : request_{caseNo, rTypeNo, typeText, caseName}, clock_(std::move(clock)) {}

bool CBookWriter::WriteSettingBook(const QString& workDir) { return write(workDir, false); }
bool CBookWriter::WriteKlmBook(const QString& workDir) { return write(workDir, true); }

bool CBookWriter::write(const QString& workDir, bool sensitivity) {
    QFile file(workDir + "CalRef.ROT");
    file.remove();
    if (!file.open(QIODevice::ReadWrite)) return fail();
    request_.sensitivity = sensitivity;
    if (const auto book = readBookContent(request_)) {
        const QByteArray bytes = bookBytes(bookText(*book, clock_()));
        if (file.write(bytes) == bytes.size() && file.flush()) return true;
    }
    file.remove();
    return fail();
}

double CBookWriter::CalKlmForBook(int rTypeNo, int rNo, int pNo, const QString& cdz, double value) {
    return quietSensitivity(rTypeNo, rNo, pNo, cdz, value);
}
