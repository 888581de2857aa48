#include <array>
#include <cmath>

#include "engines/faults/FaultStudy.h"
#include "engines/network/RealTimeReader.h"
#include "engines/network/SectionGraph.h"
#include "engines/order/RelayDependencies.h"
#include "engines/order/TurnOrder.h"
#include "engines/rules/SettingRun.h"
#include "exchange/TextFile.h"
#include "tests/fuzz/Bundle.h"
#include "tests/fuzz/SampleFiles.h"
#include "tests/fuzz/Targets.h"

namespace fuzz {

namespace {

using engines::Condition;
using engines::FaultKind;

void mustBeFinite(const engines::Sequences& s, const char* what) {
    for (const auto& value : {s.positive, s.negative, s.zero})
        if (!std::isfinite(value.real()) || !std::isfinite(value.imag()))
            throw Broken(std::string(what) + " is not finite");
}

void mustBeFinite(const engines::Network& network, const engines::Solution& solution) {
    for (int b = 0; b < static_cast<int>(network.buses.size()); ++b) mustBeFinite(solution.voltage({b}), "a voltage");
    for (int b = 0; b < static_cast<int>(network.branches.size()); ++b)
        mustBeFinite(solution.current({b}, engines::End::I), "a current");
    mustBeFinite(solution.faultCurrent(), "the fault's current");
}

/// Faults of all kinds at the first bus and along the first and last branch, under an outage too.
void faultEverywhere(const engines::Network& network) {
    if (network.buses.empty()) return;
    const engines::ModeNetwork mode(network, {});
    for (const FaultKind kind : {FaultKind::ThreePhaseGround, FaultKind::PhaseAGround, FaultKind::PhaseBC}) {
        const Condition fault{{}, {0}, 0, kind, {}, 1};
        mustBeFinite(network, mode.solve({&fault, 1}));
    }
    if (network.branches.empty()) return;
    const int last = static_cast<int>(network.branches.size()) - 1;
    const engines::Complex opened{99999.9999, 99999.9999};
    const std::array rows{Condition{{0}, {}, 30, FaultKind::PhaseBCGround, {0, .01}, 1},
                          Condition{{last}, {}, 1, FaultKind::OpenABC, opened, 21},
                          Condition{{last}, {}, 99, FaultKind::OpenABC, opened, 21},
                          Condition{{last}, {}, 99, FaultKind::ThreePhaseGround, {}, 21}};
    mustBeFinite(network, mode.solve(rows));
    const Condition open{{last}, {}, 60, FaultKind::OpenA, opened, 1};
    mustBeFinite(network, mode.solve({&open, 1}));
}

void readPlaceAndFault(const exchange::NetworkData& data) {
    const auto network = engines::buildNetwork(data);
    try {
        faultEverywhere(network);
    } catch (const std::domain_error&) {
        // Resonance: the elements cancel out, which the programs tell in one line.
    }
    std::vector<exchange::RelayBlock> relays;
    for (const auto& line : data.lines)
        for (const int side : {1, 2})
            relays.push_back({1, int(relays.size()) + 1, "", line.iNo, line.jNo, line.idNo, side, {}});
    std::vector<int> numbers;
    for (const auto& relay : relays) numbers.push_back(relay.rno);
    const auto order = engines::turnOrder(numbers, engines::relayDependencies(relays, engines::sectionGraph(data, {})));
    if (order.order.size() != relays.size()) throw Broken("relays are missing in the turn order");
}

void mustRead(const Workplace& place, const exchange::NetworkData& data) {
    exchange::writeNetwork(place.directory(), data);
    const auto once = exchange::readNetwork(place.directory());
    if (once.buses.size() != data.buses.size() || once.mutuals.size() != data.mutuals.size())
        throw Broken("elements are lost on the way back");
}

bool isLongName(const exchange::NetworkData& data) {
    for (const auto& bus : data.buses)
        if (bus.name.find_first_of("\r\n") != std::string::npos) return true;
    for (const auto& generator : data.generators)
        if (generator.name.find_first_of("\r\n") != std::string::npos) return true;
    return false;
}

void mustName(std::string_view message) {
    if (message.find('\n') != std::string_view::npos) throw Broken("a refusal of several lines");
}

}  // namespace

void networkFiles(std::string_view bytes) {
    static Workplace place(sampleNetwork());
    static const Workplace written({});
    place.lay(bytes);
    try {
        const auto data = exchange::readNetwork(place.directory());
        if (!isLongName(data)) mustRead(written, data);
        readPlaceAndFault(data);
    } catch (const exchange::FormatError& refusal) {
        mustName(refusal.what());
    }
}

void settingStudy(std::string_view bytes) {
    static Workplace place(sampleStudy());
    place.lay(bytes);
    try {
        const auto study = engines::readStudy(place.directory());
        engines::ModeStudies calculation(study.network, study.modes);
        const auto results = engines::evaluateRules(study, calculation);
        for (const auto& setting : results.settings)
            for (const double value : setting.values)
                if (!std::isfinite(value)) throw Broken("a setting that is not finite");
        for (const auto& c : results.coefficients)
            if (!(c.fz1 >= 0) || !(c.fz0 >= 0)) throw Broken("a branch coefficient below 0");
    } catch (const exchange::FormatError& refusal) {
        mustName(refusal.what());
    } catch (const std::domain_error&) {
        // Resonance, as above.
    }
}

void realTimeTables(std::string_view bytes) {
    static Workplace place({});
    static const Workplace written({});
    const auto file = place.put("tables.db", bytes);
    try {
        const auto data = engines::readRealTimeTables(file);
        mustRead(written, data);
    } catch (const exchange::FormatError&) {
    }
}

}  // namespace fuzz
