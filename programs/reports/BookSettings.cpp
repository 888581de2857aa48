#include "programs/reports/BookSettings.h"

#include "platform/sql/Sql.h"
#include "programs/engine/Sensitivity.h"
#include "programs/frame/StageColumns.h"
#include "programs/reports/BookUnits.h"

namespace {

/// A row of RLY_RLYOBJ_TEM.
struct Working {
    QString Cdz;
    double values[2 * kStages];  ///< primary by part, then secondary
};

bool readWorking(QHash<int, QVector<Working>>& byRelay) {
    sql::Query query;
    if (!query.exec("SELECT RNo,Cdz," + stageColumns("NDz").join(',') + " FROM RLY_RLYOBJ_TEM ORDER BY RNo,DzNo ASC"))
        return false;
    while (query.next()) {
        Working row{query.text(1), {}};
        for (int k = 0; k < 2 * kStages; ++k) row.values[k] = query.real(2 + k);
        byRelay[query.number(0)].append(row);
    }
    return true;
}

/// A row of RLY_RKLMTEM_TEM.
struct Check {
    double parameters[2];
    QString notes[2];
    int rules[2];
    double Valsense;
    int Flg;
};

using Place = QPair<QPair<int, int>, QString>;  // relay, part, setting

bool readChecks(QHash<Place, QVector<Check>>& checks) {
    sql::Query query;
    if (!query.exec("SELECT RNo,PNo,Cdz,RFault1,Note1,RuleNo,RFault2,Note2,DRuleNo,Valsense,Flg FROM RLY_RKLMTEM_TEM"
                    " ORDER BY ID"))
        return false;
    while (query.next())
        checks[{{query.number(0), query.number(1)}, query.text(2)}].append({{query.real(3), query.real(6)},
                                                                            {query.text(4), query.text(7)},
                                                                            {query.number(5), query.number(8)},
                                                                            query.real(9),
                                                                            query.number(10)});
    return true;
}

BookSensitivity sensitivity(const RuleData& rules, const Check& row, int klmFlg, double setting) {
    const int used = firstParameterInUse(row.Flg) ? 0 : 1;
    const SettingRule* rule = rules.rule(row.rules[used]);
    const QString cdz = rule ? rule->outputs.value(0) : QString();
    const double klm = row.Valsense > 0
                           ? row.Valsense
                           : quietSensitivity(row.parameters[0], row.parameters[1], row.Flg, klmFlg, setting);
    return {row.notes[used], cdz, row.parameters[used], klm};
}

}  // namespace

bool readBookSettings(const RuleData& rules, const RelayTypeInfo& type, BookContent& content) {
    QHash<int, QVector<Working>> working;
    QHash<Place, QVector<Check>> checks;
    if (!readWorking(working) || !readChecks(checks)) return false;
    for (BookPart& part : content.parts) {
        if (part.PNo < 1 || part.PNo > kStages) continue;
        for (const Working& row : working.value(part.RNo)) {
            const SettingKind* kind = type.setting(row.Cdz);
            BookSetting setting{row.Cdz,
                                kind ? kind->DspCdz : row.Cdz,
                                bookUnit(kind ? kind->VType : 0),
                                row.values[part.PNo - 1],
                                row.values[kStages + part.PNo - 1],
                                {}};
            for (const Check& check : checks.value({{part.RNo, part.PNo}, row.Cdz}))
                setting.sensitivities.append(
                    sensitivity(rules, check, klmFlgOf(rules, type.RTypeNo, part.PNo, row.Cdz), setting.primary));
            part.settings.append(setting);
        }
    }
    return true;
}
