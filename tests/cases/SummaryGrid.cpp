#include "tests/cases/SummaryGrid.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <numbers>

#include "engines/study/Iec60909.h"
#include "exchange/TextFile.h"
#include "platform/import/Import.h"

namespace cases {

namespace {

using nlohmann::json;

std::vector<json> table(const json& net, const std::string& name) {
    const json content = json::parse(net.at(name).at("_object").get<std::string>());
    std::vector<json> rows;
    for (const json& values : content.at("data")) {
        json& row = rows.emplace_back();
        for (std::size_t c = 0; c < values.size(); ++c) row[content.at("columns")[c].get<std::string>()] = values[c];
    }
    return rows;
}

/// Per unit on 100 MVA.
struct Impedance {
    double r = 0, x = 0;
};
Impedance split(double z, double rx) { return {z * rx / std::sqrt(1 + rx * rx), z / std::sqrt(1 + rx * rx)}; }

class GridReader {
  public:
    GridReader(const json& net, bool maximum) : net_(net), maximum_(maximum) {}

    host::NetworkModel read() {
        buses_ = table(net_, "bus");
        for (const json& bus : buses_) addNode(bus.at("name"), bus.at("vn_kv"));
        for (const json& grid : table(net_, "ext_grid")) addFeeder(grid);
        for (const json& line : table(net_, "line")) addLine(line);
        if (net_.contains("trafo"))
            for (const json& transformer : table(net_, "trafo")) addTransformer(transformer);
        for (const json& bus : buses_) addStub(bus);
        model_.schemes.push_back({"基础方案", {}});
        return std::move(model_);
    }

  private:
    std::string busName(const json& index) const { return buses_.at(index.get<std::size_t>()).at("name"); }
    double baseKv(const json& index) const { return buses_.at(index.get<std::size_t>()).at("vn_kv"); }
    void addNode(const std::string& name, double kv) {
        host::Node& node = model_.nodes.emplace_back();
        node.name = name, node.baseKv = kv;
    }

    void addFeeder(const json& grid) {
        const double mva = grid.at("s_sc_max_mva"), kv = baseKv(grid.at("bus"));
        const Impedance z1 = split(1.1 * 100 / mva, grid.at("rx_max"));
        host::Generator g;
        g.name = "grid", g.node = busName(grid.at("bus")), g.kind = "feeder", g.ratedMva = mva, g.ratedKv = kv;
        g.r1 = z1.r, g.x1 = z1.x, g.x0 = z1.x * double(grid.at("x0x_max")), g.r0 = g.x0 * double(grid.at("r0x0_max"));
        g.grounded = true;
        g.ikMaxKa = mva / (std::numbers::sqrt3 * kv);
        g.ikMinKa = double(grid.at("s_sc_min_mva")) / (std::numbers::sqrt3 * kv);
        model_.generators.push_back(g);
    }

    void addLine(const json& row) {
        const double km = row.at("length_km"), kv = baseKv(row.at("from_bus")), ohm = kv * kv / 100;
        host::Line line;
        line.name = row.at("name"), line.i = busName(row.at("from_bus")), line.j = busName(row.at("to_bus"));
        line.r1 = km * double(row.at("r_ohm_per_km")) / ohm, line.x1 = km * double(row.at("x_ohm_per_km")) / ohm;
        line.r0 = km * double(row.at("r0_ohm_per_km")) / ohm, line.x0 = km * double(row.at("x0_ohm_per_km")) / ohm;
        line.b0 = km * double(row.at("c0_nf_per_km")) * 1e-9 * 2 * std::numbers::pi * 50 * ohm;
        line.lengthKm = km, line.endTemperature = row.at("endtemp_degree");
        model_.lines.push_back(line);
    }

    void addStub(const json& bus) {
        const double kv = bus.at("vn_kv"), ohm = kv * kv / 100;
        host::Line line;
        line.name = "Zf " + bus.at("name").get<std::string>(), line.i = bus.at("name"), line.j = line.i + " Zf";
        line.r1 = line.x1 = line.r0 = line.x0 = 5 / ohm, line.lengthKm = 1;
        addNode(line.j, kv);
        model_.lines.push_back(line);
    }

    static host::Winding winding(const std::string& node, double kv, double mva, host::Grounding grounding) {
        return {node, kv, mva, grounding, 0, 0};
    }

    void addTransformer(const json& row) {
        const double mva = row.at("sn_mva"), rated = 100 / mva / 100;  // a percentage on 100 MVA
        const double r = rated * double(row.at("vkr_percent"));
        const double x = std::sqrt(std::pow(rated * double(row.at("vk_percent")), 2) - r * r);
        const double x0 = rated * double(row.at("vk0_percent"));
        const bool throughPath = row.at("vector_group").get<std::string>().starts_with("YN");
        const auto high = winding(busName(row.at("hv_bus")), row.at("vn_hv_kv"), mva,
                                  throughPath ? host::Grounding::Grounded : host::Grounding::Delta);
        const auto low = winding(busName(row.at("lv_bus")), row.at("vn_lv_kv"), mva, host::Grounding::Grounded);
        if (throughPath) return addWithMagnetising(row, high, low, r, x, x0);
        host::Transformer2 t;
        t.name = "T", t.i = high, t.j = low, t.r1 = r, t.x1 = x, t.r0 = 0, t.x0 = x0;
        model_.transformers2.push_back(t);
    }

    /// The pairs with the third winding have the relative reactance whose factor is 1.
    void addWithMagnetising(const json& row, const host::Winding& high, const host::Winding& low, double r, double x,
                            double x0) {
        const double mva = row.at("sn_mva"), atHigh = row.at("si0_hv_partial");
        const double magnetising = x0 * double(row.at("mag0_percent"));
        const double factor = maximum_ ? engines::iec60909::transformerFactor(1.1, x * mva / 100) : 1;
        const double neutral = maximum_ ? 0.075 * 100 / mva : x;
        addNode("core", low.ratedKv);
        host::Transformer3 t;
        t.name = "T", t.star = "T star";
        t.winding[0] = high, t.winding[1] = low;
        t.winding[2] = winding("core", low.ratedKv, mva, host::Grounding::Delta);
        star(x, neutral, neutral, t.x1);
        star(r, 0, 0, t.r1);
        star(x0, factor * atHigh * x0 + magnetising, factor * (1 - atHigh) * x0 + magnetising, t.x0);
        model_.transformers3.push_back(t);
    }

    static void star(double z12, double z13, double z23, double z[3]) {
        z[0] = (z12 + z13 - z23) / 2, z[1] = (z12 + z23 - z13) / 2, z[2] = (z13 + z23 - z12) / 2;
    }

    const json& net_;
    bool maximum_;
    std::vector<json> buses_;
    host::NetworkModel model_;
};

}  // namespace

void writeSummaryGrid(const std::filesystem::path& file, bool maximum, const std::filesystem::path& folder) {
    const json whole = json::parse(exchange::readAll(file));
    import::writeCsv(GridReader(whole.at("_object"), maximum).read(), folder);
}

}  // namespace cases
