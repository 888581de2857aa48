#include <benchmark/benchmark.h>
#include <klu.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>

#include "bench/kernels/BareLoops.h"
#include "engines/faults/BusStudy.h"
#include "engines/faults/LocalStudy.h"
#include "engines/network/Memory.h"
#include "engines/network/SelectedInverse.h"
#include "engines/network/SequenceNetwork.h"
#include "tests/engines/num_matpower.h"

/// Fault studies on public networks; the argument of each benchmark is the place in `kCases`. Each round runs the
/// program's own call and the bare loop one after the other: the time is that of the call, `bare_us` that of the loop,
/// `ratio` their quotient. MORVANE_SHARED_NETWORKS names the folder; without it nothing runs.
namespace {

using namespace engines;
using Clock = std::chrono::steady_clock;

constexpr const char* kCases[] = {"case118.m", "case300.m", "case_ACTIVSg2000.m", "case2383wp.m", "case9241pegase.m"};
constexpr int kCaseCount = 5;

struct Case {
    explicit Case(const std::string& text)
        : network(buildNetwork(num::matpowerNetwork(text))), grid(network), work(grid), mode(network, {}) {
        for (int s = 0; s < 2; ++s) {
            bare::assemble(grid, s, work.factors[static_cast<std::size_t>(s)]);
            bare::factorise(*grid.ordering, work.factors[static_cast<std::size_t>(s)]);
            bare::invert(*grid.ordering, work.factors[static_cast<std::size_t>(s)],
                         work.inverse[static_cast<std::size_t>(s)], work.sums);
        }
    }
    [[nodiscard]] int buses() const { return static_cast<int>(network.buses.size()); }
    [[nodiscard]] int branches() const { return static_cast<int>(network.branches.size()); }

