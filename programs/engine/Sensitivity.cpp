#include "programs/engine/Sensitivity.h"

#include <optional>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/BulkUpdate.h"
#include "programs/engine/CRelayInputCal.h"
#include "programs/frame/Messages.h"
#include "programs/frame/TableNames.h"

namespace {

constexpr int kSensitivityCase = 0;

void tellUnusable() {
    const int count =
        sql::scalar({}, "SELECT COUNT(*) FROM RLY_RDZTEM WHERE Case_No=? AND NOT RDz>0", {kSensitivityCase}, 0).toInt();
    if (count > 0)
        ReportError(Text::tr("参量类型错误或数值小于等于零（") + QString::number(count) + Text::tr("项）"), 1);
}

/// What a check stands on.
struct CheckRow {
    double parameter1, parameter2;
    int flg, klmFlg;
};

std::optional<CheckRow> checkRow(int rTypeNo, int rno, int pno, const QString& cdz) {
    sql::Query q;
    q.exec("SELECT RFault1,RFault2,Flg FROM RLY_RKLMTEM_TEM WHERE RNo=? AND PNo=? AND CDz=?", {rno, pno, cdz});
    if (!q.next()) return std::nullopt;
    sql::Query k(tables::ruleConnection);
    k.exec("SELECT KlmFlg FROM USEFKLM WHERE RTypeNo=? AND PNo=? AND CDz=?", {rTypeNo, pno, cdz});
    return CheckRow{q.real(0), q.real(1), q.number(2), k.next() ? k.number(0) : 0};
}

}  // namespace

int klmFlgOf(const RuleData& rules, int rTypeNo, int pno, const QString& cdz) {
    for (const SensitivityCheck& check : rules.sensitivityChecks(rTypeNo))
        if (check.pno == pno && check.cdz == cdz) return check.klmFlg;
    return 0;
}

double sensitivityParameter(double parameter1, double parameter2, int flg) {
    return firstParameterInUse(flg) ? parameter1 : parameter2;
}

bool isSensitivityOpen(double parameter1, double parameter2, int flg) {
    return sensitivityParameter(parameter1, parameter2, flg) == kParameterNotComputed;
}

double quietSensitivity(double parameter1, double parameter2, int flg, int klmFlg, double setting) {
    const double parameter = sensitivityParameter(parameter1, parameter2, flg);
    if (klmFlg == 2) return parameter != 0 ? setting / parameter : kNoSensitivity;
    if (klmFlg == 1) return setting != 0 ? parameter / setting : kSettingIsZero;
    return kNoSensitivity;
}

double sensitivityOf(double parameter1, double parameter2, int flg, int klmFlg, double setting) {
    if (klmFlg == 2 && sensitivityParameter(parameter1, parameter2, flg) == 0)
        ReportError(Text::tr("参量值不能为0，请重新计算灵敏度校验用参量值，灵敏度＝定值/参量值"), 1);
    else if (klmFlg == 1 && setting == 0)
        ReportError(Text::tr("定值不能为0，请重新计算定值，灵敏度＝参量值/定值"), 1);
    else
        return quietSensitivity(parameter1, parameter2, flg, klmFlg, setting);
    return kNoSensitivity;
}

double CalSensitivity(int rTypeNo, int rno, int pno, const QString& cdz, double value) {
    const auto row = checkRow(rTypeNo, rno, pno, cdz);
    return row ? sensitivityOf(row->parameter1, row->parameter2, row->flg, row->klmFlg, value) : kNoSensitivity;
}

double quietSensitivity(int rTypeNo, int rno, int pno, const QString& cdz, double value) {
    const auto row = checkRow(rTypeNo, rno, pno, cdz);
    return row ? quietSensitivity(row->parameter1, row->parameter2, row->flg, row->klmFlg, value) : kNoSensitivity;
}

bool updateSensitivities(int rTypeNo, const RuleData& rules) {
    QVector<QVariantList> rows;
    sql::Query q;
    q.exec(
        "SELECT k.ID,k.PNo,k.Cdz,k.RFault1,k.RFault2,k.Flg,o.NDz11,o.NDz21,o.NDz31,o.NDz41,o.NDz51 "
        "FROM RLY_RKLMTEM_TEM k JOIN RLY_RLYOBJ_TEM o ON o.RNo=k.RNo AND o.Cdz=k.Cdz ORDER BY k.ID");
    while (q.next()) {
        const int pno = q.number(1);
        if (pno < 1 || pno > 5) continue;
        const double s =
            sensitivityOf(q.real(3), q.real(4), q.number(5), klmFlgOf(rules, rTypeNo, pno, q.text(2)), q.real(5 + pno));
        if (s >= 0) rows.push_back({q.number(0), QString::number(s, 'g', 6)});
    }
    return updateByKey("RLY_RKLMTEM_TEM", {"ID", "Valsense"}, rows);
}

bool takeOverSensitivityRows(int rTypeNo, CRelayInputCal& relayInput) {
    if (relayInput.rules().sensitivityChecks(rTypeNo).empty()) return sql::Query().exec("DELETE FROM RLY_RKLMTEM_TEM");
    const int strange = sql::scalar({},
                                    "SELECT (SELECT COUNT(*) FROM RLY_RLYOBJ_TEM WHERE RNo NOT IN"
                                    " (SELECT RNo FROM RLY_RKLMTEM_TEM))+(SELECT COUNT(*) FROM RLY_RKLMTEM_TEM"
                                    " WHERE RNo NOT IN (SELECT RNo FROM RLY_RLYOBJ_TEM))",
                                    {}, 0)
                            .toInt();
    if (strange > 0) return relayInput.BuildSensitivityRows();
    return sql::Query().exec("UPDATE RLY_RKLMTEM_TEM SET Valsense=0");
}

bool takeSensitivityResults(int caseNo) {
    return sql::Query().exec(
        "UPDATE RLY_FKLM f JOIN RLY_RDZTEM t ON f.ID_Name=t.ID_Name AND f.I_Name=t.I_Name AND f.J_Name=t.J_Name "
        "AND f.Side=t.Side AND f.RuleNo=t.RuleNo SET f.RFault=t.RDz WHERE t.Case_No=?",
        {caseNo});
}

bool storeSensitivityParameters(CRelayInputCal& relayInput) {
    if (!takeSensitivityResults(kSensitivityCase)) return false;
    tellUnusable();
    return relayInput.BuildSensitivityRows();
}
