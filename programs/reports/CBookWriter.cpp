#include "programs/reports/CBookWriter.h"

#include <QFile>
#include <algorithm>

#include "platform/host/Text.h"
#include "platform/host/WinDockFeedback.h"
#include "platform/sql/Sql.h"
#include "programs/engine/Sensitivity.h"
#include "programs/frame/Messages.h"
#include "programs/reports/BookText.h"

namespace {

bool fail() {
    ReportError(Text::tr("生成计算书失败"), 0);
    return false;
}

/// The plain book writes 0 where a rule has no result, for instance because its run was ended.
void tellWithoutResult(const BookContent& book) {
    qsizetype count = 0;
    for (const BookPart& part : book.parts)
        count += std::count_if(part.rules.begin(), part.rules.end(), [](const auto& r) { return r.withoutResult(); });
    if (count == 0) return;
    const QString text = Text::tr("计算书中没有结果、写作0的规则数: ") + QString::number(count);
    WinDockFeedback::ShowMessage(text.toUtf8().constData(), "", "", "", WinDockFeedback::Information);
}

}  // namespace

CBookWriter::CBookWriter(int caseNo, int rTypeNo, const QString& typeText, const QString& caseName,
                         std::function<QDateTime()> clock)
    : request_{caseNo, rTypeNo, typeText, caseName}, clock_(std::move(clock)) {}

bool CBookWriter::WriteSettingBook(const QString& workDir) { return write(workDir, false); }
bool CBookWriter::WriteKlmBook(const QString& workDir) { return write(workDir, true); }

bool CBookWriter::hasResults() const {
    if (sql::scalar({}, "SELECT COUNT(*) FROM RLY_RDZTEM WHERE Case_No=?", {request_.caseNo}).toInt() > 0) return true;
    ReportError(Text::tr("没有计算结果，不能生成计算书"), 0);
    return false;
}

bool CBookWriter::write(const QString& workDir, bool sensitivity) {
    QFile file(workDir + "CalRef.ROT");
    file.remove();
    if (!file.open(QIODevice::ReadWrite)) return fail();
    request_.sensitivity = sensitivity;
    if (const auto book = readBookContent(request_)) {
        const QByteArray bytes = bookBytes(bookText(*book, clock_()));
        tellWithoutResult(*book);
        if (file.write(bytes) == bytes.size() && file.flush()) return true;
    }
    file.remove();
    return fail();
}

double CBookWriter::CalKlmForBook(int rTypeNo, int rNo, int pNo, const QString& cdz, double value) {
    return quietSensitivity(rTypeNo, rNo, pNo, cdz, value);
}
