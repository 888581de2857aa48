#pragma once

#include <array>
#include <span>

/// An open circuit as a fault impedance, R and X alike.
inline constexpr double kOpenCircuit = 99999.9999;

/// One of the rows that together take an element out of service.
struct OutageRow {
    int kLoc = 0;
    int fType = 5;
    double z = kOpenCircuit;  ///< R and X
};

/// A line is open and grounded near both ends; any other element is open at both ends.
inline std::span<const OutageRow> outageRows(bool line) {
    static constexpr std::array<OutageRow, 4> kLine{{{1}, {99}, {1, 1, 0}, {99, 1, 0}}};
    static constexpr std::array<OutageRow, 2> kOther{{{0}, {100}}};
    return line ? std::span<const OutageRow>(kLine) : std::span<const OutageRow>(kOther);
}

inline constexpr int kLastFault = 19;
inline constexpr int kFirstOutage = 21;
inline constexpr int kLastOutage = 40;
inline constexpr int kRowsOfOutage = 4;  ///< at most

inline constexpr char kTooManyFaults[] = "故障方式编号越限（>19），计算可能错误，请检查自定义的故障方式号";
inline constexpr char kTooManyOutages[] = "检修方式编号越限（>40），计算可能错误，请检查自定义的故障方式号";
