#include <klu.h>

#include <chrono>
#include <random>

#include "engines/network/SelectedInverse.h"
#include "engines/network/SequenceNetwork.h"
#include "tests/engines/num_grid.h"
#include "tests/engines/num_matpower.h"

using namespace num;

namespace {

Network publicCase(const std::string& name) {
    std::ifstream in(sharedNetworks() / "matpower" / name);
    if (!in) return {};
    return engines::buildNetwork(matpowerNetwork({std::istreambuf_iterator<char>(in), {}}));
}

double faultKa(const ModeNetwork& mode, int no, FaultKind kind) {
    const BusIndex place = bus(mode.network(), no);
    const Condition fault{{}, place, 0, kind, {}, 1};
    const engines::RelayPlace atFault{{}, End::I, place, -1};
    return engines::faultQuantity(1, 3, atFault, mode.network(), mode.solve({&fault, 1}));
}

/// Largest sum of the currents that leave a bus, all sequences, over all buses.
double balance(const Network& network, const engines::Solution& solution) {
    std::vector<engines::Sequences> sum(network.buses.size());
    const auto add = [&](BusIndex at, const engines::Sequences& i, double sign) {
        auto& s = sum[static_cast<std::size_t>(at.value)];
        s.positive += sign * i.positive, s.negative += sign * i.negative, s.zero += sign * i.zero;
    };
    for (int k = 0; k < static_cast<int>(network.branches.size()); ++k) {
        const auto& b = network.branches[static_cast<std::size_t>(k)];
        add(b.from, solution.current({k}, End::I), 1);
        add(b.to, solution.current({k}, End::J), 1);
    }
    for (int s = 0; s < static_cast<int>(network.sources.size()); ++s) {
        add(network.sources[static_cast<std::size_t>(s)].bus, solution.sourceCurrent(s), -1);
    }
    double worst = 0;
    for (int i = 0; i < static_cast<int>(sum.size()); ++i) {
        add({i}, solution.faultCurrentAt({i}), 1);
        const auto& s = sum[static_cast<std::size_t>(i)];
        worst = std::max({worst, std::abs(s.positive), std::abs(s.negative), std::abs(s.zero)});
    }
    return worst;
}

/// Columns of the inverse of the positive-sequence matrix from a library that knows nothing of symmetry.
class KluWitness {
  public:
    explicit KluWitness(const Network& network) : columns_(network.buses.size()) {
        const auto add = [&](BusIndex i, BusIndex j, Complex y) {
            columns_[static_cast<std::size_t>(j.value)][i.value] += y;
        };
        for (const auto& b : network.branches) {
            add(b.from, b.from, 1.0 / b.z1), add(b.to, b.to, 1.0 / b.z1);
            add(b.from, b.to, -1.0 / b.z1), add(b.to, b.from, -1.0 / b.z1);
        }
        for (const auto& s : network.sources) add(s.bus, s.bus, 1.0 / s.z1);
        for (const auto& column : columns_) {
            for (const auto& [i, y] : column) row_.push_back(i), value_.push_back(y);
            start_.push_back(static_cast<int>(row_.size()));
        }
        klu_defaults(&common_);
        symbolic_ = klu_analyze(size(), start_.data(), row_.data(), &common_);
        numeric_ =
            klu_z_factor(start_.data(), row_.data(), reinterpret_cast<double*>(value_.data()), symbolic_, &common_);
    }
    ~KluWitness() {
        klu_z_free_numeric(&numeric_, &common_);
        klu_free_symbolic(&symbolic_, &common_);
    }
    KluWitness(const KluWitness&) = delete;
    KluWitness& operator=(const KluWitness&) = delete;
    std::vector<Complex> column(int bus) {
        std::vector<Complex> x(columns_.size());
        x[static_cast<std::size_t>(bus)] = 1;
        klu_z_solve(symbolic_, numeric_, size(), 1, reinterpret_cast<double*>(x.data()), &common_);
        return x;
    }

  private:
    [[nodiscard]] int size() const { return static_cast<int>(columns_.size()); }
    std::vector<std::map<int, Complex>> columns_;
    std::vector<int> start_{0}, row_;
    std::vector<Complex> value_;
    klu_common common_{};
    klu_symbolic* symbolic_ = nullptr;
    klu_numeric* numeric_ = nullptr;
};

}  // namespace

TEST(PublicNetworks, EntriesOfTheInverseAreThoseOfAnotherSolver) {
    for (const char* name : {"case118.m", "case_ACTIVSg2000.m", "case9241pegase.m"}) {
        const Network network = publicCase(name);
        if (network.buses.empty()) GTEST_SKIP() << "not here: " << sharedNetworks();
        const ModeNetwork mode(network, {});
        const auto& net = mode.sequence(Sequence::Positive);
        const engines::SelectedInverse inverse(net.factors());
        KluWitness klu(network);
        std::mt19937 dice(11);
        for (int round = 0; round < 30; ++round) {
            const auto& b = network.branches[dice() % network.branches.size()];
            const std::vector<Complex> column = klu.column(b.from.value);
            const auto near = [&](Complex entry, int bus) {
                const Complex expected = column[static_cast<std::size_t>(bus)];
                return std::abs(entry - expected) <= 1e-9 * std::abs(column[static_cast<std::size_t>(b.from.value)]);
            };
            EXPECT_TRUE(near(inverse.diagonal(b.from.value), b.from.value));
            EXPECT_TRUE(near(inverse.entry(b.from.value, b.to.value), b.to.value));
            const auto injection = net.inject(*net.half(b.from));
            for (int i = 0; i < 20; ++i) {
                const int bus = static_cast<int>(dice() % network.buses.size());
                EXPECT_TRUE(near(net.seen(*net.half(BusIndex{bus}), injection), bus)) << name << " bus " << bus;
            }
        }
    }
}