    Network network;
    bare::Grid grid;
    bare::Work work;
    ModeNetwork mode;
};

/// Nothing when the networks are not here.
Case* theCase(benchmark::State& state) {
    static std::map<std::int64_t, std::unique_ptr<Case>> kept;
    auto& found = kept[state.range(0)];
    if (!found) {
        const char* folder = std::getenv("MORVANE_SHARED_NETWORKS");
        std::ifstream in(std::filesystem::path(folder ? folder : "") / "matpower" / kCases[state.range(0)]);
        if (in) found = std::make_unique<Case>(std::string{std::istreambuf_iterator<char>(in), {}});
    }
    if (!found) state.SkipWithError("the public networks are not here");
    if (found) state.SetLabel(kCases[state.range(0)]);
    return found.get();
}

template <class Work>
double seconds(Work work) {
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// The medians of both, so that a disturbance of one round does not decide about the ratio.
template <class Own, class Bare, class Prepare>
void compare(benchmark::State& state, Own own, Bare loop, Prepare prepare) {
    std::vector<double> owns, bares;
    for (auto _ : state) {
        prepare();
        bares.push_back(seconds(loop));
        owns.push_back(seconds(own));
        state.SetIterationTime(owns.back());
    }
    const auto middle = [](std::vector<double>& v) {
        std::nth_element(v.begin(), v.begin() + static_cast<std::ptrdiff_t>(v.size() / 2), v.end());
        return v[v.size() / 2];
    };
    const double ownTime = middle(owns), bareTime = middle(bares);
    state.counters["own_us"] = ownTime * 1e6;
    state.counters["bare_us"] = bareTime * 1e6;
    state.counters["ratio"] = ownTime / bareTime;
}

template <class Own, class Bare>
void compare(benchmark::State& state, Own own, Bare loop) {
    compare(state, own, loop, [] {});
}

/// Both sequences of an operating mode from the impedances to the factors.
void Mode(benchmark::State& state) {
    Case* c = theCase(state);
    if (!c) return;
    const int threads = static_cast<int>(state.range(1));
    compare(
        state, [&] { benchmark::DoNotOptimize(ModeNetwork(c->network, {}, threads)); },
        [&] {
            for (std::size_t s = 0; s < 2; ++s) {
                bare::assemble(c->grid, static_cast<int>(s), c->work.factors[s]);
                bare::factorise(*c->grid.ordering, c->work.factors[s]);
            }
            benchmark::DoNotOptimize(c->work.factors[1].diagonal.back());
        });
}

/// The factors alone, from a matrix that is there.
void Factorise(benchmark::State& state) {
    Case* c = theCase(state);
    if (!c) return;
    SymmetricMatrix matrix(c->grid.ordering);
    bare::Matrix assembled = c->work.factors[0];
    bare::assemble(c->grid, 0, assembled);
    matrix.diagonal = assembled.diagonal, matrix.lower = assembled.lower;
    compare(
        state, [&] { benchmark::DoNotOptimize(Factors([&] { return matrix; })); },
        [&] {
            c->work.factors[0].lower = assembled.lower, c->work.factors[0].diagonal = assembled.diagonal;
            bare::factorise(*c->grid.ordering, c->work.factors[0]);
            benchmark::DoNotOptimize(c->work.factors[0].diagonal.back());
        });
    const Ordering& o = *c->grid.ordering;
    state.counters["factor_kB"] = static_cast<double>(sizeof(Complex) * (o.lowerRow.size() + o.place.size())) / 1024;
    state.counters["order_kB"] = static_cast<double>(o.bytes()) / 1024;
}

/// Order of elimination and structure, once per network.
void Order(benchmark::State& state) {
    Case* c = theCase(state);
    if (!c) return;
    for (auto _ : state) {
        state.SetIterationTime(
            seconds([&] { benchmark::DoNotOptimize(Ordering(c->buses(), c->grid.ordering->pairs)); }));
    }
}

void Inverse(benchmark::State& state) {
    Case* c = theCase(state);
    if (!c) return;
    const Factors& factors = c->mode.sequence(Sequence::Positive).factors();
    compare(
        state, [&] { benchmark::DoNotOptimize(SelectedInverse(factors)); },
        [&] {
            bare::invert(*c->grid.ordering, c->work.factors[0], c->work.inverse[0], c->work.sums);
            benchmark::DoNotOptimize(c->work.inverse[0].diagonal.front());
        });
}

double adjacentCurrents(const BusStudy& study, int buses) {
    Complex total;
    for (int bus = 0; bus < buses; ++bus) {
        for (int kind = 1; kind <= 4; ++kind) {
            const BusFault fault = study.fault({bus}, static_cast<FaultKind>(kind));
            for (const BranchEnd end : study.ends({bus})) {
                const Sequences i = study.current(fault, end);
                total += i.positive + i.negative + i.zero;
            }
        }
    }
    return total.real();
}

/// All buses x four kinds x currents of the branch ends there, from the impedances on.
void AllBuses(benchmark::State& state) {
    Case* c = theCase(state);
    if (!c) return;
    const int threads = static_cast<int>(state.range(1));
    compare(
        state,
        [&] {
            const ModeNetwork mode(c->network, {}, threads);
            benchmark::DoNotOptimize(adjacentCurrents(BusStudy(mode, threads), c->buses()));
        },
        [&] {
            for (std::size_t s = 0; s < 2; ++s) {
                bare::assemble(c->grid, static_cast<int>(s), c->work.factors[s]);
                bare::factorise(*c->grid.ordering, c->work.factors[s]);
                bare::invert(*c->grid.ordering, c->work.factors[s], c->work.inverse[s], c->work.sums);
            }
            benchmark::DoNotOptimize(bare::allBuses(c->grid, c->work));
        });
    state.counters["study_kB"] = static_cast<double>(BusStudy(c->mode).bytes()) / 1024;
}

/// A phase-to-ground fault with all voltages and all branch currents in phases.
void FullFault(benchmark::State& state) {
    Case* c = theCase(state);
    if (!c) return;
    const int bus = c->buses() / 3;
    const Condition fault{{}, {bus}, 0, FaultKind::PhaseAGround, {}, 1};
    PhaseState everywhere;
    compare(
        state,
        [&] {
            c->mode.solve({&fault, 1}).everywhere(everywhere);
        },
        [&] { bare::fullFault(c->grid, c->grid.ordering->place[static_cast<std::size_t>(bus)], c->work); });
}

/// Branches whose loss leaves the network whole, and that are no relay's.
std::vector<int> outages(const Case& c, int count) {
    const Bridges bridges(c.mode.sequence(Sequence::Positive).elements());
    std::vector<int> result;
    for (int k = 0; k < c.branches() && static_cast<int>(result.size()) < count; ++k) {
        if (!bridges.has(k) && k % (c.branches() / 20) != 0) result.push_back(k);
    }
    return result;
}

/// Ten fault places and twenty relays under another outage in each round: the update, and the currents of a
/// phase-to-ground fault at each place.
void Local(benchmark::State& state) {
    Case* c = theCase(state);
    if (!c) return;
    std::vector<int> placesOfBare, relaysOfBare;
    std::vector<Condition> places;
    std::vector<BranchEnd> relays;
    for (int i = 0; i < 10; ++i) {
        places.push_back({{}, {i * (c->buses() / 10)}, 0, FaultKind::PhaseAGround, {}, 1});
        placesOfBare.push_back(c->grid.ordering->place[static_cast<std::size_t>(places.back().bus.value)]);
    }
    for (int i = 0; i < 20; ++i) {
        relaysOfBare.push_back(i * (c->branches() / 20));
        relays.push_back({{relaysOfBare.back()}, End::I});
    }
    std::optional<ModeNetwork> mode;
    std::optional<LocalStudy> study;
    bare::LocalStudy loop(c->grid, c->work, placesOfBare, relaysOfBare);
    const std::vector<int> out = outages(*c, 200);
    std::size_t own = 0, other = 0, updated = 0;
    compare(
        state,
        [&] {
            const BranchIndex branch{out[own++ % out.size()]};
            study->takeOut({&branch, 1});
            updated += study->updated();
            Complex total;
            for (int p = 0; p < 10; ++p) {
                const PlaceFault fault = study->fault(p, FaultKind::PhaseAGround);
                for (int r = 0; r < 20; ++r) {
                    const Sequences i = study->current(fault, r);
                    total += i.positive + i.negative + i.zero;
                }
            }
            benchmark::DoNotOptimize(total);
        },
        [&] {
            loop.under(out[other++ % out.size()]);
            benchmark::DoNotOptimize(loop.earthFaults());
        },
        // A network remembers its outages: each is new again.
        [&] {
            if (own % out.size() != 0) return;
            study.reset();
            mode.emplace(c->network, std::vector<ModeChange>{});
            study.emplace(*mode, places, relays);
        });
    state.counters["updated"] = static_cast<double>(updated) / static_cast<double>(own);
}

/// The library that the tests hold the factors against: factors, and a solve for each bus.
class KluOf {
  public:
    explicit KluOf(const Case& c) {
        const Ordering& o = *c.grid.ordering;
        bare::Grid grid = c.grid;
        bare::Matrix m = c.work.factors[0];
        bare::assemble(grid, 0, m);
        std::vector<std::vector<std::pair<int, Complex>>> columns(static_cast<std::size_t>(o.n));
        for (int k = 0; k < o.n; ++k) {
            const auto own = static_cast<std::size_t>(k);
            columns[own].emplace_back(k, m.diagonal[own]);
            for (auto p = static_cast<std::size_t>(o.lowerStart[own]);
                 p < static_cast<std::size_t>(o.lowerStart[own + 1]); ++p) {
                if (m.lower[p] == Complex{}) continue;
                columns[own].emplace_back(o.lowerRow[p], m.lower[p]);
                columns[static_cast<std::size_t>(o.lowerRow[p])].emplace_back(k, m.lower[p]);
            }
        }
        start_.push_back(0);
        for (const auto& column : columns) {
            for (const auto& [i, v] : column) row_.push_back(i), value_.push_back(v);
            start_.push_back(static_cast<int>(row_.size()));
        }
        klu_defaults(&common_);
        symbolic_ = klu_analyze(o.n, start_.data(), row_.data(), &common_);
        factorise();
    }
    ~KluOf() {
        klu_z_free_numeric(&numeric_, &common_);
        klu_free_symbolic(&symbolic_, &common_);
    }
    KluOf(const KluOf&) = delete;
    KluOf& operator=(const KluOf&) = delete;
    void factorise() {
        if (numeric_) klu_z_free_numeric(&numeric_, &common_);
        numeric_ =
            klu_z_factor(start_.data(), row_.data(), reinterpret_cast<double*>(value_.data()), symbolic_, &common_);
    }
    void refactorise() {
        klu_z_refactor(start_.data(), row_.data(), reinterpret_cast<double*>(value_.data()), symbolic_, numeric_,
                       &common_);
    }
    void solve(ComplexVector& x) {
        klu_z_solve(symbolic_, numeric_, static_cast<int>(x.size()), 1, reinterpret_cast<double*>(x.data()), &common_);
    }

  private:
    klu_common common_{};
    klu_symbolic* symbolic_ = nullptr;
    klu_numeric* numeric_ = nullptr;
    std::vector<int> start_, row_;
    ComplexVector value_;
};

/// `all_ms`: both sequences, all buses, at the time of one solve.
void Klu(benchmark::State& state) {
    Case* c = theCase(state);
    if (!c) return;
    KluOf klu(*c);
    ComplexVector x(c->network.buses.size());
    double factor = 0, refactor = 0, solve = 0;
    std::size_t bus = 0, rounds = 0;
    for (auto _ : state) {
        factor += seconds([&] { klu.factorise(); });
        refactor += seconds([&] { klu.refactorise(); });
        std::fill(x.begin(), x.end(), Complex{});
        x[bus = (bus + 97) % x.size()] = 1;
        const double one = seconds([&] { klu.solve(x); });
        state.SetIterationTime(one);
        solve += one;
        ++rounds;
    }
    const double count = static_cast<double>(rounds);
    state.counters["factor_us"] = factor / count * 1e6;
    state.counters["refactor_us"] = refactor / count * 1e6;
    state.counters["all_ms"] = 2e3 * (factor + solve * static_cast<double>(x.size())) / count;
}

/// A fault on one branch while another is out, whatever the pair: what a rule's calculation asks one after the other.
void FaultUnderOutage(benchmark::State& state) {
    Case* c = theCase(state);
    if (!c) return;
    const Complex open{99999.9999, 99999.9999};
    int out = 0;
    for (auto _ : state) {
        out = (out + 101) % c->branches();
        const Condition rows[] = {{{out}, {}, 0, FaultKind::OpenABC, open, 21},
                                  {{out}, {}, 100, FaultKind::OpenABC, open, 21},
                                  {{(out + 1) % c->branches()}, {}, 50, FaultKind::PhaseAGround, {}, 1}};
        state.SetIterationTime(seconds([&] {
            const Solution solution = c->mode.solve(rows);
            benchmark::DoNotOptimize(solution.current({(out + 2) % c->branches()}, End::I));
        }));
    }
}

void allCases(benchmark::internal::Benchmark* b) {
    b->DenseRange(0, kCaseCount - 1)->UseManualTime()->Unit(benchmark::kMicrosecond);
}
void allCasesAndThreads(benchmark::internal::Benchmark* b) {
    for (const int threads : {1, 2}) {
        for (int i = 0; i < kCaseCount; ++i) b->Args({i, threads});
    }
    b->UseManualTime()->Unit(benchmark::kMicrosecond);
}

BENCHMARK(Order)->Apply(allCases);
BENCHMARK(Factorise)->Apply(allCases);
BENCHMARK(Mode)->Apply(allCasesAndThreads);
BENCHMARK(Inverse)->Apply(allCases);
BENCHMARK(AllBuses)->Apply(allCasesAndThreads);
BENCHMARK(FullFault)->Apply(allCases);
BENCHMARK(Local)->Apply(allCases);
BENCHMARK(FaultUnderOutage)->Apply(allCases);
BENCHMARK(Klu)->Apply(allCases);

}  // namespace

int main(int argc, char** argv) {
    engines::keepFreedMemory();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
