#include "platform/host/CaseTransfer.h"

#include <QHash>
#include <QSqlDatabase>
#include <QVector>
#include <cstring>

#include "platform/host/BaseTables.h"
#include "platform/host/CaseTables.h"
#include "platform/host/RealTimeRows.h"
#include "platform/host/Text.h"
#include "platform/host/WinDockFeedback.h"
#include "platform/rtdb/dbStatement.h"
#include "platform/sql/Sql.h"

namespace {

QString connectionOf(const QSqlDatabase* database) { return database ? database->connectionName() : QString(); }

/// The case numbers are those of the calculation tables; a case without a load flow stands on number 0.
int tableNumber(int caseNo) { return caseNo > 0 ? caseNo : 0; }

/// A name that no scheme has gives the base network, which must not happen unseen.
void warnOfUnknownScheme(const QString& connection, const QString& scheme) {
    if (scheme.trimmed().isEmpty()) return;
    const QString text = "SELECT COUNT(*) FROM CDB_SCHEMEINFBAK WHERE SchName=?";
    if (sql::scalar(connection, text, {scheme}, 1).toInt() > 0) return;
    const QString line = Text::tr("没有方案“") + scheme + Text::tr("”，取基础网络");
    WinDockFeedback::ShowMessage(line.toUtf8().constData(), "", "", "", WinDockFeedback::Warning);
}

}  // namespace

CLFCalDataTransfer::CLFCalDataTransfer(const char* scheme, QSqlDatabase* database)
    : scheme_(sql::fromGbk(scheme)), connection_(connectionOf(database)) {}

int CLFCalDataTransfer::ImportLDataFromBaseDB() {
    if (!host::createTables(connection_, host::calculationLayouts(0))) return 0;
    sql::Transaction whole(connection_);
    return host::fillCalculationTables(connection_, 0, scheme_) &&
           sql::Query(connection_).exec("UPDATE LF_CASE SET SCHEME=? WHERE Case_No=0", {scheme_}) && whole.commit();
}

CSTCalDataTransfer::CSTCalDataTransfer(const char* scheme, QSqlDatabase* database)
    : scheme_(sql::fromGbk(scheme)), connection_(connectionOf(database)) {}

int CSTCalDataTransfer::ImportSDataFromBaseDB() {
    warnOfUnknownScheme(connection_, scheme_);
    if (!host::createTables(connection_, host::calculationLayouts(0))) return 0;
    sql::Transaction whole(connection_);
    return host::fillSequenceTables(connection_, scheme_) && whole.commit();
}

CLFCalDataToRTDB::CLFCalDataToRTDB(int caseNo, QSqlDatabase* database)
    : caseNo_(tableNumber(caseNo)), connection_(connectionOf(database)) {}

void CLFCalDataToRTDB::InValidateLFCalDataInRTDB(bool all) {
    dbDatabase* realTime = dbDatabase::current();
    if (!realTime) return;
    realTime->setFact("load_flow", "0");
    if (all) host::emptyNetwork(*realTime);
}

int CLFCalDataToRTDB::ImportLDataToRTDB() {
    dbDatabase* realTime = dbDatabase::current();
    if (!realTime || !host::emptyNetwork(*realTime)) return 0;
    const QVariant scheme = sql::scalar(connection_, "SELECT SCHEME FROM LF_CASE WHERE Case_No=?", {caseNo_});
    return realTime->setFact("load_flow", "0") && realTime->setFact("scheme", scheme.toString()) &&
           host::writeNetwork(*realTime, connection_, caseNo_);
}

CSTCalDataToRTDB::CSTCalDataToRTDB(int caseNo, QSqlDatabase* database)
    : caseNo_(tableNumber(caseNo)), connection_(connectionOf(database)) {}

int CSTCalDataToRTDB::ImportSDataToRTDB() {
    dbDatabase* realTime = dbDatabase::current();
    return realTime && host::writeSequenceData(*realTime, connection_, caseNo_);
}

CLFResultDataTransfer::CLFResultDataTransfer(int caseNo, QSqlDatabase* database, dbDatabase* realTime, bool, int)
    : caseNo_(tableNumber(caseNo)), connection_(connectionOf(database)), realTime_(realTime) {}

int CLFResultDataTransfer::ImportLFResultDataToRTDB() {
    return realTime_ && realTime_->isOpen() && host::writeLoadFlow(*realTime_, connection_, caseNo_) &&
           realTime_->setFact("load_flow", "1");
}

int GetNodeBsNo_FromRTDB(const char* nodeName) {
    // Asked once for every node of a network: the table is read when it has changed, not for each name.
    static QHash<QByteArray, int> buses;
    static qint64 readAt = -1;
    dbDatabase* realTime = dbDatabase::current();
    if (!realTime) return 0;
    if (readAt != realTime->changeCount()) {
        buses.clear();
        dbStatement statement(*realTime, "SELECT id,ibs FROM nd");
        while (statement.step()) buses.insert(statement.bytes(0), static_cast<int>(statement.whole(1)));
        readAt = realTime->changeCount();
    }
    return buses.value(QByteArray(nodeName));
}
