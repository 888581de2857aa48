#include <cmath>
#include <unordered_map>

#include "platform/host/Text.h"
#include "platform/import/CsvConvert.h"
#include "platform/import/CsvRows.h"
#include "platform/import/Import.h"
#include "platform/import/Names.h"
#include "platform/import/SequenceDefaults.h"

namespace import {

namespace {

using namespace csv;

/// The model as it grows, with the indexes that references are looked up in.
class FolderReader {
  public:
    explicit FolderReader(const std::filesystem::path& folder) : folder_(folder) {}

    host::NetworkModel read() {
        model_.name = folder_.filename().string();
        readPlaces();
        each<LineRow>([this](const LineRow& row) { add(row); });
        each<Transformer2Row>([this](const Transformer2Row& row) { add(row); });
        each<Transformer3Row>([this](const Transformer3Row& row) { add(row); });
        each<GeneratorRow>([this](const GeneratorRow& row) { add(row); });
        each<ShuntRow>([this](const ShuntRow& row) { add(row); });
        each<LoadRow>([this](const LoadRow& row) { add(row); });
        each<SwitchRow>([this](const SwitchRow& row) { add(row); });
        each<MutualRow>([this](const MutualRow& row) { add(row); });
        readSchemes();
        readLoadFlow();
        each<ModeRow>([this](const ModeRow& row) { add(row); });
        return std::move(model_);
    }

  private:
    /// Calls a function for each record of a file; messages then name that file and the record's line.
    template <class Row, class Add>
    void each(Add add) {
        file_ = FileOf<Row>::name();
        for (const Row& row : readRows<Row>(folder_)) {
            line_ = row.line;
            add(row);
        }
    }

    void readPlaces() {
        each<StationRow>([this](const StationRow& row) { add(row); });
        if (!std::filesystem::exists(folder_ / FileOf<NodeRow>::name()))
            fail(std::string(FileOf<NodeRow>::name()), 0, Text::say("文件不存在"));
        each<NodeRow>([this](const NodeRow& row) { add(row); });
    }

    void readSchemes() {
        each<SchemeRow>([this](const SchemeRow& row) {
            newName("scheme", row.name, maxSchemeLength);
            model_.schemes.push_back({row.name, {}});
        });
        if (model_.schemes.empty()) newName("scheme", "基础方案"), model_.schemes.push_back({"基础方案", {}});
        each<SchemeChangeRow>([this](const SchemeChangeRow& row) { add(row); });
    }

    void readLoadFlow() {
        each<LoadFlowRow>([this](const LoadFlowRow& row) { add(row); });
        each<LoadFlowNodeRow>([this](const LoadFlowNodeRow& row) {
            requireNode(row.node, true);
            if (row.v_pu <= 0) fail(Text::say("电压必须大于 0"));
            loadFlow(row.number).nodes.push_back({row.node, row.v_pu, row.angle_deg});
        });
        each<LoadFlowGeneratorRow>([this](const LoadFlowGeneratorRow& row) {
            requireElement("generator", row.generator);
            loadFlow(row.number).generators.push_back({row.generator, row.p_mw, row.q_mvar});
        });
    }

    void add(const StationRow& row) {
        newName("station", row.name);
        const bool hasPosition = !std::isnan(row.x) && !std::isnan(row.y);
        model_.stations.push_back({row.name, hasPosition ? row.x : 0, hasPosition ? row.y : 0, hasPosition});
    }

    void add(const NodeRow& row) {
        newName("node", row.name);
        requirePositive(row.base_kv, "base_kv");
        if (row.node_type != 0 && row.node_type != 1) fail(Text::say("node_type 必须是 0 或 1"));
        if (!row.bus.empty()) requireName(row.bus);
        if (!row.station.empty()) requireElement("station", row.station);
        host::Node node{row.name, row.base_kv, row.node_type, row.bus, row.physical_bus, row.station};
        node.hasPosition = !std::isnan(row.x) && !std::isnan(row.y);
        if (node.hasPosition) node.x = row.x, node.y = row.y;
        if (!std::isnan(row.v_min_kv)) node.vMinKv = row.v_min_kv;
        baseKv_[row.name] = row.base_kv;
        model_.nodes.push_back(std::move(node));
    }

    void add(const LineRow& row) {
        newBranch("line", row.name, row.node_i, row.node_j);
        if (row.length_km < 0) fail(Text::say("length_km 不能小于 0"));
        model_.lines.push_back(toModel(row, baseKv(row.node_i)));
    }

    void add(const Transformer2Row& row) {
        newBranch("transformer2", row.name, row.node_i, row.node_j);
        requirePositive(row.mva, "mva"), requirePositive(row.kv_i, "kv_i"), requirePositive(row.kv_j, "kv_j");
        requireGrounding(row.grounding_i), requireGrounding(row.grounding_j);
        requireLosses(row.uk_percent, row.pk_kw, row.mva), requireLosses(row.uk0_percent, row.pk0_kw, row.mva);
        model_.transformers2.push_back(toModel(row, baseKv(row.node_i)));
    }

