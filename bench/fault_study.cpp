#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "engines/faults/FaultStudy.h"
#include "engines/network/SequenceNetwork.h"
#include "tests/engines/num_matpower.h"

/// Fault studies on public networks; the first argument of each benchmark is the place in `kCases`.
/// MORVANE_SHARED_NETWORKS names the folder; without it nothing runs.
namespace {

using namespace engines;

constexpr const char* kCases[] = {"case118.m", "case_ACTIVSg2000.m", "case9241pegase.m"};

const Network& network(std::int64_t place) {
    static std::map<std::int64_t, Network> kept;
    if (!kept.contains(place)) {
        const char* folder = std::getenv("MORVANE_SHARED_NETWORKS");
        std::ifstream in(std::filesystem::path(folder ? folder : "") / "matpower" / kCases[place]);
        if (in) kept[place] = buildNetwork(num::matpowerNetwork({std::istreambuf_iterator<char>(in), {}}));
    }
    return kept[place];
}

bool ready(benchmark::State& state) {
    if (!network(state.range(0)).buses.empty()) return true;
    state.SkipWithError("the public networks are not here");
    return false;
}

void Mode(benchmark::State& state) {
    if (!ready(state)) return;
    for (auto _ : state) benchmark::DoNotOptimize(ModeNetwork(network(state.range(0)), {}));
}

void Column(benchmark::State& state) {
    if (!ready(state)) return;
    const auto elements =
        std::make_shared<SequenceElements>(network(state.range(0)), Sequence::Positive, std::span<const ModeChange>{});
    const auto net = std::make_shared<SequenceNetwork>(elements, ComplexVector{});
    int bus = 0;
    for (auto _ : state) benchmark::DoNotOptimize(net->column(bus = (bus + 97) % elements->buses()));
}

/// One fault at a bus, its current and those of one branch.
void BusFault(benchmark::State& state) {
    if (!ready(state)) return;
    const ModeNetwork mode(network(state.range(0)), {});
    const int buses = static_cast<int>(network(state.range(0)).buses.size());
    int bus = 0;
    for (auto _ : state) {
        const Condition fault{{}, {bus = (bus + 97) % buses}, 0, FaultKind::PhaseAGround, {}, 1};
        const Solution solution = mode.solve({&fault, 1});
        benchmark::DoNotOptimize(solution.current({0}, End::I));
    }
}

/// A fault on one branch while another is out: the outage is new in every round.
void FaultUnderOutage(benchmark::State& state) {
    if (!ready(state)) return;
    const ModeNetwork mode(network(state.range(0)), {});
    const int branches = static_cast<int>(network(state.range(0)).branches.size());
    const Complex open{99999.9999, 99999.9999};
    int out = 0;
    for (auto _ : state) {
        out = (out + 101) % branches;
        const Condition rows[] = {{{out}, {}, 0, FaultKind::OpenABC, open, 21},
                                  {{out}, {}, 100, FaultKind::OpenABC, open, 21},
                                  {{(out + 1) % branches}, {}, 50, FaultKind::PhaseAGround, {}, 1}};
        benchmark::DoNotOptimize(mode.solve(rows).faultCurrent());
    }
}

BENCHMARK(Mode)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(Column)->DenseRange(0, 2)->Unit(benchmark::kMicrosecond);
BENCHMARK(BusFault)->DenseRange(0, 2)->Unit(benchmark::kMicrosecond);
BENCHMARK(FaultUnderOutage)->DenseRange(0, 2)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
