#include <limits>
#include <unordered_map>

#include "exchange/TextFile.h"
#include "platform/import/CsvConvert.h"
#include "platform/import/CsvRows.h"
#include "platform/import/Import.h"

namespace import {

namespace {

using namespace csv;

constexpr double notGiven = std::numeric_limits<double>::quiet_NaN();

class FolderWriter {
  public:
    FolderWriter(const host::NetworkModel& model, const std::filesystem::path& folder)
        : model_(model), folder_(folder) {
        for (const auto& node : model.nodes) baseKv_[node.name] = node.baseKv;
        for (const auto& line : model.lines) lineNode_[line.name] = line.i;
    }

    void write() const {
        std::filesystem::create_directories(folder_);
        writePlaces();
        writeElements();
        writeSchemes();
        writeLoadFlow();
        writeModes();
    }

  private:
    template <class Row>
    void put(const std::vector<Row>& rows) const {
        const auto path = folder_ / FileOf<Row>::name();
        if (rows.empty())
            std::filesystem::remove(path);
        else
            exchange::replace(path, textOf(rows));
    }
    template <class Row, class Element, class NodeOf>
    void convert(const std::vector<Element>& elements, NodeOf nodeOf) const {
        std::vector<Row> rows;
        for (const auto& element : elements) rows.push_back(toRow(element, baseKv_.at(nodeOf(element))));
        put(rows);
    }

    void writePlaces() const {
        std::vector<StationRow> stations;
        for (const auto& s : model_.stations)
            stations.push_back({{}, s.name, s.hasPosition ? s.x : notGiven, s.hasPosition ? s.y : notGiven});
        put(stations);
        std::vector<NodeRow> nodes;
        for (const auto& n : model_.nodes)
            nodes.push_back({{},
                             n.name,
                             n.baseKv,
                             n.nodeType,
                             n.bus,
                             n.physicalBus,
                             n.station,
                             n.hasPosition ? n.x : notGiven,
                             n.hasPosition ? n.y : notGiven,
                             n.vMinKv > 0 ? n.vMinKv : notGiven});
        put(nodes);
    }

    void writeElements() const {
        convert<LineRow>(model_.lines, [](const host::Line& e) { return e.i; });
        convert<Transformer2Row>(model_.transformers2, [](const host::Transformer2& e) { return e.i.node; });
        convert<Transformer3Row>(model_.transformers3, [](const host::Transformer3& e) { return e.winding[0].node; });
        convert<GeneratorRow>(model_.generators, [](const host::Generator& e) { return e.node; });
        convert<ShuntRow>(model_.shunts, [](const host::Shunt& e) { return e.node; });
        convert<MutualRow>(model_.mutuals, [this](const host::Mutual& e) { return lineNode_.at(e.first); });
        std::vector<LoadRow> loads;
        for (const auto& l : model_.loads) loads.push_back({{}, l.name, l.node, l.pMw, l.qMvar, l.inService});
        put(loads);
        std::vector<SwitchRow> switches;
        for (const auto& s : model_.switches)
            switches.push_back({{}, s.name, s.i, s.j, s.breaker ? "breaker" : "disconnector", s.closed});
        put(switches);
    }

    void writeSchemes() const {
        std::vector<SchemeRow> schemes;
        std::vector<SchemeChangeRow> changes;
        for (const auto& s : model_.schemes) {
            schemes.push_back({{}, s.name});
            for (const auto& c : s.changes) changes.push_back({{}, s.name, c.table, c.element, c.inService});
        }
        put(schemes);
        put(changes);
    }

    void writeLoadFlow() const {
        std::vector<LoadFlowRow> cases;
        std::vector<LoadFlowNodeRow> nodes;
        std::vector<LoadFlowGeneratorRow> generators;
        for (const auto& c : model_.loadFlow) {
            cases.push_back({{}, c.number, c.name, c.scheme});
            for (const auto& n : c.nodes) nodes.push_back({{}, c.number, n.node, n.vMag, n.vAngle});
            for (const auto& g : c.generators) generators.push_back({{}, c.number, g.element, g.pMw, g.qMvar});
        }
        put(cases);
        put(nodes);
        put(generators);
    }

    void writeModes() const {
        std::vector<ModeRow> rows;
        for (const auto& m : model_.modes) {
            const std::string use = m.maximum ? "max" : "min";
            if (m.changes.empty())
                rows.push_back({{}, m.name, m.note, use, 1, {}, {}, {}, false, {}, notGiven, notGiven});
            for (const auto& c : m.changes)
                rows.push_back({{},
                                m.name,
                                m.note,
                                use,
                                c.m10,
                                c.element,
                                c.i,
                                c.j,
                                c.cut,
                                c.cut   ? ""
                                : c.ohm ? "ohm"
                                        : "pu",
                                c.cut ? notGiven : c.r,
                                c.cut ? notGiven : c.x});
        }
        put(rows);
    }

    const host::NetworkModel& model_;
    const std::filesystem::path& folder_;
    std::unordered_map<std::string, double> baseKv_;
    std::unordered_map<std::string, std::string> lineNode_;
};

}  // namespace

void writeCsv(const host::NetworkModel& model, const std::filesystem::path& folder) {
    FolderWriter(model, folder).write();
}

}  // namespace import