    void add(const Transformer3Row& row) {
        newName("transformer3", row.name);
        newName("node", row.star_node);
        for (const std::string* node : {&row.node_1, &row.node_2, &row.node_3}) requireNode(*node);
        for (double mva : {row.mva_1, row.mva_2, row.mva_3}) requirePositive(mva, "mva");
        for (double kv : {row.kv_1, row.kv_2, row.kv_3}) requirePositive(kv, "kv");
        for (const std::string* g : {&row.grounding_1, &row.grounding_2, &row.grounding_3}) requireGrounding(*g);
        requireLosses(row.uk12_percent, row.pk12_kw, std::min(row.mva_1, row.mva_2));
        requireLosses(row.uk13_percent, row.pk13_kw, std::min(row.mva_1, row.mva_3));
        requireLosses(row.uk23_percent, row.pk23_kw, std::min(row.mva_2, row.mva_3));
        requireLosses(row.uk0_12_percent, row.pk0_12_kw, std::min(row.mva_1, row.mva_2));
        requireLosses(row.uk0_13_percent, row.pk0_13_kw, std::min(row.mva_1, row.mva_3));
        requireLosses(row.uk0_23_percent, row.pk0_23_kw, std::min(row.mva_2, row.mva_3));
        model_.transformers3.push_back(toModel(row, baseKv(row.node_1)));
    }

    void add(const GeneratorRow& row) {
        newName("generator", row.name), requireNode(row.node);
        requirePositive(row.mva, "mva"), requirePositive(row.kv, "kv");
        requireOneOf(row.kind, {"generator", "motor", "feeder"});
        model_.generators.push_back(toModel(row, baseKv(row.node)));
    }

    void add(const ShuntRow& row) {
        newName("shunt", row.name), requireNode(row.node);
        requirePositive(row.mvar, "mvar"), requirePositive(row.kv, "kv");
        requireOneOf(row.kind, {"capacitor", "reactor"});
        model_.shunts.push_back(toModel(row, baseKv(row.node)));
    }

    void add(const LoadRow& row) {
        newName("load", row.name), requireNode(row.node);
        model_.loads.push_back({row.name, row.node, row.p_mw, row.q_mvar, row.in_service});
    }

    void add(const SwitchRow& row) {
        newBranch("switch", row.name, row.node_i, row.node_j);
        requireOneOf(row.kind, {"breaker", "disconnector"});
        if (baseKv(row.node_i) != baseKv(row.node_j)) fail(Text::say("开关两端的基准电压不同"));
        model_.switches.push_back({row.name, row.node_i, row.node_j, row.kind == "breaker", row.closed});
    }

    void add(const MutualRow& row) {
        requireElement("line", row.line_1), requireElement("line", row.line_2);
        if (row.line_1 == row.line_2) fail(Text::say("线路与自身不能有互感"));
        if (row.sense != 1 && row.sense != -1) fail(Text::say("sense 必须是 1 或 -1"));
        const auto& first = model_.lines[static_cast<std::size_t>(lineIndex(row.line_1))];
        const host::Mutual mutual = toModel(row, baseKv(first.i));
        requireStretch(mutual.firstFrom, mutual.firstTo), requireStretch(mutual.secondFrom, mutual.secondTo);
        model_.mutuals.push_back(mutual);
    }

    void add(const SchemeChangeRow& row) {
        requireElement("scheme", row.scheme);
        requireOneOf(row.table, {"line", "transformer2", "transformer3", "generator", "shunt", "switch"});
        requireElement(row.table, row.element);
        for (auto& scheme : model_.schemes)
            if (scheme.name == row.scheme) scheme.changes.push_back({row.table, row.element, row.in_service});
    }

    void add(const LoadFlowRow& row) {
        newName("loadflow", row.name);
        requireElement("scheme", row.scheme);
        if (row.number < 1) fail(Text::say("number 必须大于 0"));
        for (const auto& other : model_.loadFlow)
            if (other.number == row.number) fail(Text::say("潮流作业编号重复"));
        model_.loadFlow.push_back({row.number, row.name, row.scheme, {}, {}});
    }

    void add(const ModeRow& row) {
        host::OperatingMode& mode = modeOf(row);
        if (row.element.empty()) return;
        if (row.m10 != 0 && row.m10 != 1) fail(Text::say("m10 必须是 0 或 1"));
        if (!row.cut) requireOneOf(row.unit, {"pu", "ohm"});
        if (!row.cut && (std::isnan(row.r) || std::isnan(row.x))) fail(Text::say("未切除的支路必须给出 r 和 x"));
        requireModeBranch(row);
        mode.changes.push_back({row.m10, row.element, row.node_i, row.node_j, row.cut, row.unit == "ohm",
                                row.cut ? 0 : row.r, row.cut ? 0 : row.x});
    }

    host::OperatingMode& modeOf(const ModeRow& row) {
        requireOneOf(row.use, {"max", "min"});
        for (auto& mode : model_.modes)
            if (mode.name == row.mode) return mode;
        newName("mode", row.mode);
        if (!row.note.empty()) requireName(row.note, 100);
        host::OperatingMode mode;
        mode.name = row.mode, mode.note = row.note, mode.maximum = row.use == "max";
        return model_.modes.emplace_back(std::move(mode));
    }

