#pragma once

#include <QString>
#include <QVector>
#include <array>
#include <functional>
#include <span>

#include "programs/engine/BranchTable.h"
#include "programs/engine/RunInputs.h"

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

/// Gives outage numbers to elements that are not among the outages yet, from the first free one on, and adds them.
/// An element that the network does not have is told by its name and `missing`; numbers beyond the last end it, told.
/// \param highest  the highest outage number in use; 0 none
void numberOutages(const QVector<ElementName>& outages, int highest, const QString& missing,
                   const std::function<bool(const BranchRow&)>& isThere,
                   const std::function<void(int mType, const BranchRow&)>& add);

inline constexpr char kTooManyFaults[] =
    QT_TRANSLATE_NOOP("Text", "故障方式编号越限（>19），计算可能错误，请检查自定义的故障方式号");
inline constexpr char kTooManyOutages[] =
    QT_TRANSLATE_NOOP("Text", "检修方式编号越限（>40），计算可能错误，请检查自定义的故障方式号");
