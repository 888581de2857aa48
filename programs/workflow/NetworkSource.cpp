#include "programs/workflow/NetworkSource.h"

#include <algorithm>

#include "platform/host/Text.h"
#include "platform/host/WinDockFeedback.h"
#include "platform/rtdb/CaseRecords.h"
#include "platform/rtdb/dbCursor.h"
#include "platform/rtdb/dbDatabase.h"
#include "platform/sql/Sql.h"
#include "programs/engine/BranchTable.h"
#include "programs/engine/CCaseCal.h"
#include "programs/engine/CNetDataCal.h"
#include "programs/engine/RunInputs.h"

namespace {

constexpr char kStabilityHeader[] =
    "SELECT CASE_LF,ST_SC,T_Total,DT_Step,F60,EQ_Method,EQ_Continu,Ctrl_Fault,CTRL_UD,CTRL_DIST,UP_CAL,Calculate,"
    "UDOUT,CAL_DATE,CAL_TIME,UD_TIME,Nup,Nbus,Ngenerat,Nload,Nacline,Ndcline,Ntrans,Nsvc,Nfault,Ndist,Istable,"
    "Tstable,Note FROM ST_CASE WHERE Case_No = 0";
constexpr char kLoadFlowHeader[] =
    "SELECT Case_No,SCHEME,Vmax,Vmin,Tolerance,Method,Iteration,Ctrl_Area,Ctrl_ud,Ctrl_sub,Ctrl_Fact,EQ_Method,"
    "UP_CALL,CALCULATE,L23chged,UDOUT,CAL_Date,CAL_Time,UD_Time,NUP,Nbus,Ngenerat,Nload,Nacline,Ndcline,Ntrans,"
    "ChgDT,Note FROM LF_CASE WHERE Case_No = ?";

bool warn(const QString& text) {
    WinDockFeedback::ShowMessage(text.toUtf8().constData(), "", "", "", WinDockFeedback::Warning);
    return false;
}

/// Fills the fields of a record from the columns of a row, by position; fields without a column keep what they have.
struct HeaderReader {
    const sql::Query& row;
    int column;
    int columns;

    int take() { return column >= 0 && column < columns ? column++ : (++column, -1); }
    void operator()(const char*, int& value) {
        if (const int at = take(); at >= 0) value = row.number(at);
    }
    void operator()(const char*, double& value) {
        if (const int at = take(); at >= 0) value = row.real(at);
    }
    void operator()(const char*, QString& value) {
        if (const int at = take(); at >= 0) value = row.text(at);
    }
};

/// Runs a header query onto its only row.
bool onHeader(sql::Query& query, const char* text, const QVariantList& values, const QString& kind) {
    if (!query.quietly().exec(text, values)) {
        WinDockFeedback::ShowMessage(query.errorText().toUtf8().constData(), "", "", "", WinDockFeedback::Information);
        return warn(Text::tr("查询") + kind + Text::tr("作业信息发生错误！"));
    }
    return query.next() || warn(kind + Text::tr("作业信息表中没有当前作业号的记录！"));
}

template <class Record>
bool replaceHeader(dbDatabase& fdb, const Record& record) {
    dbCursor<Record> cursor(fdb, dbCursorForUpdate);
    return cursor.removeAll() && cursor.insert(record) && fdb.commit();
}

}  // namespace

void NetworkSource::setLoaded(int mlf, int lfCase, const QString& scheme) {
    mlf_ = mlf;
    lfCase_ = lfCase;
    scheme_ = scheme;
}

bool NetworkSource::differs(int mlf, int lfCase, const QString& scheme) const {
    if (mlf != mlf_) return true;
    return mlf == 1 ? lfCase != lfCase_ : scheme != scheme_;
}

bool NetworkSource::SwitchNetwork(int mlf, int lfCase, const QString& scheme) {
    if (!differs(mlf, lfCase, scheme)) return false;
    setLoaded(mlf, lfCase, scheme);
    const int n = std::max(lfCase, 0);
    CNetDataCal netData;
    CCaseCal caseCal;
    caseCal.setDatabase(&fdb_);
    whole_ = netData.ConvertCaseData(n, scheme, mlf, &fdb_);
    whole_ = netData.BuildBranchTable(n) && whole_;
    whole_ = fdb_.commit() && whole_;
    caseCal.AnalyzeTopology();
    whole_ = netData.NumberBranchNodes() && whole_;
    whole_ = fdb_.commit() && whole_;
    BranchTable::invalidate();
    if (!whole_) setLoaded(-1, 0, {});  // neither network stands there: the next switch builds it anew
    return true;
}

QVector<int> NetworkSource::relaysOutside(const QVector<int>& relays) {
    RunInputs inputs(0, 0, {});
    QVector<int> outside;
    for (const int relay : relays) {
        const auto* installed = inputs.relay(relay);
        if (installed && !installed->block) outside.append(relay);
    }
    return outside;
}

bool NetworkSource::loadStabilityHeader() {
    sql::Query query;
    if (!onHeader(query, kStabilityHeader, {}, Text::tr("暂稳"))) return false;
    norvdb::case_st record;
    record.visit(HeaderReader{query, -1, 29});
    record.case_no = 0;
    record.calculate = -1.0;
    record.accuracy = 0.0005;
    record.note = sql::cutToGbk(record.note, 100);
    return fdb_.commit() && replaceHeader(fdb_, record);
}

bool NetworkSource::loadLoadFlowHeader(int lfCase) {
    sql::Query query;
    if (!onHeader(query, kLoadFlowHeader, {lfCase}, Text::tr("潮流"))) return false;
    norvdb::case_lf record;
    record.visit(HeaderReader{query, 0, 28});
    record.case_no = lfCase;
    return replaceHeader(fdb_, record);
}

bool NetworkSource::LoadCaseHeaders(int lfCase) {
    return loadStabilityHeader() && loadLoadFlowHeader(std::max(lfCase, 0));
}
