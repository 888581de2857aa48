#include "programs/workflow/CaseSettings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/frame/Location.h"
#include "programs/frame/LocationLabel.h"
#include "programs/frame/Messages.h"
#include "programs/frame/RelayTypes.h"
#include "programs/frame/SettingConversion.h"

namespace {

const QStringList& identityColumns() {
    static const QStringList columns = {"TurnNo", "RNo",  "RTypeCode", "ID_Name", "I_Name",
                                        "J_Name", "Side", "NPart",     "DzNo",    "Cdz"};
    return columns;
}

QStringList orZero(const QStringList& columns) {
    QStringList texts;
    for (const QString& column : columns) texts.append("COALESCE(" + column + ",0)");
    return texts;
}

bool loadSetting(int caseNo, const RelayTypeInfo& type, const SettingKind& setting) {
    const QStringList old = orZero(stageColumns("z.NRdz"));
    const QStringList now = orZero(stageColumns("c.Rdz"));
    sql::Query query;
    return query.exec(
        "INSERT INTO RLY_RLYOBJ_TEM (" +
            (identityColumns() + stageColumns("ODz") + stageColumns("NDz") + QStringList("VType")).join(',') +
            ") SELECT t.TurnNo,u.RNo,u.RTypeCode,u.ID_Name,u.I_Name,u.J_Name,u.Side,?,COALESCE(z.DzNo,?),?," +
            (old + now).join(',') +
            ",? FROM (SELECT RNo,MIN(TurnNo) AS TurnNo FROM RLY_CASEINF WHERE Case_No=? GROUP BY RNo) t"
            " JOIN RLY_RUD u ON u.RNo=t.RNo AND u.RTypeNo=?"
            " LEFT JOIN RLY_RDZ z ON z.RNo=u.RNo AND z.Cdz=?"
            " LEFT JOIN RLY_CASERDZ c ON c.RNo=u.RNo AND c.Cdz=? AND c.Case_No=?",
        {type.NPart, setting.DzNo, setting.Cdz, setting.VType, caseNo, type.RTypeNo, setting.Cdz, setting.Cdz, caseNo});
}

/// A relay as the conversions and the working table need it.
struct RelayData {
    QString RTypeCode;
    Location at;
    double ctPri = 1, ctSec = 1, ptPri = 1, ptSec = 1;
};

/// Those of the relays that exist and are of the type. \return nothing when the database does not say
std::optional<QHash<int, RelayData>> relayData(const QVector<int>& relays, int rTypeNo) {
    QHash<int, RelayData> data;
    sql::Query query;
    const bool read = query.exec(
        "SELECT RNo,RTypeCode,ID_Name,I_Name,J_Name,Side,CTPri,CTSec,PTPri,PTSec FROM RLY_RUD WHERE RTypeNo=? AND"
        " RNo IN (" +
            sql::numberList(relays) + ")",
        {rTypeNo});
    while (query.next())
        data[query.number(0)] = {query.text(1), {query.text(2), query.text(3), query.text(4), query.number(5)},
                                 query.real(6), query.real(7),
                                 query.real(8), query.real(9)};
    return read ? std::optional(data) : std::nullopt;
}

/// Joins the node at the relay's end as n.
QString stationAt(const QString& relay) {
    return " LEFT JOIN CDB_NODEBAK n ON n.Node_Name=IF(" + relay + ".Side=1," + relay + ".I_Name," + relay + ".J_Name)";
}

/// \param relay  columns of setting, relay and place \param values  columns of the new values, then of the old ones
QVector<CaseSettingRow> readRows(int rTypeNo, const QString& relay, const QStringList& values, const QString& from,
                                 const QVariantList& bound = {}) {
    const RelayTypeInfo type = readRelayTypes().value(rTypeNo);
    QVector<CaseSettingRow> rows;
    sql::Query query;
    query.exec("SELECT " + relay + ",n.PS_Name," + values.join(',') + " FROM " + from, bound);
    while (query.next()) {
        CaseSettingRow row;
        row.Cdz = query.text(0);
        row.RNo = query.number(1);
        row.label = locationLabel(type.RType, query.text(2), query.text(3), query.text(4), query.number(5));
        row.station = query.text(6);
        const SettingKind* setting = type.setting(row.Cdz);
        row.DspCdz = setting ? setting->DspCdz : row.Cdz;
        row.VType = setting ? setting->VType : 0;
        for (int part = 0; part < kStages; ++part) {
            row.newValue[size_t(part)] = query.raw(7 + part);
            row.oldValue[size_t(part)] = query.raw(7 + kStages + part);
        }
        rows.append(row);
    }
    return rows;
}

QVector<int> relaysOf(const QVector<CaseSettingRow>& rows) {
    QVector<int> relays;
    for (const CaseSettingRow& row : rows)
        if (relays.isEmpty() || relays.back() != row.RNo) relays.append(row.RNo);
    return relays;
}

/// Five primary values and the secondary ones of the same parts.
using Measures = std::array<double, 2 * kStages>;

/// What the working table holds of one setting of a relay.
struct StoredSetting {
    Measures now{}, old{};
};

/// The settings of the working table that have a ratio, by relay and name.
QHash<QPair<int, QString>, StoredSetting> storedSettings() {
    QHash<QPair<int, QString>, StoredSetting> settings;
    sql::Query query;
    query.exec("SELECT RNo,Cdz," + (stageColumns("NDz") + stageColumns("ODz")).join(',') +
               " FROM RLY_RLYOBJ_TEM WHERE VType IN (1,2,3)");
    while (query.next()) {
        StoredSetting& setting = settings[{query.number(0), query.text(1)}];
        for (int k = 0; k < 2 * kStages; ++k) {
            setting.now[size_t(k)] = query.real(2 + k);
            setting.old[size_t(k)] = query.real(2 + 2 * kStages + k);
        }
    }
    return settings;
}

/// Whether two stored values are the same setting in its two measures. They have six decimals; what a run wrote has six
/// digits in all.
bool belongTogether(double primary, double secondary, double k) {
    constexpr double kHalfDecimal = 0.51e-6, kHalfDigit = 5.1e-6;
    return std::fabs(secondary - k * primary) < std::max(kHalfDecimal, kHalfDigit * secondary) ||
           std::fabs(primary - secondary / k) < kHalfDecimal;
}

/// Five primary and five secondary values out of the texts of the parts that the type has. A value that stands as it
/// was shown keeps its other measure: converted there and back it would lose its last digits.
QVariantList bothMeasures(const std::array<QString, kStages>& texts, int parts, bool primary, double k,
                          const Measures& stored) {
    QVariantList first, second;
    for (int part = 0; part < kStages; ++part) {
        const double shown = part < parts ? texts[size_t(part)].toDouble() : 0;
        const double p = stored[size_t(part)], s = stored[size_t(kStages + part)];
        const bool stands = shown == (primary ? p : s) && belongTogether(p, s, k);
        first.append(primary ? shown : stands ? p : shown / k);
        second.append(!primary ? shown : stands ? s : k * shown);
    }
    return first + second;
}

bool tellMissing() {
    ReportError(Text::tr("作业中涉及的某些保护不存在，请检查数据"), 1);
    return true;
}

/// Walks the rows of a form with what belongs to each.
struct FormWalk {
    const CaseForm& form;
    RelayTypeInfo type;
    std::optional<QHash<int, RelayData>> relays;
    QHash<QPair<int, QString>, StoredSetting> settings = storedSettings();
    int rNo = -1, turnNo = 0, dzNo = 0;

