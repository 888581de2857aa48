#include "engines/rules/FaultCases.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>

#include "exchange/TextFile.h"

namespace engines {

bool touches(const FaultCase& faultCase, BranchIndex branch) {
    if (branch.value < 0) return false;
    return std::ranges::any_of(faultCase.conditions, [&](const Condition& c) { return c.branch == branch; });
}

bool exclude(const FaultCase& outage, const FaultCase& fault) {
    return std::ranges::any_of(fault.conditions, [&](const Condition& c) { return touches(outage, c.branch); });
}

double realNumber(const std::string& text, const std::string& file, const std::string& where) {
    double value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc{} || stop != end || !std::isfinite(value))
        throw exchange::FormatError(file, 0, where + ": '" + text + "' is no number");
    return value;
}

namespace {

struct Reading {
    const Network& network;
    const std::string& file;
    const std::string& where;

    [[noreturn]] void fail(const std::string& what) const { throw exchange::FormatError(file, 0, where + ": " + what); }
};

bool isBusRow(const exchange::FaultRow& row) { return row.iNo == row.jNo; }

/// Place of the row; nothing when the network does not have it.
std::optional<Condition> placed(const exchange::FaultRow& row, const Reading& reading) {
    Condition condition;
    if (isBusRow(row)) {
        condition.bus = reading.network.bus(BusNo{row.iNo});
        if (condition.bus.value < 0) return std::nullopt;
        if (row.fType > 4) reading.fail("an open at bus " + std::to_string(row.iNo) + " without a branch");
        return condition;
    }
    condition.branch = reading.network.branch(row.idNo, BusNo{row.iNo}, BusNo{row.jNo});
    if (condition.branch.value < 0) return std::nullopt;
    const Branch& branch = reading.network.branches[static_cast<std::size_t>(condition.branch.value)];
    const bool sameWay = branch.from == reading.network.bus(BusNo{row.iNo});
    condition.percent = sameWay ? row.kLoc : 100 - row.kLoc;
    return condition;
}

std::optional<Condition> condition(const exchange::FaultRow& row, const Reading& reading) {
    std::optional<Condition> result = placed(row, reading);
    if (!result) return result;
    result->kind = static_cast<FaultKind>(row.fType);
    result->z = {realNumber(row.r, reading.file, reading.where), realNumber(row.x, reading.file, reading.where)};
    result->group = row.mType;
    return result;
}

std::string placeName(const exchange::FaultRow& row) {
    return "branch " + std::to_string(row.idNo) + " between " + std::to_string(row.iNo) + " and " +
           std::to_string(row.jNo);
}

}  // namespace

FaultCases faultCases(const Network& network, std::span<const exchange::FaultRow> rows, const std::string& file,
                      const std::string& where, Notes& notes) {
    const Reading reading{network, file, where};
    std::map<int, std::optional<FaultCase>> byNumber;
    for (const exchange::FaultRow& row : rows) {
        auto& entry = byNumber.try_emplace(row.mType, FaultCase{row.mType, {}}).first->second;
        const std::optional<Condition> found = condition(row, reading);
        if (!found) {
            if (entry)
                notes.push_back(file + ": " + where + ": fault number " + std::to_string(row.mType) +
                                " is left out: the network has no " + placeName(row));
            entry.reset();
        } else if (entry) {
            entry->conditions.push_back(*found);
        }
    }
    FaultCases cases;
    for (auto& [number, entry] : byNumber)
        if (entry) (number < 20 ? cases.faults : cases.outages).push_back(std::move(*entry));
    return cases;
}

}  // namespace engines
