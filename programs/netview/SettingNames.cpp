#include "programs/netview/SettingNames.h"

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/frame/TableNames.h"

namespace {

constexpr int kLongestName = 20;

}  // namespace

QVector<NamedType> SettingNames::types() {
    QVector<NamedType> types;
    sql::Query query(tables::ruleConnection);
    query.exec("SELECT DISTINCT RTypeCode,RTypeNo FROM RTYPE ORDER BY RTypeNo ");
    while (query.next()) types.append({query.number(1), query.text(0)});
    return types;
}

QVector<NamedSetting> SettingNames::of(int rTypeNo) {
    QVector<NamedSetting> settings;
    sql::Query query(tables::ruleConnection);
    query.exec("SELECT DspCDz,DzNo FROM RTYPE WHERE RTypeNo=? ORDER BY DzNo ASC", {rTypeNo});
    while (query.next()) settings.append({query.number(1), query.text(0)});
    return settings;
}

QString SettingNames::whyNot(const QVector<NamedSetting>& settings) {
    for (const NamedSetting& setting : settings)
        if (setting.name.trimmed().isEmpty()) return Text::tr("定值名不能为空");
    for (const NamedSetting& setting : settings) {
        const QString why = sql::whyNotStorable(setting.name, kLongestName);
        if (!why.isEmpty()) return Text::tr("定值名%1不能保存: %2").arg(setting.name, why);
    }
    return {};
}

bool SettingNames::store(int rTypeNo, const QVector<NamedSetting>& settings) {
    if (settings.isEmpty()) return true;
    QString text = "UPDATE RTYPE SET DspCDz=CASE DzNo";
    QVariantList values;
    for (const NamedSetting& setting : settings) {
        text += " WHEN ? THEN ?";
        values << setting.DzNo << setting.name;
    }
    return sql::Query(tables::ruleConnection).exec(text + " ELSE DspCDz END WHERE RTypeNo=?", values << rTypeNo);
}