    FormWalk(int rTypeNo, const CaseForm& walked)
        : form(walked), type(readRelayTypes().value(rTypeNo)), relays(relayData(relaysOf(walked.rows), rTypeNo)) {}

    /// Whether the relay of the row has gone since the form was filled: without its ratios there is no other measure.
    [[nodiscard]] bool lacks(const CaseSettingRow& row) const { return !relays->contains(row.RNo); }
    /// Whether any has; told in the dock.
    [[nodiscard]] bool lacksAny() const {
        const auto rowLacks = [this](const CaseSettingRow& row) { return lacks(row); };
        return std::any_of(form.rows.begin(), form.rows.end(), rowLacks) && tellMissing();
    }
    /// Factor of the row's setting; counts relays and their settings on the way.
    double enter(const CaseSettingRow& row) {
        if (row.RNo != rNo) {
            rNo = row.RNo;
            ++turnNo;
            dzNo = 0;
        }
        ++dzNo;
        const RelayData relay = relays->value(rNo);
        return conversionFactor(vType(row), relay.ctPri, relay.ctSec, relay.ptPri, relay.ptSec);
    }
    [[nodiscard]] StoredSetting stored(const CaseSettingRow& row) const { return settings.value({row.RNo, row.Cdz}); }
    [[nodiscard]] int vType(const CaseSettingRow& row) const {
        const SettingKind* setting = type.setting(row.Cdz);
        return setting ? setting->VType : 0;
    }
};

}  // namespace

