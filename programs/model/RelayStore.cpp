#include "programs/model/RelayStore.h"

#include <QSet>
#include <cmath>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/BranchTable.h"
#include "programs/engine/Sensitivity.h"
#include "programs/frame/Messages.h"
#include "programs/frame/RelayTypes.h"
#include "programs/frame/SettingConversion.h"
#include "programs/frame/StageColumns.h"
#include "programs/frame/TableNames.h"

namespace {

constexpr double kDefaultTimes[kStages] = {0.1, 0.5, 1, 1.5, 2};
constexpr double kDefaultLength = 100;

using TypedPlace = QPair<Location, int>;  // with the relay type, or a sensitivity rule

int refuse(const RelayRequest& request, const QString& text) {
    ReportError(request.origin.isEmpty() ? text : request.origin + ": " + text, 0);
    return -1;
}

double defaultValue(const SettingKind& setting, int stage) {
    if (setting.Cdz == "t") return kDefaultTimes[stage];
    return setting.Cdz == kLineLength ? kDefaultLength : 0;
}

/// The sensitivity rules of each relay type, each once.
QHash<int, QVector<int>> sensitivityRules() {
    QHash<int, QVector<int>> rules;
    sql::Query query(tables::ruleConnection);
    query.exec("SELECT DISTINCT RTypeNo,RuleNo,DRuleNo FROM USEFKLM ORDER BY RTypeNo,PNo,Cdz");
    while (query.next())
        for (const int rule : {query.number(1), query.number(2)})
            if (!rules[query.number(0)].contains(rule)) rules[query.number(0)].append(rule);
    return rules;
}

QSet<TypedPlace> typedPlaces(const QString& text) {
    QSet<TypedPlace> places;
    sql::Query query;
    query.exec(text);
    while (query.next())
        places.insert({{query.text(0), query.text(1), query.text(2), query.number(3)}, query.number(4)});
    return places;
}

/// The rows that a set of new relays adds, gathered before anything is written.
class Installation {
  public:
    Installation();
    /// \return false with a message when the request cannot be met
    bool add(const RelayRequest& request);
    bool write() const;
    [[nodiscard]] int count() const { return int(relays_.size()); }

  private:
    bool refuses(const RelayRequest& request);
    bool hasPlace(const RelayTypeInfo& type, const Location& at);
    void addSettings(const RelayRequest& request, const RelayTypeInfo& type);
    void addParameters(const RelayRequest& request);

