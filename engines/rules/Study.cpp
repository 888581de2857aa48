#include "engines/rules/Study.h"

#include <algorithm>
#include <cmath>

#include "engines/network/SectionGraph.h"
#include "exchange/FileNames.h"
#include "exchange/NetworkFiles.h"
#include "exchange/TextFile.h"
#include "exchange/VirtualRelayFile.h"

namespace engines {

namespace {

/// |R| or |X| from here on cuts a branch out of an operating mode.
constexpr double kCutImpedance = 9999999;

std::string elementText(const exchange::ModeElement& element) {
    return "operating mode " + std::to_string(element.sysNo) + ", element " + std::to_string(element.idNo) +
           " between " + std::to_string(element.firstNode) + " and " + std::to_string(element.secondNode);
}

/// The branch at a bus whose own zero-sequence path to ground is what the element changes.
BranchIndex groundedBranch(const Network& network, int idNo, BusIndex bus) {
    const auto [first, last] = network.branchById.equal_range(idNo);
    for (auto entry = first; entry != last; ++entry) {
        const Branch& branch = network.branches[static_cast<std::size_t>(entry->second)];
        const bool atI = branch.zeroPath == ZeroPath::GroundAtI && branch.from == bus;
        const bool atJ = branch.zeroPath == ZeroPath::GroundAtJ && branch.to == bus;
        if (atI || atJ) return BranchIndex{entry->second};
    }
    return {};
}

template <typename Parse>
auto parsed(const std::filesystem::path& directory, const char* file, Parse parse) {
    return parse(exchange::readAll(directory / file), file);
}

/// The results name relays and main branches by their numbers, and 0 there means none.
void checkNumber(int number, const char* file, const std::string& what) {
    if (number < 1) throw exchange::FormatError(file, 0, what + " " + std::to_string(number) + " is no number from 1");
}

void readRelays(const std::filesystem::path& directory, Study& study) {
    for (const exchange::RelayBlock& block : parsed(directory, exchange::file::kRelays, exchange::parseRelays)) {
        checkNumber(block.rno, exchange::file::kRelays, "relay");
        study.relays.push_back(placeRelay(block, study.network));
    }
}

void readMainBranches(const std::filesystem::path& directory, Study& study) {
    const char* file = exchange::file::kMainBranches;
    for (exchange::MainBranch& record : parsed(directory, file, exchange::parseMainBranches)) {
        checkNumber(record.fzNo, file, "main branch");
        const std::string where = "main branch " + std::to_string(record.fzNo);
        FaultCases cases = faultCases(study.network, record.faults, file, where, study.notes);
        study.mainBranches.push_back({std::move(record), std::move(cases)});
    }
}

void readRules(const std::filesystem::path& directory, Study& study) {
    const char* file = exchange::file::kRules;
    for (exchange::RuleBlock& rule : parsed(directory, file, exchange::parseRules)) {
        const int number = rule.ruleNo;
        if (!study.rules.emplace(number, std::move(rule)).second)
            throw exchange::FormatError(file, 0, "rule " + std::to_string(number) + " stands twice");
    }
}

bool hasNegative(const exchange::CoefficientResult& r) {
    const double numbers[] = {double(r.fzNo),   double(r.mINo),   double(r.mJNo),  double(r.mIdNo), double(r.mSide),
                              double(r.bINo),   double(r.bJNo),   double(r.bIdNo), double(r.nlRNo), r.fz1,
                              double(r.nSel1a), double(r.nSel1b), double(r.nSys1), r.fz0,           double(r.nSel0a),
                              double(r.nSel0b), double(r.nSys0)};
    return std::ranges::any_of(numbers, [](double number) { return number < 0; });
}

void readEarlierCoefficients(const std::filesystem::path& directory, Study& study) {
    const auto path = directory / exchange::file::kEarlierCoefficients;
    if (!std::filesystem::exists(path)) return;
    study.earlier = exchange::parseCoefficients(exchange::readAll(path));
    std::erase_if(study.earlier, [](const exchange::CoefficientResult& line) { return line.fzNo == 0; });
    if (std::ranges::any_of(study.earlier, hasNegative))
        throw exchange::FormatError(exchange::file::kEarlierCoefficients, 0, "a negative number stands in it");
}

}  // namespace

void addModeChange(const exchange::ModeElement& element, Study& study) {
    const char* file = exchange::file::kModes;
    const std::string where = elementText(element);
    ModeChange change;
    change.bus = study.network.bus(BusNo{element.firstNode});
    change.second = study.network.bus(BusNo{element.secondNode});
    change.sequence = element.m10 == 1 ? Sequence::Positive : Sequence::Zero;
    change.z = {realNumber(element.r, file, where), realNumber(element.x, file, where)};
    if (change.z == Complex{}) throw exchange::FormatError(file, 0, where + " has no impedance");
    change.cut = std::abs(change.z.real()) >= kCutImpedance || std::abs(change.z.imag()) >= kCutImpedance;
    const bool shunt = element.firstNode == element.secondNode;
    change.branch = shunt ? groundedBranch(study.network, element.idNo, change.bus)
                          : study.network.branch(element.idNo, BusNo{element.firstNode}, BusNo{element.secondNode});
    auto& changes = study.modes[element.sysNo];
    if (change.bus.value < 0 || (!shunt && change.branch.value < 0))
        study.notes.push_back(std::string(file) + ": " + where + " is not in the network and is left out");
    else if (shunt && change.sequence == Sequence::Positive)
        study.notes.push_back(std::string(file) + ": " + where +
                              " has no place in the positive sequence and is left out");
    else
        changes.push_back(change);
}

Study readStudy(const std::filesystem::path& directory) {
    Study study;
    study.control = parsed(directory, exchange::file::kControl, exchange::parseControl);
    const exchange::NetworkData data = exchange::readNetwork(directory);
    study.network = buildNetwork(data);
    study.network.loadFlow = study.network.loadFlow && study.control.mlf == 1;
    study.graph = sectionGraph(data, parsed(directory, exchange::file::kVirtualRelays, exchange::parseVirtualRelays));
    readRelays(directory, study);
    for (const auto& element : parsed(directory, exchange::file::kModes, exchange::parseModes))
        addModeChange(element, study);
    readMainBranches(directory, study);
    study.groups = parsed(directory, exchange::file::kRuleFaults, exchange::parseRelayRules);
    readRules(directory, study);
    readEarlierCoefficients(directory, study);
    return study;
}

}  // namespace engines