bool CaseSettings::load(int caseNo, int rTypeNo, bool* missing) {
    const auto types = readRelayTypes();
    const RelayTypeInfo type = types.value(rTypeNo);
    if (!types.contains(rTypeNo)) ReportError(Text::tr("作业的保护类型已经不存在"), 0);
    sql::Transaction transaction;
    sql::Query query;
    if (!query.exec("DELETE FROM RLY_RLYOBJ_TEM")) return false;
    if (!types.contains(rTypeNo)) return transaction.commit() && false;
    for (const SettingKind& setting : type.settings)
        if (setting.Cdz != kLineLength && !loadSetting(caseNo, type, setting)) return false;
    const int gone = sql::scalar({},
                                 "SELECT COUNT(*) FROM (SELECT DISTINCT RNo FROM RLY_CASEINF WHERE Case_No=?) c"
                                 " LEFT JOIN RLY_RUD u ON u.RNo=c.RNo AND u.RTypeNo=? WHERE u.RNo IS NULL",
                                 {caseNo, rTypeNo})
                         .toInt();
    if (missing) *missing = gone > 0;
    if (gone > 0) tellMissing();
    return transaction.commit();
}

QVector<CaseSettingRow> CaseSettings::rows(int rTypeNo, bool primary) {
    const int from = primary ? 0 : kStages;
    const QStringList values = stageColumns("r.NDz").mid(from, kStages) + stageColumns("r.ODz").mid(from, kStages);
    return readRows(rTypeNo, "r.Cdz,r.RNo,r.ID_Name,r.I_Name,r.J_Name,r.Side", values,
                    "RLY_RLYOBJ_TEM r" + stationAt("r") + " ORDER BY r.TurnNo ASC,r.RNo ASC,r.DzNo ASC");
}

QVector<CaseSettingRow> CaseSettings::newRows(const QVector<int>& relays, int rTypeNo, bool primary) {
    const QStringList values = QStringList(kStages, "0") + stageColumns("z.NRdz").mid(primary ? 0 : kStages, kStages);
    return readRows(rTypeNo, "z.Cdz,u.RNo,u.ID_Name,u.I_Name,u.J_Name,u.Side", values,
                    "RLY_RUD u JOIN RLY_RDZ z ON z.RNo=u.RNo AND z.Cdz!='L'" + stationAt("u") +
                        " WHERE u.RTypeNo=? AND u.RNo IN (" + sql::numberList(relays) + ") ORDER BY u.RNo,z.DzNo",
                    {rTypeNo});
}

bool CaseSettings::storeCase(int caseNo, int rTypeNo, const CaseForm& form, bool* missing) {
    FormWalk walk(rTypeNo, form);
    if (!walk.relays) return false;
    QVector<QVariantList> rows;
    for (const CaseSettingRow& row : form.rows) {
        if (walk.lacks(row)) continue;
        const double k = walk.enter(row);
        rows.append(QVariantList{caseNo, row.RNo, walk.dzNo, row.Cdz} +
                    bothMeasures(row.newValue, walk.type.NPart, form.primary, k, walk.stored(row).now));
    }
    if (missing) *missing = walk.lacksAny();
    sql::Query query;
    return query.exec("DELETE FROM RLY_CASERDZ WHERE Case_No=?", {caseNo}) &&
           sql::insertRows({}, "RLY_CASERDZ", QStringList{"Case_No", "RNo", "DzNo", "Cdz"} + stageColumns("Rdz"), rows);
}

bool CaseSettings::storeWorking(int rTypeNo, const CaseForm& form, bool* missing) {
    FormWalk walk(rTypeNo, form);
    if (!walk.relays) return false;
    QVector<QVariantList> rows;
    for (const CaseSettingRow& row : form.rows) {
        if (walk.lacks(row)) continue;
        const double k = walk.enter(row);
        const RelayData relay = walk.relays->value(row.RNo);
        const StoredSetting stored = walk.stored(row);
        rows.append(QVariantList{walk.turnNo, row.RNo, relay.RTypeCode, relay.at.ID_Name, relay.at.I_Name,
                                 relay.at.J_Name, relay.at.Side, walk.type.NPart, walk.dzNo, row.Cdz} +
                    bothMeasures(row.oldValue, kStages, form.primary, k, stored.old) +
                    bothMeasures(row.newValue, walk.type.NPart, form.primary, k, stored.now) +
                    QVariantList{walk.vType(row)});
    }
    if (missing) *missing = walk.lacksAny();
    sql::Query query;
    return query.exec("DELETE FROM RLY_RLYOBJ_TEM") &&
           sql::insertRows({}, "RLY_RLYOBJ_TEM",
                           identityColumns() + stageColumns("ODz") + stageColumns("NDz") + QStringList("VType"), rows);
}
