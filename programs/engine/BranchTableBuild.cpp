#include <QHash>

#include "platform/host/CaseTransfer.h"
#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/BranchTable.h"
#include "programs/engine/BulkUpdate.h"
#include "programs/engine/CNetDataCal.h"
#include "programs/frame/Messages.h"

namespace {

const QStringList kColumns{"ID_Name", "ID_No", "I_Name", "J_Name", "Flg"};

struct Source {
    int flg;
    const char* table;
    const char* columns;
    const char* condition;
    const char* failure;
};

constexpr char kBranch[] = "ID_Name,ID_No,I_Name,J_Name";

constexpr Source kSources[] = {
    {1, "L2_", kBranch, "Valid<=>1 AND NType <=>1 AND I_Break!=0 AND J_Break!=0 ",
     QT_TRANSLATE_NOOP("Text", "转换线路数据失败")},
    {2, "L3_", kBranch, "NType<=>1 AND Valid<=>1", QT_TRANSLATE_NOOP("Text", "转换双绕组变压器数据失败")},
    {3, "L3_", kBranch, "( NType<=>31 OR NType<=>32 OR NType<=>33 ) AND Valid<=>1",
     QT_TRANSLATE_NOOP("Text", "转换三绕组变压器数据失败")},
    {4, "L2_", kBranch, "Valid<=>1 AND NType <=>3 AND X1<0", QT_TRANSLATE_NOOP("Text", "转换电容器数据失败")},
    {5, "L2_", kBranch, "Valid<=>1 AND NType <=>3 AND X1>0", QT_TRANSLATE_NOOP("Text", "转换电抗器数据失败")},
    {6, "L5_", "ID_Name,0,Node_Name,Node_Name", "Valid<=>1 ", QT_TRANSLATE_NOOP("Text", "转换发电机数据失败")},
};

bool insertFrom(const Source& source, int lfCase) {
    sql::Query q;
    q.quietly();
    if (!q.exec(QString(" SELECT ") + source.columns + " FROM " + source.table + QString::number(lfCase) + " WHERE " +
                source.condition)) {
        ReportError(Text::tr(source.failure), 0);
        return false;
    }
    QVector<QVariantList> rows;
    while (q.next()) rows.push_back({q.text(0), q.number(1), q.text(2), q.text(3), source.flg});
    return sql::insertRows({}, "RLY_RRBRANCH_TEM", kColumns, rows);
}

int busNumber(const QString& node, QHash<QString, int>& known) {
    auto it = known.find(node);
    if (it == known.end()) it = known.insert(node, GetNodeBsNo_FromRTDB(sql::toGbk(node).constData()));
    return *it;
}

}  // namespace

bool CNetDataCal::BuildBranchTable(int lfCase) {
    BranchTable::invalidate();
    if (!sql::Query().exec("TRUNCATE TABLE RLY_RRBRANCH_TEM")) return false;
    for (const Source& source : kSources)
        if (!insertFrom(source, std::max(lfCase, 0))) return false;
    return true;
}

bool CNetDataCal::NumberBranchNodes() {
    BranchTable::invalidate();
    QHash<QString, int> known;
    QVector<QVariantList> rows;
    sql::Query q;
    if (!q.exec("SELECT ID,I_Name,J_Name FROM RLY_RRBRANCH_TEM")) return false;
    while (q.next()) rows.push_back({q.number(0), busNumber(q.text(1), known), busNumber(q.text(2), known)});
    return updateByKey("RLY_RRBRANCH_TEM", {"ID", "I_No", "J_No"}, rows);
}