TEST(PublicNetworks, ABridgeIsABranchWhoseLossLeavesBusesWithoutAPathToGround) {
    const Network network = publicCase("case_ieee30.m");
    if (network.buses.empty()) GTEST_SKIP() << "not here: " << sharedNetworks();
    const engines::SequenceElements elements(network, Sequence::Positive, {});
    const engines::Bridges found(elements);
    const int floating = engines::Islands(elements, {}).floating();
    int bridges = 0;
    for (int k = 0; k < static_cast<int>(network.branches.size()); ++k) {
        const engines::Islands left(elements, {k});
        EXPECT_EQ(found.has(k), left.floating() > floating) << k;
        bridges += found.has(k);
        std::vector<int> dark;
        for (int i = 0; i < elements.buses(); ++i)
            if (!left.live(i)) dark.push_back(i);
        EXPECT_EQ(found.has(k) ? found.cutOff(k) : std::vector<int>{}, dark) << k;
    }
    EXPECT_EQ(floating, 0);
    EXPECT_GT(bridges, 0);
    EXPECT_LT(bridges, 10);
}

TEST(PublicNetworks, BusFaultsOfThe118BusNetworkAsPublished) {
    const Network network = publicCase("case118.m");
    if (network.buses.empty()) GTEST_SKIP() << "not here: " << sharedNetworks();
    const ModeNetwork mode(network, {});
    EXPECT_NEAR(faultKa(mode, 11, FaultKind::ThreePhaseGround), 12.55898, 6e-6);
    EXPECT_NEAR(faultKa(mode, 11, FaultKind::PhaseAGround), 10.348773, 6e-7);
    EXPECT_NEAR(faultKa(mode, 32, FaultKind::ThreePhaseGround), 10.874737, 6e-7);
    EXPECT_NEAR(faultKa(mode, 32, FaultKind::PhaseAGround), 10.145257, 6e-7);
}

TEST(PublicNetworks, CurrentsBalanceAtEveryBusUnderOutageAndFaultsAlongBranches) {
    const Network network = publicCase("case118.m");
    if (network.buses.empty()) GTEST_SKIP() << "not here: " << sharedNetworks();
    const ModeNetwork mode(network, {});
    std::mt19937 dice(7);
    for (int round = 0; round < 60; ++round) {
        const auto any = [&] { return BranchIndex{static_cast<int>(dice() % network.branches.size())}; };
        const BranchIndex out = any();
        const auto kind = static_cast<FaultKind>(1 + dice() % 4);
        const std::vector<Condition> rows{{out, {}, 0, FaultKind::OpenABC, {kOpen, kOpen}, 21},
                                          {out, {}, 100, FaultKind::OpenABC, {kOpen, kOpen}, 21},
                                          {any(), {}, double(dice() % 101), kind, {.01, .02}, 1},
                                          {any(), {}, double(dice() % 101), FaultKind::OpenA, {kOpen, kOpen}, 2}};
        EXPECT_LT(balance(network, mode.solve(rows)), 1e-8) << "round " << round;
    }
}

// Every bus and every branch outage of a large network: nothing is NaN, the time is that of a sparse method.
TEST(PublicNetworks, The9241BusNetworkRunsThrough) {
    const Network network = publicCase("case9241pegase.m");
    if (network.buses.empty()) GTEST_SKIP() << "not here: " << sharedNetworks();
    const auto start = std::chrono::steady_clock::now();
    const auto ms = [&] {
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    };
    const ModeNetwork mode(network, {});
    RecordProperty("factorised_ms", std::to_string(ms()));
    for (std::size_t i = 0; i < network.buses.size(); i += 10) {
        const double ka = faultKa(mode, network.buses[i].no.value, FaultKind::PhaseAGround);
        ASSERT_TRUE(std::isfinite(ka) && ka > 0) << "bus " << network.buses[i].no.value;
    }
    RecordProperty("faults_ms", std::to_string(ms()));
    for (int k = 0; k < static_cast<int>(network.branches.size()); k += 200) {
        const std::vector<Condition> rows{{{k}, {}, 0, FaultKind::OpenABC, {kOpen, kOpen}, 21},
                                          {{k}, {}, 100, FaultKind::OpenABC, {kOpen, kOpen}, 21},
                                          {{(k + 1) % 16000}, {}, 30, FaultKind::PhaseAGround, {}, 1}};
        const auto solution = mode.solve(rows);
        EXPECT_TRUE(std::isfinite(std::abs(solution.faultCurrent().zero))) << k;
        if (k % 4000 == 0) {
            EXPECT_LT(balance(network, solution), 1e-5) << k;
        }
    }
    RecordProperty("outages_ms", std::to_string(ms()));
    EXPECT_LT(ms(), 20000);
}
