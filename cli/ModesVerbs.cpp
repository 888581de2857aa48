#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/Context.h"
#include "cli/TextTable.h"
#include "platform/sql/Sql.h"
#include "programs/study/ModeStore.h"

namespace cli {

namespace {

struct Wish {
    std::string project, name, note;
    std::vector<std::string> cut;
};

nlohmann::ordered_json jsonOf(const OperatingModeRecord& mode) {
    nlohmann::ordered_json rows = nlohmann::ordered_json::array();
    for (const ModeRow& row : mode.rows)
        rows.push_back({{"sequence", row.M10 == 1 ? "positive" : "zero"},
                        {"element", row.ID_Name.toStdString()},
                        {"i", row.I_Name.toStdString()},
                        {"j", row.J_Name.toStdString()},
                        {"cut", row.Flg != 0},
                        {"unit", row.UNIT == 1 ? "ohm" : "pu"},
                        {"r", row.R.toDouble()},
                        {"x", row.X.toDouble()}});
    return {{"number", mode.SysNo},
            {"name", mode.SysName.toStdString()},
            {"note", mode.Note.toStdString()},
            {"changes", rows}};
}

void list(Context& context, const Wish& wish) {
    if (!context.openProject(wish.project, Access::Read)) return;
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    TextTable table({"编号", "方式名", "改动数", "描述"}, {0, 2});
    for (const OperatingModeRecord& mode : ModeStore::list()) {
        array.push_back(jsonOf(mode));
        table.add({QString::number(mode.SysNo), mode.SysName, QString::number(mode.rows.size()), mode.Note});
    }
    if (context.json) return print(QString::fromStdString(array.dump(1)) + "\n");
    table.print();
}

/// The changes that take an element out of service in both sequences; a three-winding transformer with all windings.
QVector<ModeRow> outage(const QString& element) {
    QVector<ModeRow> rows;
    sql::Query query;
    query.exec(
        "SELECT ID_Name,I_Name,J_Name FROM CDB_ACLINEBAK WHERE ID_Name=?"
        " UNION ALL SELECT ID_Name,I_Name,J_Name FROM CDB_TRANS_2WBAK WHERE ID_Name=?"
        " UNION ALL SELECT ID_Name,Name_N,Name_1 FROM CDB_TRANS_3WBAK WHERE ID_Name=?"
        " UNION ALL SELECT ID_Name,Name_N,Name_2 FROM CDB_TRANS_3WBAK WHERE ID_Name=?"
        " UNION ALL SELECT ID_Name,Name_N,Name_3 FROM CDB_TRANS_3WBAK WHERE ID_Name=?",
        {element, element, element, element, element});
    while (query.next())
        for (const int sequence : {1, 0})
            rows.append({sequence, query.text(0), query.text(1), query.text(2), 1, 0, "0", "0"});
    return rows;
}

void add(Context& context, const Wish& wish) {
    if (!context.openProject(wish.project, Access::Write)) return;
    OperatingModeRecord mode;
    mode.SysName = QString::fromStdString(wish.name);
    mode.Note = QString::fromStdString(wish.note);
    for (const std::string& name : wish.cut) {
        const QVector<ModeRow> rows = outage(QString::fromStdString(name));
        if (rows.isEmpty()) {
            context.stop(BadInput, "网络中没有线路或变压器" + QString::fromStdString(name));
            return;
        }
        mode.rows += rows;
    }
    if (!ModeStore::save(mode)) context.exitCode = BadInput;
}

}  // namespace

void addModes(CLI::App& app, Context& context) {
    CLI::App* verb = app.add_subcommand("modes", "运行方式：列出、增加")->require_subcommand(1);
    auto wish = std::make_shared<Wish>();

    CLI::App* listed = verb->add_subcommand("list", "列出运行方式");
    listed->add_option("PROJECT", wish->project, "工程名")->required();
    listed->callback([=, &context] { list(context, *wish); });

    CLI::App* added = verb->add_subcommand("add", "增加切除若干元件的运行方式");
    added->add_option("PROJECT", wish->project, "工程名")->required();
    added->add_option("NAME", wish->name, "方式名")->required();
    added->add_option("--cut", wish->cut, "切除的线路或变压器")->required();
    added->add_option("--note", wish->note, "描述");
    added->callback([=, &context] { add(context, *wish); });
}

}  // namespace cli