    QHash<int, RelayTypeInfo> types_ = readRelayTypes();
    QHash<int, QVector<int>> rules_ = sensitivityRules();
    QSet<TypedPlace> installed_;
    QSet<TypedPlace> parameters_;
    QHash<int, QSet<Location>> places_;
    int number_ = 0;
    QVector<QVariantList> relays_, settings_, values_;
    QVariantList taken_;  ///< places of the new relays, four values each
};

Installation::Installation() {
    installed_ = typedPlaces("SELECT ID_Name,I_Name,J_Name,Side,RTypeNo FROM RLY_RUD");
    parameters_ = typedPlaces("SELECT ID_Name,I_Name,J_Name,Side,RuleNo FROM RLY_FKLM");
    number_ = sql::scalar({}, "SELECT MAX(RNo) FROM RLY_RUD").toInt();
}

bool Installation::hasPlace(const RelayTypeInfo& type, const Location& at) {
    if (!places_.contains(type.RType)) {
        QVector<Location> all = RelayStore::locations(type.RType);
        if (type.RType == 10) all += RelayStore::locations(12);
        places_[type.RType] = QSet<Location>(all.begin(), all.end());
    }
    return places_[type.RType].contains(at);
}

bool Installation::refuses(const RelayRequest& request) {
    const auto usable = [](double ratio) { return std::isfinite(ratio) && ratio >= 1e-6 && ratio <= 9999999.999999; };
    if (request.RTypeNo == 0 || !types_.contains(request.RTypeNo)) {
        refuse(request, Text::tr("没有编号为") + QString::number(request.RTypeNo) + Text::tr("的保护类型"));
    } else if (!hasPlace(types_[request.RTypeNo], request.at)) {
        refuse(request, Text::tr("网络中没有可以装设") + types_[request.RTypeNo].RTypeCode + Text::tr("的位置: ") +
                            request.at.ID_Name + " " + request.at.I_Name + " " + request.at.J_Name + " " +
                            (request.at.Side == 1 ? "I" : "J") + Text::tr("侧"));
    } else if (!usable(request.ctRatio) || !usable(request.ptRatio)) {
        refuse(request, Text::tr("CT或PT变比不能为0"));
    } else {
        return false;
    }
    return true;
}

void Installation::addSettings(const RelayRequest& request, const RelayTypeInfo& type) {
    for (const SettingKind& setting : type.settings) {
        const double k = conversionFactor(setting.VType, 1, request.ctRatio, request.ptRatio, 1);
        QVariantList row = {number_, setting.DzNo, setting.Cdz};
        for (const double factor : {1.0, k, 1.0, k})
            for (int stage = 0; stage < kStages; ++stage) row.append(factor * defaultValue(setting, stage));
        settings_.append(row);
    }
}

void Installation::addParameters(const RelayRequest& request) {
    for (const int rule : rules_.value(request.RTypeNo)) {
        if (parameters_.contains({request.at, rule})) continue;
        parameters_.insert({request.at, rule});
        values_.append(
            {request.at.ID_Name, request.at.I_Name, request.at.J_Name, request.at.Side, kParameterNotComputed, rule});
    }
}

bool Installation::add(const RelayRequest& request) {
    if (refuses(request)) return false;
    if (installed_.contains({request.at, request.RTypeNo})) return true;
    installed_.insert({request.at, request.RTypeNo});
    const RelayTypeInfo& type = types_[request.RTypeNo];
    const Location& at = request.at;
    relays_.append({1, ++number_, type.RTypeCode, " ", type.RTypeNo, type.RType, at.ID_Name, at.I_Name, at.J_Name,
                    at.Side, 1.0, request.ctRatio, request.ptRatio, 1.0});
    addSettings(request, type);
    addParameters(request);
    taken_ << at.ID_Name << at.I_Name << at.J_Name << at.Side;
    return true;
}

/// "(?,?,?,?),(?,?,?,?)": `count` groups of `width` places.
QString groups(qsizetype count, int width) {
    const QString group = "(" + QStringList(width, "?").join(',') + ")";
    return QStringList(count, group).join(',');
}

/// Deletes the rows of a table whose columns are among the given tuples, some hundred at a time.
bool removeTuples(const QString& table, const QString& columns, int width, const QVariantList& values) {
    const qsizetype step = qsizetype(width) * 500;
    sql::Query query;
    for (qsizetype from = 0; from < values.size(); from += step) {
        const QVariantList part = values.mid(from, step);
        if (!query.exec(
                "DELETE FROM " + table + " WHERE (" + columns + ") IN (" + groups(part.size() / width, width) + ")",
                part))
            return false;
    }
    return true;
}

constexpr char kPlace[] = "ID_Name,I_Name,J_Name,Side";

bool Installation::write() const {
    static const QStringList relayColumns = {"Valid",  "RNo",    "RTypeCode", "RNote", "RTypeNo", "RType", "ID_Name",
                                             "I_Name", "J_Name", "Side",      "CTPri", "CTSec",   "PTPri", "PTSec"};
    static const QStringList valueColumns = {"ID_Name", "I_Name", "J_Name", "Side", "RFault", "RuleNo"};
    sql::Transaction transaction;
    return sql::insertRows({}, "RLY_RUD", relayColumns, relays_) &&
           sql::insertRows({}, "RLY_RDZ",
                           QStringList{"RNo", "DzNo", "Cdz"} + stageColumns("NRdz") + stageColumns("BRdz"),
                           settings_) &&
           sql::insertRows({}, "RLY_FKLM", valueColumns, values_) && removeTuples("RLY_DUMRLY", kPlace, 4, taken_) &&
           transaction.commit();
}

/// Places and sensitivity rules of the relays, five values each.
QVariantList parametersOf(const QVector<InstalledRelay>& relays) {
    const auto rules = sensitivityRules();
    QVariantList values;
    for (const InstalledRelay& relay : relays)
        for (const int rule : rules.value(relay.RTypeNo))
            values << relay.at.ID_Name << relay.at.I_Name << relay.at.J_Name << relay.at.Side << rule;
    return values;
}

QVector<InstalledRelay> read(const QString& condition) {
    QVector<InstalledRelay> relays;
    sql::Query query;
    query.exec("SELECT RNo,RTypeNo,RTypeCode,RType,ID_Name,I_Name,J_Name,Side,Valid,CTSec,PTPri FROM RLY_RUD " +
               condition + " ORDER BY RNo");
    while (query.next())
        relays.append({query.number(0),
                       query.number(1),
                       query.text(2),
                       query.number(3),
                       {query.text(4), query.text(5), query.text(6), query.number(7)},
                       query.number(8) == 1,
                       query.real(9),
                       query.real(10)});
    return relays;
}

}  // namespace

int RelayStore::install(const QVector<RelayRequest>& requests) {
    Installation installation;
    for (const RelayRequest& request : requests)
        if (!installation.add(request)) return -1;
    if (installation.count() == 0) return 0;
    const bool ok = installation.write();
    BranchTable::invalidate();
    return ok ? installation.count() : -1;
}

bool RelayStore::remove(const QVector<int>& relays) {
    if (relays.isEmpty()) return true;
    const QString in = " WHERE RNo IN (" + sql::numberList(relays) + ")";
    const QVariantList parameters = parametersOf(read(in));
    const QString key = QString(kPlace) + ",RuleNo";
    sql::Transaction transaction;
    sql::Query query;
    for (const char* table : {"RLY_RUD", "RLY_RDZ", "RLY_RUDRM", "RLY_ACTELM", "RLY_ELMSEARCHWAY"})
        if (!query.exec(QString("DELETE FROM ") + table + in)) return false;
    return removeTuples("RLY_FKLM", key, 5, parameters) && removeTuples("RLY_KLMPFAULT", key, 5, parameters) &&
           transaction.commit();
}

QVector<InstalledRelay> RelayStore::list(int rTypeNo) {
    return read(rTypeNo < 0 ? QString() : "WHERE RTypeNo=" + QString::number(rTypeNo));
}