    /// A change names a line, a transformer, a winding (star point first), or an element at one node (node twice).
    void requireModeBranch(const ModeRow& row) {
        requireNode(row.node_i, true), requireNode(row.node_j, true);
        const auto joins = [&](const std::string& i, const std::string& j) {
            return i == row.node_i && j == row.node_j;
        };
        for (const auto& line : model_.lines)
            if (line.name == row.element && joins(line.i, line.j)) return;
        for (const auto& t : model_.transformers2)
            if (t.name == row.element && joins(t.i.node, t.j.node)) return;
        for (const auto& t : model_.transformers3)
            for (const auto& w : t.winding)
                if (t.name == row.element && joins(t.star, w.node)) return;
        for (const auto& shunt : model_.shunts)
            if (shunt.name == row.element && joins(shunt.node, shunt.node)) return;
        fail(Text::say("没有支路“") + row.element + "”（" + row.node_i + "  " + row.node_j + "）");
    }

    host::LoadFlowCase& loadFlow(int number) {
        for (auto& lf : model_.loadFlow)
            if (lf.number == number) return lf;
        fail(Text::say("没有潮流作业 ") + std::to_string(number));
    }

    [[noreturn]] void fail(const std::string& what) const { fail(file_, line_, what); }
    [[noreturn]] static void fail(const std::string& file, int line, const std::string& what) {
        throw ImportError(file, line, what);
    }
    void requireName(const std::string& name, int maxLength = maxNameLength) const {
        if (const std::string why = whyNoName(name, maxLength); !why.empty()) fail("“" + name + "”：" + why);
    }
    void newName(const std::string& kind, const std::string& name, int maxLength = maxNameLength) {
        requireName(name, maxLength);
        const auto [old, isNew] = elements_[kind].try_emplace(name, Seen{line_, elements_[kind].size()});
        if (!isNew) fail("“" + name + Text::say("”与第 ") + std::to_string(old->second.line) + Text::say(" 行重名"));
    }
    void newBranch(const std::string& kind, const std::string& name, const std::string& i, const std::string& j) {
        newName(kind, name);
        requireNode(i), requireNode(j);
        if (i == j) fail("“" + name + Text::say("”的两端是同一节点"));
    }
    void requireElement(const std::string& kind, const std::string& name) {
        if (!elements_[kind].contains(name)) fail(Text::say("没有定义“") + name + "”");
    }
    int lineIndex(const std::string& name) { return static_cast<int>(elements_["line"].at(name).index); }
    void requireNode(const std::string& name, bool starAllowed = false) {
        if (!baseKv_.contains(name) && !(starAllowed && elements_["node"].contains(name)))
            fail(Text::say("没有节点“") + name + "”");
    }
    double baseKv(const std::string& node) const { return baseKv_.at(node); }
    void requirePositive(double value, const std::string& column) const {
        if (!(value > 0)) fail(column + Text::say(" 必须大于 0"));
    }
    void requireOneOf(const std::string& text, std::initializer_list<std::string_view> choices) const {
        if (std::find(choices.begin(), choices.end(), text) != choices.end()) return;
        std::string list;
        for (std::string_view choice : choices)
            list += (list.empty() ? std::string() : Text::say("、")) + std::string(choice);
        fail("“" + text + Text::say("”不是 ") + list + Text::say(" 之一"));
    }
    void requireGrounding(const std::string& text) const { requireOneOf(text, {"D", "Y", "YN"}); }
    void requireLosses(double uk, double pk, double mva) const {
        if (!lossesFit(uk, pk, mva)) fail(Text::say("短路损耗大于短路电压所允许的值"));
    }
    void requireStretch(double from, double to) const {
        if (!(from >= 0 && from < to && to <= 100)) fail(Text::say("互感区段必须满足 0 <= from < to <= 100"));
    }

    struct Seen {
        int line = 0;
        std::size_t index = 0;
    };
    const std::filesystem::path& folder_;
    host::NetworkModel model_;
    std::string file_;
    int line_ = 0;
    std::unordered_map<std::string, std::unordered_map<std::string, Seen>> elements_;
    std::unordered_map<std::string, double> baseKv_;
};

void refuseOtherFiles(const std::filesystem::path& folder) {
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() != ".csv") continue;
        if (std::find(fileNames().begin(), fileNames().end(), name) == fileNames().end())
            throw ImportError(name, 0, Text::say("不是网络数据的文件名"));
    }
}

}  // namespace

host::NetworkModel readCsv(const std::filesystem::path& folder, const Options& options, Report& report) {
    if (!std::filesystem::is_directory(folder)) throw ImportError(folder.string(), 0, Text::say("不是目录"));
    refuseOtherFiles(folder);
    options.tell(0, Text::say("读网络数据"));
    host::NetworkModel model = FolderReader(folder).read();
    options.tell(80, Text::say("检查"));
    completeSequenceData(model, options, report);
    check(model, options, report);
    options.tell(100, Text::say("读入完成"));
    return model;
}

}  // namespace import
