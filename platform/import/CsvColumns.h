#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/host/NetworkModel.h"

/// The files of a plain network folder as records in the units of the files; docs/network-csv.md tells every column.
/// One list of columns per file feeds the reader and the writer.
namespace import::csv {

/// Required: an empty cell is an error. Optional: an empty cell leaves the field as it is made (numbers: NaN here).
/// Absent: the same, and the file need not have the column at all.
enum class Need { Required, Optional, Absent };

template <class Row>
struct Column {
    std::string_view name;
    Need need;
    std::variant<std::string Row::*, double Row::*, int Row::*, bool Row::*> field;
};

/// What every record has: where it stands.
struct Placed {
    int line = 0;
};

struct StationRow : Placed {
    std::string name;
    double x, y;
};
struct NodeRow : Placed {
    std::string name;
    double base_kv;
    int node_type = 0;
    std::string bus;
    bool physical_bus = false;
    std::string station;
    double x, y, v_min_kv;
};
struct LineRow : Placed {
    std::string name, node_i, node_j;
    double r1_ohm, x1_ohm, b1_us, r0_ohm, x0_ohm, b0_us, length_km, rated_a, max_load_a, end_temp_c;
    bool open_i = false, open_j = false, in_service = true;
};
struct Transformer2Row : Placed {
    std::string name;
    std::string node_i, node_j;
    double kv_i, kv_j, mva;
    std::string grounding_i, grounding_j;
    double rn_i_ohm, xn_i_ohm, rn_j_ohm, xn_j_ohm;
    double uk_percent, pk_kw, uk0_percent, pk0_kw;
    double tap_ratio, phase_shift_deg, max_load_a;
    bool tap_changer = false, phase_shifter = false, unit = false, in_service = true;
};
struct Transformer3Row : Placed {
    std::string name, star_node;
    std::string node_1, node_2, node_3;
    double kv_1, kv_2, kv_3, mva_1, mva_2, mva_3;
    std::string grounding_1, grounding_2, grounding_3;
    double rn_1_ohm, xn_1_ohm, rn_2_ohm, xn_2_ohm, rn_3_ohm, xn_3_ohm;
    double uk12_percent, uk13_percent, uk23_percent, pk12_kw, pk13_kw, pk23_kw;
    double uk0_12_percent, uk0_13_percent, uk0_23_percent, pk0_12_kw, pk0_13_kw, pk0_23_kw;
    bool tap_changer = false, in_service = true;
};
struct GeneratorRow : Placed {
    std::string name, node, kind;
    double mva, kv, cos_phi, xd2_percent, r_percent, x0_percent, r0_percent;
    bool grounded = false;
    double rn_ohm, xn_ohm, p_mw, q_mvar;
    double voltage_range_percent, ik_max_ka, ik_min_ka;
    bool in_service = true;
};
struct ShuntRow : Placed {
    std::string name, node, kind;
    double mvar, kv;
    bool grounded = false;
    double r0_ohm, x0_ohm;
    bool in_service = true;
};
struct LoadRow : Placed {
    std::string name, node;
    double p_mw, q_mvar;
    bool in_service = true;
};
struct SwitchRow : Placed {
    std::string name, node_i, node_j, kind;
    bool closed = true;
};
struct MutualRow : Placed {
    std::string line_1, line_2;
    double r0_ohm, x0_ohm;
    int sense = 1;
    double from_1_percent, to_1_percent, from_2_percent, to_2_percent;
};
struct SchemeRow : Placed {
    std::string name;
};
struct SchemeChangeRow : Placed {
    std::string scheme, table, element;
    bool in_service = true;
};
struct LoadFlowRow : Placed {
    int number = 1;
    std::string name, scheme;
};
struct LoadFlowNodeRow : Placed {
    int number = 1;
    std::string node;
    double v_pu, angle_deg;
};
struct LoadFlowGeneratorRow : Placed {
    int number = 1;
    std::string generator;
    double p_mw, q_mvar;
};
struct ModeRow : Placed {
    std::string mode, note, use;
    int m10 = 1;
    std::string element, node_i, node_j;
    bool cut = false;
    std::string unit;
    double r, x;
};

/// The name of the file that holds these records, e.g. "lines.csv", and its columns in the order they are written.
template <class Row>
struct FileOf {
    static std::string_view name();
    static const std::vector<Column<Row>>& columns();
};

/// All file names that a folder may hold.
const std::vector<std::string_view>& fileNames();

}  // namespace import::csv
