#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/Context.h"
#include "cli/TextTable.h"
#include "exchange/TextFile.h"
#include "platform/import/Import.h"
#include "programs/frame/LocationLabel.h"
#include "programs/frame/RelayTypes.h"
#include "programs/model/RelayCsv.h"
#include "programs/model/RelayStore.h"
#include "programs/netview/VirtualRelays.h"

namespace cli {

namespace {

struct Wish {
    std::string project, element, side, csv;
    std::vector<int> types, relays;
    std::vector<double> levels;
    double ct = 1, pt = 1;
    int type = -1;
};

int sideOf(const std::string& text) { return text == "I" ? 1 : text == "J" ? 2 : 0; }

/// The requests of one relay type at the places that are meant. \return false when there is no such place
bool collect(Context& context, const Wish& wish, const RelayTypeInfo& type, QVector<RelayRequest>& requests) {
    QVector<Location> places;
    if (!wish.element.empty())
        places = RelayStore::placesOf(QString::fromStdString(wish.element), sideOf(wish.side), type.RType);
    for (const double level : wish.levels) {
        if (type.RType != 6) return context.stop(BadInput, type.RTypeCode + "不是线路保护，不能按电压等级装设");
        places += RelayStore::lineEnds(level);
    }
    if (places.isEmpty()) return context.stop(BadInput, "没有可以装设" + type.RTypeCode + "的位置");
    for (const Location& at : places) requests.append({at, type.RTypeNo, wish.ct, wish.pt, {}});
    return true;
}

bool collectAll(Context& context, const Wish& wish, QVector<RelayRequest>& requests) {
    const auto types = readRelayTypes();
    for (const int number : wish.types) {
        if (number < 1 || !types.contains(number))
            return context.stop(BadInput, "没有编号为" + QString::number(number) + "的保护类型");
        if (!collect(context, wish, types[number], requests)) return false;
    }
    return true;
}

void install(Context& context, const Wish& wish) {
    if (!context.openProject(wish.project, Access::Write)) return;
    QVector<RelayRequest> requests;
    try {
        if (!wish.csv.empty())
            requests = readRelayCsv(wish.csv);
        else if (!collectAll(context, wish, requests))
            return;
    } catch (const import::ImportError& error) {
        context.stop(BadInput, QString::fromStdString(error.what()));
        return;
    } catch (const exchange::FormatError& error) {
        context.stop(BadInput, QString::fromStdString(error.what()));
        return;
    }
    const int count = RelayStore::install(requests);
    if (count < 0) context.exitCode = BadInput;
    if (count < 0) return;
    if (context.json)
        print(QString("{\"installed\":%1}\n").arg(count));
    else
        print("装设保护 " + QString::number(count) + " 套\n");
}

void list(Context& context, const Wish& wish) {
    if (!context.openProject(wish.project, Access::Read)) return;
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    TextTable table({"编号", "保护类型", "安装位置", "有效", "CT变比", "PT变比"}, {0, 4, 5});
    for (const InstalledRelay& relay : RelayStore::list(wish.type)) {
        array.push_back({{"number", relay.RNo},
                         {"type", relay.RTypeNo},
                         {"element", relay.at.ID_Name.toStdString()},
                         {"i", relay.at.I_Name.toStdString()},
                         {"j", relay.at.J_Name.toStdString()},
                         {"side", relay.at.Side == 1 ? "I" : "J"},
                         {"valid", relay.Valid},
                         {"ct", relay.ctRatio},
                         {"pt", relay.ptRatio}});
        table.add({QString::number(relay.RNo), relay.RTypeCode,
                   locationLabel(relay.RType, relay.at.ID_Name, relay.at.I_Name, relay.at.J_Name, relay.at.Side),
                   relay.Valid ? "是" : "否", number(relay.ctRatio), number(relay.ptRatio)});
    }
    if (context.json) return print(QString::fromStdString(array.dump(1)) + "\n");
    table.print();
}

void remove(Context& context, const Wish& wish) {
    if (!context.openProject(wish.project, Access::Write)) return;
    QVector<int> known;
    for (const InstalledRelay& relay : RelayStore::list()) known.append(relay.RNo);
    for (const int relay : wish.relays)
        if (!known.contains(relay)) {
            context.stop(BadInput, "没有编号为" + QString::number(relay) + "的保护");
            return;
        }
    if (!RelayStore::remove(QVector<int>(wish.relays.begin(), wish.relays.end()))) context.exitCode = Internal;
}

void installVirtual(Context& context, const Wish& wish) {
    if (!context.openProject(wish.project, Access::Write)) return;
    if (!SearchDumRelay()) context.exitCode = Internal;
}

void addInstall(CLI::App* verb, Context& context, const std::shared_ptr<Wish>& wish) {
    CLI::App* installed = verb->add_subcommand("install", "装设保护：按电压等级、按元件、按 CSV 表");
    installed->add_option("PROJECT", wish->project, "工程名")->required();
    auto* types = installed->add_option("--type", wish->types, "保护类型编号，可多个");
    auto* where = installed->add_option_group("where", "位置");
    where->add_option("--level", wish->levels, "全部线路端，按电压等级 kV，可多个")->needs(types);
    auto* element = where->add_option("--element", wish->element, "元件名")->needs(types);
    where->add_option("--csv", wish->csv, "CSV 表: element,side,type[,i_node,j_node,ct,pt]")->excludes(types);
    where->require_option(1);
    installed->add_option("--side", wish->side, "元件的一侧，缺省为两侧")
        ->check(CLI::IsMember({"I", "J"}))
        ->needs(element);
    installed->add_option("--ct", wish->ct, "CT 变比");
    installed->add_option("--pt", wish->pt, "PT 变比");
    installed->callback([=, &context] { install(context, *wish); });
}

}  // namespace

void addRelays(CLI::App& app, Context& context) {
    CLI::App* verb = app.add_subcommand("relays", "保护：装设、列出、拆除、虚拟保护")->require_subcommand(1);
    auto wish = std::make_shared<Wish>();
    addInstall(verb, context, wish);

    CLI::App* listed = verb->add_subcommand("list", "列出保护");
    listed->add_option("PROJECT", wish->project, "工程名")->required();
    listed->add_option("--type", wish->type, "只列一类保护");
    listed->callback([=, &context] { list(context, *wish); });

    CLI::App* removed = verb->add_subcommand("remove", "拆除保护");
    removed->add_option("PROJECT", wish->project, "工程名")->required();
    removed->add_option("RELAY", wish->relays, "保护编号")->required();
    removed->callback([=, &context] { remove(context, *wish); });

    CLI::App* virtuals = verb->add_subcommand("virtual", "在 T 节点上自动装设虚拟保护");
    virtuals->add_option("PROJECT", wish->project, "工程名")->required();
    virtuals->callback([=, &context] { installVirtual(context, *wish); });
}

}  // namespace cli
