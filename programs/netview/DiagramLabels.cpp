#include "programs/netview/DiagramLabels.h"

#include <QHash>
#include <QPair>
#include <QVector>
#include <algorithm>
#include <array>
#include <optional>

#include "platform/host/Text.h"
#include "platform/rtdb/dbDatabase.h"
#include "platform/sql/Sql.h"
#include "programs/engine/BranchTable.h"
#include "programs/frame/Location.h"
#include "programs/frame/RelayTypes.h"
#include "programs/netview/LabelSet.h"

namespace {

constexpr int kParts = 5;
constexpr qsizetype kMostSettings = 20;  // of a relay type on one label
constexpr qsizetype kDivided = 4;        // settings that have a stroke behind them
constexpr double kEmpty = -1.0;
constexpr int kVirtualRelay = 100;

enum Kind { NoLabels, RelayTypes, RelaySettings };

struct ShownSetting {
    int order = 0;
    QString cdz;
};
struct ShownType {
    int order = 0;
    QVector<ShownSetting> settings;  // in their order
};
/// The display table.
struct Display {
    int kind = NoLabels;
    bool virtualRelays = false;
    QHash<int, ShownType> types;  // by RTypeNo
};

struct Relay {
    int RNo = 0, RTypeNo = 0, order = 0;
    QString RTypeCode;
};
/// A location with its relays of shown types, in label order.
struct RelayGroup {
    Location at;
    int rType = 0;
    QVector<Relay> relays;
};

using Values = std::array<double, kParts>;
using ValueTable = QHash<QPair<int, QString>, Values>;  // by relay and setting

std::optional<Display> readDisplay() {
    Display display;
    sql::Query query;
    if (!query.exec("SELECT AllDsp,RTypeNo,RlyDspNo,CDz,DzDspNo FROM RLY_RLYDSP")) return std::nullopt;
    for (bool first = true; query.next(); first = false) {
        if (first) display.kind = query.number(0);
        const int type = query.number(1), order = query.number(2), settingOrder = query.number(4);
        if (order <= 0) continue;
        if (type == 0) display.virtualRelays = true;
        ShownType& shown = display.types[type];
        shown.order = order;
        if (settingOrder > 0) shown.settings.append({settingOrder, query.text(3)});
    }
    for (ShownType& type : display.types)
        std::stable_sort(type.settings.begin(), type.settings.end(),
                         [](const ShownSetting& a, const ShownSetting& b) { return a.order < b.order; });
    return display;
}

Location locationOf(const sql::Query& row) { return {row.text(0), row.text(1), row.text(2), row.number(3)}; }

QVector<RelayGroup> readRelays(const Display& display) {
    QVector<RelayGroup> groups;
    QHash<QPair<Location, int>, qsizetype> places;
    sql::Query query;
    query.exec("SELECT ID_Name,I_Name,J_Name,Side,RType,RNo,RTypeNo,RTypeCode FROM RLY_RUD ORDER BY RNo");
    while (query.next()) {
        const auto shown = display.types.constFind(query.number(6));
        if (shown == display.types.cend()) continue;
        const QPair<Location, int> place(locationOf(query), query.number(4));
        const qsizetype at = places.value(place, groups.size());
        if (at == groups.size()) {
            places.insert(place, at);
            groups.append({place.first, place.second, {}});
        }
        groups[at].relays.append({query.number(5), query.number(6), shown->order, query.text(7)});
    }
    for (RelayGroup& group : groups)
        std::stable_sort(group.relays.begin(), group.relays.end(),
                         [](const Relay& a, const Relay& b) { return a.order < b.order; });
    return groups;
}

ValueTable readValues() {
    ValueTable values;
    sql::Query query;
    query.exec(
        "SELECT z.RNo,z.Cdz,z.NRDz12,z.NRDz22,z.NRDz32,z.NRDz42,z.NRDz52 FROM RLY_RDZ z JOIN RLY_RUD a ON a.RNo=z.RNo"
        " JOIN RLY_RLYDSP b ON b.RTypeNo=a.RTypeNo AND b.CDz=z.Cdz WHERE b.RlyDspNo>0 AND b.DzDspNo>0");
    while (query.next()) {
        Values& row = values[{query.number(0), query.text(1)}];
        for (int part = 0; part < kParts; ++part) row[size_t(part)] = query.real(part + 2);
    }
    return values;
}

QString typesText(const RelayGroup& group) {
    QString text;
    QStringList told;
    for (const Relay& relay : group.relays) {
        if (told.contains(relay.RTypeCode)) continue;
        told << relay.RTypeCode;
        text += relay.RTypeCode + " \n";
    }
    return text;
}

QString unitOf(const RelayTypeInfo& type, const QString& cdz) {
    static const QString units[] = {"", " A", " ohm", " V", " s"};
    const SettingKind* kind = type.setting(cdz);
    return kind && kind->VType >= 1 && kind->VType <= 4 ? units[kind->VType] : QString();
}

/// The settings of one relay, which labels show in full: a line for each part.
class SettingLines {
  public:
    SettingLines(const Display& display) : display_(display), types_(readRelayTypes()), values_(readValues()) {}

