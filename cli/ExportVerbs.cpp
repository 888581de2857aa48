#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/Context.h"
#include "cli/TextTable.h"
#include "platform/import/CsvTable.h"
#include "platform/sql/Sql.h"
#include "programs/frame/RelayTypes.h"
#include "programs/frame/StageColumns.h"
#include "programs/workflow/ResultTable.h"

namespace cli {

namespace {

struct Wish {
    std::string project;
    int type = -1;
    bool csv = false;
};

/// A stored setting of a relay part.
struct StoredSetting {
    int relay, type, side, part;
    QString typeCode, element, iNode, jNode, cdz, unit;
    double primary, secondary, backupPrimary, backupSecondary;
};

QVector<StoredSetting> storedSettings(int type) {
    const auto types = readRelayTypes();
    QVector<StoredSetting> settings;
    sql::Query query;
    query.exec("SELECT u.RNo,u.RTypeNo,u.RTypeCode,u.ID_Name,u.I_Name,u.J_Name,u.Side,z.Cdz," +
               (stageColumns("z.NRdz") + stageColumns("z.BRdz")).join(',') +
               " FROM RLY_RUD u JOIN RLY_RDZ z ON z.RNo=u.RNo AND z.Cdz!='L' ORDER BY u.RNo,z.DzNo");
    while (query.next()) {
        if (type >= 0 && query.number(1) != type) continue;
        const RelayTypeInfo kind = types.value(query.number(1));
        const SettingKind* setting = kind.setting(query.text(7));
        for (int part = 0; part < kind.NPart; ++part)
            settings.append({query.number(0), query.number(1), query.number(6), part + 1, query.text(2), query.text(3),
                             query.text(4), query.text(5), query.text(7), unitOf(setting ? setting->VType : 0),
                             query.real(8 + part), query.real(13 + part), query.real(18 + part),
                             query.real(23 + part)});
    }
    return settings;
}

void printCsv(const QVector<StoredSetting>& settings) {
    std::string text;
    import::appendCsv(text, {"relay", "type", "type_name", "element", "i_node", "j_node", "side", "part", "setting",
                             "unit", "primary", "secondary", "backup_primary", "backup_secondary"});
    for (const StoredSetting& row : settings)
        import::appendCsv(
            text, {std::to_string(row.relay), std::to_string(row.type), row.typeCode.toStdString(),
                   row.element.toStdString(), row.iNode.toStdString(), row.jNode.toStdString(),
                   row.side == 1 ? "I" : "J", std::to_string(row.part), row.cdz.toStdString(), row.unit.toStdString(),
                   number(row.primary).toStdString(), number(row.secondary).toStdString(),
                   number(row.backupPrimary).toStdString(), number(row.backupSecondary).toStdString()});
    print(QString::fromStdString(text));
}

void printJson(const QVector<StoredSetting>& settings) {
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (const StoredSetting& row : settings)
        array.push_back({{"relay", row.relay},
                         {"type", row.type},
                         {"type_name", row.typeCode.toStdString()},
                         {"element", row.element.toStdString()},
                         {"i", row.iNode.toStdString()},
                         {"j", row.jNode.toStdString()},
                         {"side", row.side == 1 ? "I" : "J"},
                         {"part", row.part},
                         {"setting", row.cdz.toStdString()},
                         {"unit", row.unit.toStdString()},
                         {"primary", row.primary},
                         {"secondary", row.secondary},
                         {"backup_primary", row.backupPrimary},
                         {"backup_secondary", row.backupSecondary}});
    print(QString::fromStdString(array.dump(1)) + "\n");
}

void exportSettings(Context& context, const Wish& wish) {
    if (!context.openProject(wish.project, Access::Read)) return;
    const auto settings = storedSettings(wish.type);
    context.json ? printJson(settings) : printCsv(settings);
}

}  // namespace

void addExport(CLI::App& app, Context& context) {
    CLI::App* verb = app.add_subcommand("export", "导出")->require_subcommand(1);
    auto wish = std::make_shared<Wish>();
    CLI::App* settings = verb->add_subcommand("settings", "导出保护定值，CSV（缺省）或 --json");
    settings->add_option("PROJECT", wish->project, "工程名")->required();
    settings->add_option("--type", wish->type, "只导出一类保护");
    settings->add_flag("--csv", wish->csv, "写成 CSV");
    settings->callback([=, &context] { exportSettings(context, *wish); });
}

}  // namespace cli
