#include "programs/engine/CNetDataCal.h"

#include "exchange/FileNames.h"
#include "exchange/RealTimeNameFile.h"
#include "platform/host/CaseTransfer.h"
#include "platform/host/Text.h"
#include "platform/host/WinDockFeedback.h"
#include "platform/sql/Sql.h"
#include "programs/engine/WorkFiles.h"

namespace {

QString schemeOf(int lfCase) {
    return sql::scalar({}, "SELECT SCHEME FROM LF_CASE WHERE Case_No=?", {lfCase}, QString()).toString();
}

void inform(const QString& text) {
    WinDockFeedback::ShowMessage(text.toUtf8().constData(), "", "", "", WinDockFeedback::Information);
}

}  // namespace

CNetDataCal::CNetDataCal() : process_(std::make_unique<EngineProcess>(exchange::file::kConverterProgram, 0)) {}

bool CNetDataCal::ConvertCaseData(int lfCase, QString scheme, int onLoadFlow, dbDatabase* fdb) {
    if (onLoadFlow == 1) scheme = schemeOf(lfCase);
    const QByteArray name = sql::toGbk(scheme);
    CSTCalDataTransfer zeroFromBase(name.constData(), nullptr);
    CSTCalDataToRTDB zeroToRtdb(0, nullptr);
    CLFCalDataTransfer fromBase(name.constData(), nullptr);
    CLFCalDataToRTDB toRtdb(lfCase, nullptr);
    CLFResultDataTransfer results(lfCase, nullptr, fdb, false, 14);
    toRtdb.InValidateLFCalDataInRTDB(true);
    bool done = onLoadFlow == 1 || fromBase.ImportLDataFromBaseDB() == 1;
    done = toRtdb.ImportLDataToRTDB() == 1 && done;
    done = zeroFromBase.ImportSDataFromBaseDB() == 1 && done;
    done = zeroToRtdb.ImportSDataToRTDB() == 1 && done;
    if (onLoadFlow == 1) done = results.ImportLFResultDataToRTDB() == 1 && done;
    if (done) inform(onLoadFlow == 1 ? Text::tr("潮流数据转换完毕") : Text::tr("方案数据转换完毕"));
    return done;
}

bool CNetDataCal::RunConversion(const QString& exeDir, const QString& workDir, const QString& rtdbName,
                                const QString& rtdbPath) {
    for (const char* file : exchange::file::kConverterFiles) work::remove(workDir, file);
    const exchange::RealTimeName name{work::gbk(rtdbName), work::gbk(rtdbPath)};
    if (!work::write(workDir, exchange::file::kRealTimeName, exchange::format(name))) return false;
    return process_->start(exeDir, workDir);
}
