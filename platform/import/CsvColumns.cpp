#include "platform/import/CsvColumns.h"

namespace import::csv {

namespace {
constexpr Need R = Need::Required;
constexpr Need O = Need::Optional;
constexpr Need A = Need::Absent;
}  // namespace

template <>
std::string_view FileOf<StationRow>::name() {
    return "stations.csv";
}
template <>
const std::vector<Column<StationRow>>& FileOf<StationRow>::columns() {
    using T = StationRow;
    static const std::vector<Column<T>> list = {{"name", R, &T::name}, {"x", O, &T::x}, {"y", O, &T::y}};
    return list;
}

template <>
std::string_view FileOf<NodeRow>::name() {
    return "nodes.csv";
}
template <>
const std::vector<Column<NodeRow>>& FileOf<NodeRow>::columns() {
    using T = NodeRow;
    static const std::vector<Column<T>> list = {{"name", R, &T::name},
                                                {"base_kv", R, &T::base_kv},
                                                {"node_type", O, &T::node_type},
                                                {"bus", O, &T::bus},
                                                {"physical_bus", O, &T::physical_bus},
                                                {"station", O, &T::station},
                                                {"x", O, &T::x},
                                                {"y", O, &T::y},
                                                {"v_min_kv", O, &T::v_min_kv}};
    return list;
}

template <>
std::string_view FileOf<LineRow>::name() {
    return "lines.csv";
}
template <>
const std::vector<Column<LineRow>>& FileOf<LineRow>::columns() {
    using T = LineRow;
    static const std::vector<Column<T>> list = {{"name", R, &T::name},
                                                {"node_i", R, &T::node_i},
                                                {"node_j", R, &T::node_j},
                                                {"r1_ohm", R, &T::r1_ohm},
                                                {"x1_ohm", R, &T::x1_ohm},
                                                {"b1_us", O, &T::b1_us},
                                                {"r0_ohm", O, &T::r0_ohm},
                                                {"x0_ohm", O, &T::x0_ohm},
                                                {"b0_us", O, &T::b0_us},
                                                {"length_km", R, &T::length_km},
                                                {"rated_a", O, &T::rated_a},
                                                {"max_load_a", O, &T::max_load_a},
                                                {"open_i", O, &T::open_i},
                                                {"open_j", O, &T::open_j},
                                                {"in_service", O, &T::in_service},
                                                {"end_temp_c", A, &T::end_temp_c}};
    return list;
}

template <>
std::string_view FileOf<Transformer2Row>::name() {
    return "transformers2.csv";
}
template <>
const std::vector<Column<Transformer2Row>>& FileOf<Transformer2Row>::columns() {
    using T = Transformer2Row;
    static const std::vector<Column<T>> list = {{"name", R, &T::name},
                                                {"node_i", R, &T::node_i},
                                                {"node_j", R, &T::node_j},
                                                {"kv_i", R, &T::kv_i},
                                                {"kv_j", R, &T::kv_j},
                                                {"mva", R, &T::mva},
                                                {"grounding_i", R, &T::grounding_i},
                                                {"grounding_j", R, &T::grounding_j},
                                                {"rn_i_ohm", O, &T::rn_i_ohm},
                                                {"xn_i_ohm", O, &T::xn_i_ohm},
                                                {"rn_j_ohm", O, &T::rn_j_ohm},
                                                {"xn_j_ohm", O, &T::xn_j_ohm},
                                                {"uk_percent", R, &T::uk_percent},
                                                {"pk_kw", R, &T::pk_kw},
                                                {"uk0_percent", O, &T::uk0_percent},
                                                {"pk0_kw", O, &T::pk0_kw},
                                                {"tap_ratio", O, &T::tap_ratio},
                                                {"phase_shift_deg", O, &T::phase_shift_deg},
                                                {"max_load_a", O, &T::max_load_a},
                                                {"tap_changer", O, &T::tap_changer},
                                                {"phase_shifter", O, &T::phase_shifter},
                                                {"in_service", O, &T::in_service},
                                                {"unit", A, &T::unit}};
    return list;
}

template <>
std::string_view FileOf<Transformer3Row>::name() {
    return "transformers3.csv";
}
template <>
const std::vector<Column<Transformer3Row>>& FileOf<Transformer3Row>::columns() {
    using T = Transformer3Row;
    static const std::vector<Column<T>> list = {{"name", R, &T::name},
                                                {"star_node", R, &T::star_node},
                                                {"node_1", R, &T::node_1},
                                                {"node_2", R, &T::node_2},
                                                {"node_3", R, &T::node_3},
                                                {"kv_1", R, &T::kv_1},
                                                {"kv_2", R, &T::kv_2},
                                                {"kv_3", R, &T::kv_3},
                                                {"mva_1", R, &T::mva_1},
                                                {"mva_2", R, &T::mva_2},
                                                {"mva_3", R, &T::mva_3},
                                                {"grounding_1", R, &T::grounding_1},
                                                {"grounding_2", R, &T::grounding_2},
                                                {"grounding_3", R, &T::grounding_3},
                                                {"rn_1_ohm", O, &T::rn_1_ohm},
                                                {"xn_1_ohm", O, &T::xn_1_ohm},
                                                {"rn_2_ohm", O, &T::rn_2_ohm},
                                                {"xn_2_ohm", O, &T::xn_2_ohm},
                                                {"rn_3_ohm", O, &T::rn_3_ohm},
                                                {"xn_3_ohm", O, &T::xn_3_ohm},
                                                {"uk12_percent", R, &T::uk12_percent},
                                                {"uk13_percent", R, &T::uk13_percent},
                                                {"uk23_percent", R, &T::uk23_percent},
                                                {"pk12_kw", R, &T::pk12_kw},
                                                {"pk13_kw", R, &T::pk13_kw},
                                                {"pk23_kw", R, &T::pk23_kw},
                                                {"uk0_12_percent", O, &T::uk0_12_percent},
                                                {"uk0_13_percent", O, &T::uk0_13_percent},
                                                {"uk0_23_percent", O, &T::uk0_23_percent},
                                                {"pk0_12_kw", O, &T::pk0_12_kw},
                                                {"pk0_13_kw", O, &T::pk0_13_kw},
                                                {"pk0_23_kw", O, &T::pk0_23_kw},
                                                {"tap_changer", O, &T::tap_changer},
                                                {"in_service", O, &T::in_service}};
    return list;
}

template <>
std::string_view FileOf<GeneratorRow>::name() {
    return "generators.csv";
}
template <>
const std::vector<Column<GeneratorRow>>& FileOf<GeneratorRow>::columns() {
    using T = GeneratorRow;
    static const std::vector<Column<T>> list = {{"name", R, &T::name},
                                                {"node", R, &T::node},
                                                {"kind", R, &T::kind},
                                                {"mva", R, &T::mva},
                                                {"kv", R, &T::kv},
                                                {"cos_phi", O, &T::cos_phi},
                                                {"xd2_percent", R, &T::xd2_percent},
                                                {"r_percent", O, &T::r_percent},
                                                {"x0_percent", O, &T::x0_percent},
                                                {"r0_percent", O, &T::r0_percent},
                                                {"grounded", O, &T::grounded},
                                                {"rn_ohm", O, &T::rn_ohm},
                                                {"xn_ohm", O, &T::xn_ohm},
                                                {"p_mw", O, &T::p_mw},
                                                {"q_mvar", O, &T::q_mvar},
                                                {"in_service", O, &T::in_service},
                                                {"voltage_range_percent", A, &T::voltage_range_percent},
                                                {"ik_max_ka", A, &T::ik_max_ka},
                                                {"ik_min_ka", A, &T::ik_min_ka}};
    return list;
}

template <>
std::string_view FileOf<ShuntRow>::name() {
    return "shunts.csv";
}
template <>
const std::vector<Column<ShuntRow>>& FileOf<ShuntRow>::columns() {
    using T = ShuntRow;
    static const std::vector<Column<T>> list = {
        {"name", R, &T::name},     {"node", R, &T::node},     {"kind", R, &T::kind},
        {"mvar", R, &T::mvar},     {"kv", R, &T::kv},         {"grounded", O, &T::grounded},
        {"r0_ohm", O, &T::r0_ohm}, {"x0_ohm", O, &T::x0_ohm}, {"in_service", O, &T::in_service}};
    return list;
}

template <>
std::string_view FileOf<LoadRow>::name() {
    return "loads.csv";
}
template <>
const std::vector<Column<LoadRow>>& FileOf<LoadRow>::columns() {
    using T = LoadRow;
    static const std::vector<Column<T>> list = {{"name", R, &T::name},
                                                {"node", R, &T::node},
                                                {"p_mw", R, &T::p_mw},
                                                {"q_mvar", R, &T::q_mvar},
                                                {"in_service", O, &T::in_service}};
    return list;
}

template <>
std::string_view FileOf<SwitchRow>::name() {
    return "switches.csv";
}
template <>
const std::vector<Column<SwitchRow>>& FileOf<SwitchRow>::columns() {
    using T = SwitchRow;
    static const std::vector<Column<T>> list = {{"name", R, &T::name},
                                                {"node_i", R, &T::node_i},
                                                {"node_j", R, &T::node_j},
                                                {"kind", R, &T::kind},
                                                {"closed", R, &T::closed}};
    return list;
}

template <>
std::string_view FileOf<MutualRow>::name() {
    return "mutuals.csv";
}
template <>
const std::vector<Column<MutualRow>>& FileOf<MutualRow>::columns() {
    using T = MutualRow;
    static const std::vector<Column<T>> list = {{"line_1", R, &T::line_1},
                                                {"line_2", R, &T::line_2},
                                                {"r0_ohm", O, &T::r0_ohm},
                                                {"x0_ohm", R, &T::x0_ohm},
                                                {"sense", R, &T::sense},
                                                {"from_1_percent", O, &T::from_1_percent},
                                                {"to_1_percent", O, &T::to_1_percent},
                                                {"from_2_percent", O, &T::from_2_percent},
                                                {"to_2_percent", O, &T::to_2_percent}};
    return list;
}

template <>
std::string_view FileOf<SchemeRow>::name() {
    return "schemes.csv";
}
template <>
const std::vector<Column<SchemeRow>>& FileOf<SchemeRow>::columns() {
    using T = SchemeRow;
    static const std::vector<Column<T>> list = {{"name", R, &T::name}};
    return list;
}

template <>
std::string_view FileOf<SchemeChangeRow>::name() {
    return "scheme_changes.csv";
}
template <>
const std::vector<Column<SchemeChangeRow>>& FileOf<SchemeChangeRow>::columns() {
    using T = SchemeChangeRow;
    static const std::vector<Column<T>> list = {{"scheme", R, &T::scheme},
                                                {"table", R, &T::table},
                                                {"element", R, &T::element},
                                                {"in_service", R, &T::in_service}};
    return list;
}

template <>
std::string_view FileOf<LoadFlowRow>::name() {
    return "loadflow.csv";
}
template <>
const std::vector<Column<LoadFlowRow>>& FileOf<LoadFlowRow>::columns() {
    using T = LoadFlowRow;
    static const std::vector<Column<T>> list = {
        {"number", R, &T::number}, {"name", R, &T::name}, {"scheme", R, &T::scheme}};
    return list;
}

template <>
std::string_view FileOf<LoadFlowNodeRow>::name() {
    return "loadflow_nodes.csv";
}
template <>
const std::vector<Column<LoadFlowNodeRow>>& FileOf<LoadFlowNodeRow>::columns() {
    using T = LoadFlowNodeRow;
    static const std::vector<Column<T>> list = {
        {"number", R, &T::number}, {"node", R, &T::node}, {"v_pu", R, &T::v_pu}, {"angle_deg", R, &T::angle_deg}};
    return list;
}

template <>
std::string_view FileOf<LoadFlowGeneratorRow>::name() {
    return "loadflow_generators.csv";
}
template <>
const std::vector<Column<LoadFlowGeneratorRow>>& FileOf<LoadFlowGeneratorRow>::columns() {
    using T = LoadFlowGeneratorRow;
    static const std::vector<Column<T>> list = {
        {"number", R, &T::number}, {"generator", R, &T::generator}, {"p_mw", R, &T::p_mw}, {"q_mvar", R, &T::q_mvar}};
    return list;
}

template <>
std::string_view FileOf<ModeRow>::name() {
    return "modes.csv";
}
template <>
const std::vector<Column<ModeRow>>& FileOf<ModeRow>::columns() {
    using T = ModeRow;
    static const std::vector<Column<T>> list = {{"mode", R, &T::mode},
                                                {"note", O, &T::note},
                                                {"use", R, &T::use},
                                                {"m10", O, &T::m10},
                                                {"element", O, &T::element},
                                                {"node_i", O, &T::node_i},
                                                {"node_j", O, &T::node_j},
                                                {"cut", O, &T::cut},
                                                {"unit", O, &T::unit},
                                                {"r", O, &T::r},
                                                {"x", O, &T::x}};
    return list;
}

const std::vector<std::string_view>& fileNames() {
    static const std::vector<std::string_view> list = {
        FileOf<StationRow>::name(),      FileOf<NodeRow>::name(),         FileOf<LineRow>::name(),
        FileOf<Transformer2Row>::name(), FileOf<Transformer3Row>::name(), FileOf<GeneratorRow>::name(),
        FileOf<ShuntRow>::name(),        FileOf<LoadRow>::name(),         FileOf<SwitchRow>::name(),
        FileOf<MutualRow>::name(),       FileOf<SchemeRow>::name(),       FileOf<SchemeChangeRow>::name(),
        FileOf<LoadFlowRow>::name(),     FileOf<LoadFlowNodeRow>::name(), FileOf<LoadFlowGeneratorRow>::name(),
        FileOf<ModeRow>::name()};
    return list;
}

}  // namespace import::csv
