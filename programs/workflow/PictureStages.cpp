#include "programs/workflow/PictureStages.h"

#include <QSet>
#include <QStringList>
#include <array>

#include "platform/host/Text.h"
#include "platform/sql/Placeholders.h"
#include "platform/sql/Sql.h"
#include "programs/frame/LocationLabel.h"
#include "programs/frame/RelayTypes.h"
#include "programs/frame/SettingConversion.h"
#include "programs/frame/StageColumns.h"
#include "programs/workflow/ResultTable.h"

namespace {

using Values = std::array<double, kStages>;
using Settings = QHash<QPair<int, QString>, Values>;  // by relay and setting
using PartKey = QPair<int, int>;                      // relay, part

QVariantList listed(const QVector<int>& relays) { return {relays.begin(), relays.end()}; }

void readSettings(const QString& table, const QString& prefix, const QVector<int>& relays, Settings& settings) {
    sql::Query query;
    query.exec("SELECT RNo,Cdz," + QStringList(stageColumns(prefix).mid(0, kStages)).join(',') + " FROM " + table +
                   " WHERE RNo IN (" + sql::placeholders(relays.size()) + ")",
               listed(relays));
    while (query.next())
        for (int part = 0; part < kStages; ++part)
            settings[{query.number(0), query.text(1)}][size_t(part)] = query.real(2 + part);
}

/// Parts that rules gave something, and those whose time of 0 s is such a result.
struct RunResults {
    QSet<PartKey> any, zeroTime;
};

RunResults runResults(int caseNo, const QVector<int>& relays) {
    RunResults results;
    sql::Query query;
    query.exec(
        "SELECT RNo,PNo,Cdz,Rdz,MAX(Rdz!=0) OVER (PARTITION BY RNo,PNo,RuleNo) FROM RLY_RDZTEM WHERE Case_No=?"
        " AND RNo IN (" +
            sql::placeholders(relays.size()) + ")",
        QVariantList{caseNo} + listed(relays));
    while (query.next()) {
        if (query.number(4) != 1) continue;
        results.any.insert({query.number(0), query.number(1)});
        if (query.text(2) == "t" && query.real(3) == 0) results.zeroTime.insert({query.number(0), query.number(1)});
    }
    return results;
}

/// The value that a picture of the type shows: its impedance, else its current.
const SettingKind* drawnSetting(const RelayTypeInfo& type) {
    for (const int vType : {kImpedance, kCurrent})
        for (const SettingKind& setting : type.settings)
            if (setting.VType == vType && setting.Cdz != kLineLength) return &setting;
    return nullptr;
}

const SettingKind* timeSetting(const RelayTypeInfo& type) {
    for (const SettingKind& setting : type.settings)
        if (setting.VType == kTime) return &setting;
    return nullptr;
}

class Stages {
  public:
    Stages(const Settings& settings, const RunResults& results) : settings_(settings), results_(results) {}

    void fill(PictureRelay& relay, const RelayTypeInfo& type, const SettingKind& value) const {
        const SettingKind* time = timeSetting(type);
        const Values values = settings_.value({relay.RNo, value.Cdz});
        const Values times = time ? settings_.value({relay.RNo, time->Cdz}) : Values{};
        for (int part = 1; part <= std::min(type.NPart, kStages); ++part) {
            PictureStage stage{part, values[size_t(part - 1)], timeOf(relay, part, times[size_t(part - 1)])};
            if (stage.value <= 0) {
                relay.missing << Text::tr("%1没有定值").arg(stageName(part));
                continue;
            }
            if (!stage.time) relay.missing << Text::tr("%1没有动作时间").arg(stageName(part));
            relay.stages.append(stage);
        }
    }

  private:
    [[nodiscard]] std::optional<double> timeOf(const PictureRelay& relay, int part, double time) const {
        if (time > 0) return time;
        const PartKey key{relay.RNo, part};
        const bool zero = relay.inCase && results_.any.contains(key) ? results_.zeroTime.contains(key) : part == 1;
        return zero ? std::optional<double>(0) : std::nullopt;
    }

    const Settings& settings_;
    const RunResults& results_;
};

QSet<int> relaysOfCase(const QVector<int>& relays) {
    QSet<int> found;
    sql::Query query;
    query.exec("SELECT DISTINCT RNo FROM RLY_RLYOBJ_TEM WHERE RNo IN (" + sql::placeholders(relays.size()) + ")",
               listed(relays));
    while (query.next()) found.insert(query.number(0));
    return found;
}

}  // namespace

const PictureStage* PictureRelay::stage(int pNo) const {
    for (const PictureStage& stage : stages)
        if (stage.PNo == pNo) return &stage;
    return nullptr;
}

QString stageName(int pNo) {
    static const QString numerals[] = {"Ⅰ", "Ⅱ", "Ⅲ", "Ⅳ", "Ⅴ"};
    return Text::tr("%1段").arg(pNo >= 1 && pNo <= kStages ? numerals[pNo - 1] : QString::number(pNo));
}

QHash<int, PictureRelay> pictureRelays(int caseNo, const QVector<int>& relays) {
    QHash<int, PictureRelay> found;
    if (relays.isEmpty()) return found;
    Settings settings;
    readSettings("RLY_RDZ", "NRdz", relays, settings);
    readSettings("RLY_RLYOBJ_TEM", "NDz", relays, settings);
    const RunResults results = runResults(caseNo, relays);
    const QSet<int> inCase = relaysOfCase(relays);
    const auto types = readRelayTypes();
    sql::Query query;
    query.exec(
        "SELECT RNo,RTypeNo,RType,ID_Name,I_Name,J_Name,Side,CTPri,CTSec,PTPri,PTSec FROM RLY_RUD WHERE RNo IN (" +
            sql::placeholders(relays.size()) + ")",
        listed(relays));
    while (query.next()) {
        PictureRelay relay;
        relay.RNo = query.number(0);
        relay.RTypeNo = query.number(1);
        const RelayTypeInfo type = types.value(relay.RTypeNo);
        const SettingKind* value = drawnSetting(type);
        relay.impedance = value && value->VType == kImpedance;
        relay.label =
            locationLabel(query.number(2), query.text(3), query.text(4), query.text(5), query.number(6)).simplified();
        relay.inCase = inCase.contains(relay.RNo);
        if (value) {
            relay.toSecondary =
                conversionFactor(value->VType, query.real(7), query.real(8), query.real(9), query.real(10));
            Stages(settings, results).fill(relay, type, *value);
        }
        found[relay.RNo] = relay;
    }
    return found;
}
