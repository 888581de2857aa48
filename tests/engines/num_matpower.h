#pragma once

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "exchange/NetworkFiles.h"

/// Positive-sequence case files with the default sequence data of the short-circuit convention: lines Z0 = 3 Z1,
/// transformers Z0 = Z1 through, generators X1 = 0.20 and X0 = 0.10 on 1.1 max(Pmax, 10) MVA, grounded.
namespace num {

using Rows = std::vector<std::vector<double>>;

/// The table `mpc.NAME = [ ... ];`.
inline Rows table(const std::string& text, const std::string& name) {
    const auto begin = text.find('[', text.find("mpc." + name + " ="));
    std::istringstream lines(text.substr(begin + 1, text.find("];", begin) - begin - 1));
    Rows rows;
    for (std::string line; std::getline(lines, line);) {
        std::replace(line.begin(), line.end(), ';', ' ');
        std::istringstream fields(line.substr(0, line.find('%')));
        std::vector<double> row;
        // Not read as a number: a stream stops at Inf and NaN.
        for (std::string word; fields >> word;) row.push_back(std::strtod(word.c_str(), nullptr));
        if (!row.empty()) rows.push_back(row);
    }
    return rows;
}

inline exchange::NetworkData matpowerNetwork(const std::string& text) {
    exchange::NetworkData data;
    std::map<int, double> baseKv;
    for (const auto& row : table(text, "bus")) {
        if (row[1] == 4) continue;
        exchange::NetBus bus;
        bus.no = static_cast<int>(row[0]);
        bus.baseKv = baseKv[bus.no] = row[9] > 0 ? row[9] : 1;
        bus.vMag = row[7], bus.vAngle = row[8];
        data.buses.push_back(bus);
    }
    int id = 0;
    for (const auto& row : table(text, "branch")) {
        const int i = static_cast<int>(row[0]), j = static_cast<int>(row[1]);
        ++id;
        if (row[10] != 1 || !baseKv.contains(i) || !baseKv.contains(j)) continue;
        const bool tiny = std::abs(row[2]) + std::abs(row[3]) < 1e-6;
        const double r = tiny ? 0 : row[2], x = tiny ? 1e-6 : row[3];
        if (row[8] != 0 || baseKv[i] != baseKv[j]) {
            exchange::NetTransformer t;
            t.idNo = id, t.iNo = i, t.jNo = j, t.r1 = t.r0 = r, t.x1 = t.x0 = x, t.zcType = 3;
            data.transformers.push_back(t);
        } else {
            exchange::NetLine l;
            l.idNo = id, l.iNo = i, l.jNo = j, l.r1 = r, l.x1 = x, l.r0 = 3 * r, l.x0 = 3 * x;
            data.lines.push_back(l);
        }
    }
    for (const auto& row : table(text, "gen")) {
        if (row[7] <= 0 || !baseKv.contains(static_cast<int>(row[0]))) continue;
        exchange::NetGenerator g;
        const double mva = 1.1 * std::max(row[8], 10.0);
        g.name = std::to_string(data.generators.size() + 1);
        g.no = static_cast<int>(row[0]), g.grounded = true;
        g.x1 = 0.20 * 100 / mva, g.x0 = 0.10 * 100 / mva;
        g.pMw = row[1], g.qMvar = row[2];
        data.generators.push_back(g);
    }
    return data;
}

}  // namespace num