    [[nodiscard]] bool any(const Relay& relay) const { return !display_.types[relay.RTypeNo].settings.isEmpty(); }

    [[nodiscard]] QString of(const Relay& relay) const {
        const RelayTypeInfo type = types_.value(relay.RTypeNo);
        QString text;
        for (int part = 0; part < std::min(type.NPart, kParts); ++part) text += line(relay, type, part) + " \n";
        return text;
    }

  private:
    [[nodiscard]] double value(const Relay& relay, const QString& cdz, int part) const {
        const auto found = values_.constFind({relay.RNo, cdz});
        return found == values_.cend() ? kEmpty : (*found)[size_t(part)];
    }
    /// Ends at the first setting without a value.
    [[nodiscard]] QString line(const Relay& relay, const RelayTypeInfo& type, int part) const {
        const QVector<ShownSetting>& shown = *settingsOf(relay);
        const qsizetype count = std::min(shown.size(), kMostSettings);
        QString text;
        for (qsizetype i = 0; i < count; ++i) {
            const double here = value(relay, shown[i].cdz, part);
            if (here == kEmpty) break;
            text += QString::number(here, 'g', 6) + unitOf(type, shown[i].cdz);
            if (i < kDivided && i + 1 < count && value(relay, shown[i + 1].cdz, part) > kEmpty) text += "/";
        }
        return text;
    }
    [[nodiscard]] const QVector<ShownSetting>* settingsOf(const Relay& relay) const {
        return &display_.types.constFind(relay.RTypeNo)->settings;
    }

    const Display& display_;
    QHash<int, RelayTypeInfo> types_;
    ValueTable values_;
};

QString settingsText(const RelayGroup& group, const SettingLines& lines, bool relayTypes) {
    QString text;
    bool first = true;
    for (const Relay& relay : group.relays) {
        if (!lines.any(relay)) continue;
        if (relayTypes) text += relay.RTypeCode + " \n";
        if (!relayTypes && !first) text += "\n";
        text += lines.of(relay);
        first = false;
    }
    return text;
}

/// What stands outside the branch table is left out when only its network is to be shown. Buses are always shown.
class NetworkFilter {
  public:
    explicit NetworkFilter(bool on) {
        if (on) branches_ = BranchTable::current();
    }
    [[nodiscard]] bool passes(const Location& at) const {
        return !branches_ || branches_->find(at.ID_Name, at.I_Name, at.J_Name) != nullptr;
    }

  private:
    std::shared_ptr<const BranchTable> branches_;
};

void addVirtualRelays(LabelSet& labels, const NetworkFilter& filter) {
    sql::Query query;
    query.exec("SELECT DISTINCT ID_Name,I_Name,J_Name,Side FROM RLY_DUMRLY");
    while (query.next()) {
        const Location at = locationOf(query);
        if (filter.passes(at)) labels.addVirtual(at, Text::tr("虚拟保护"));
    }
}

void addRelayTypes(LabelSet& labels, const Display& display, const NetworkFilter& filter) {
    for (const RelayGroup& group : readRelays(display))
        if (group.rType == 0 || filter.passes(group.at)) labels.add(group.at, group.rType, typesText(group));
}

void addSettings(LabelSet& labels, const Display& display, const NetworkFilter& filter, bool relayTypes) {
    const SettingLines lines(display);
    for (const RelayGroup& group : readRelays(display)) {
        if (group.rType == kVirtualRelay || (group.rType != 0 && !filter.passes(group.at))) continue;
        const bool any = std::any_of(group.relays.begin(), group.relays.end(), [&](auto& r) { return lines.any(r); });
        if (any) labels.add(group.at, group.rType, settingsText(group, lines, relayTypes));
    }
}

}  // namespace

bool refreshLabels(dbDatabase& realTime, const LabelOptions& options) {
    const std::optional<Display> display = readDisplay();
    if (!display) return false;
    const NetworkFilter filter(options.inNetworkOnly && display->kind != NoLabels);
    LabelSet labels;
    realTime.commit();
    if (display->kind == RelayTypes) {
        if (display->virtualRelays) addVirtualRelays(labels, filter);
        addRelayTypes(labels, *display, filter);
    }
    if (display->kind == RelaySettings) addSettings(labels, *display, filter, options.relayTypes);
    labels.store(realTime, options.anew);
    if (display->kind < NoLabels || display->kind > RelaySettings) return false;
    realTime.commit();
    return true;
}
