#pragma once

#include <random>
#include <set>

#include "tests/engines/num_grid.h"

/// Random networks with all that a transmission network has: parallel and coupled lines (also partly, either way),
/// two- and three-winding transformers of every grounding and turns ratio, neutral impedances, grounding reactors,
/// several islands of which one may have no source, now and then a load flow.
namespace property {

using namespace num;

class Dice {
  public:
    explicit Dice(unsigned seed) : engine_(seed) {}
    int upTo(int n) { return static_cast<int>(engine_() % static_cast<unsigned>(n)); }
    bool once(int in) { return upTo(in) == 0; }
    double between(double low, double high) { return low + (high - low) * (engine_() / 4294967295.0); }
    Complex impedance(double x) { return {between(.05, .3) * x, between(.6, 1.4) * x}; }
    template <class T>
    void shuffle(std::vector<T>& list) {
        for (std::size_t i = list.size(); i > 1; --i)
            std::swap(list[i - 1], list[static_cast<std::size_t>(upTo(static_cast<int>(i)))]);
    }

  private:
    std::mt19937 engine_;
};

struct RandomGrid {
    Grid grid;
    std::vector<int> lines, transformers;  ///< numbers of the branches; windings are transformers
};

class GridMaker {
  public:
    GridMaker(Dice& dice, int busesPerIsland) : dice_(dice), size_(busesPerIsland) {}

    RandomGrid make(int islands) {
        for (int k = 0; k < islands; ++k) island(k > 0 && dice_.once(3));
        couple();
        made_.grid.data.loadFlow = dice_.once(3);
        for (auto& b : made_.grid.data.buses) {
            if (!made_.grid.data.loadFlow) continue;
            b.vMag = dead_.contains(b.no) ? 0 : dice_.between(.95, 1.08), b.vAngle = dice_.between(-15, 15);
        }
        for (auto& g : made_.grid.data.generators) g.pMw = dice_.between(0, 80), g.qMvar = dice_.between(-20, 40);
        return made_;
    }

  private:
    void island(bool withoutSource) {
        const int first = next_;
        for (int i = 0; i < size_; ++i) made_.grid.bus(next_++, 100);
        // A tree, each bus tied to an earlier one, then some meshes; parallel lines come by themselves.
        for (int i = 1; i < size_; ++i) tie(first + dice_.upTo(i), first + i);
        for (int i = 0; i < size_ / 2; ++i) {
            const int a = first + dice_.upTo(size_), b = first + dice_.upTo(size_);
            if (a != b) tie(a, b);
        }
        if (size_ > 3) star(first);
        if (withoutSource)
            for (int no = first; no < next_; ++no) dead_.insert(no);
        if (withoutSource) return;
        for (int s = 0; s < 1 + size_ / 4; ++s) source(first + dice_.upTo(size_));
        if (dice_.once(2)) reactor(first + dice_.upTo(size_));
    }

    void tie(int a, int b) {
        const Complex z1 = dice_.impedance(.1);
        if (!made_.lines.empty() && dice_.once(3)) {
            made_.transformers.push_back(++id_);
            made_.grid.transformer(id_, a, b, z1, dice_.impedance(.1) + neutral(), dice_.upTo(4));
        } else {
            made_.lines.push_back(++id_);
            made_.grid.line(id_, a, b, z1, dice_.impedance(.3));
            if (dice_.once(3)) twin(a, b, z1);
        }
    }
    void twin(int a, int b, Complex z1) {
        made_.lines.push_back(++id_);
        const bool turned = dice_.once(2);
        made_.grid.line(id_, turned ? b : a, turned ? a : b, z1, dice_.impedance(.3));
        coupled_.push_back({id_ - 1, id_, turned ? -1 : 1});
    }
    void star(int first) {
        const int centre = next_++;
        made_.grid.bus(centre, 100);
        const int path[] = {3, dice_.once(2) ? 3 : 0, dice_.once(2) ? 1 : 0};
        std::set<int> far;
        while (far.size() < 3) far.insert(first + dice_.upTo(size_));
        int w = 0;
        for (const int bus : far) {
            made_.transformers.push_back(++id_);
            made_.grid.transformer(id_, centre, bus, dice_.impedance(.06), dice_.impedance(.06) + neutral(), path[w]);
            made_.grid.data.transformers.back().kind = 31 + w++;
        }
    }
    void source(int bus) {
        const bool grounded = !dice_.once(3);
        made_.grid.source(bus, dice_.impedance(.15), grounded ? dice_.impedance(.1) + neutral() : Complex{});
    }
    void reactor(int bus) {
        made_.grid.data.shunts.push_back({.idNo = ++id_, .no = bus, .x1 = 4, .r0 = .02, .x0 = 4, .grounded = true});
    }
    /// Three times an impedance between neutral and ground, now and then.
    Complex neutral() { return dice_.once(3) ? 3.0 * Complex{dice_.between(0, .2), dice_.between(0, .3)} : Complex{}; }

    void couple() {
        for (const auto& [first, second, sense] : coupled_) {
            made_.grid.mutual(first, second, dice_.impedance(.1), sense);
            auto& m = made_.grid.data.mutuals.back();
            if (dice_.once(2)) continue;
            m.firstFrom = dice_.between(0, 40), m.firstTo = dice_.between(50, 100);
            m.secondFrom = dice_.between(0, 40), m.secondTo = dice_.between(50, 100);
        }
    }

    struct Pair {
        int first, second, sense;
    };
    Dice& dice_;
    int size_, next_ = 2, id_ = 100;
    RandomGrid made_;
    std::vector<Pair> coupled_;
    std::set<int> dead_;
};

/// \param ratios  off-nominal turns ratios too; the state before the fault is then a load flow or held at 1.0
inline Network networkOf(const RandomGrid& random, Dice& dice, bool ratios) {
    Network network = random.grid.network();
    for (auto& b : network.branches)
        if (ratios && b.kind != exchange::BranchKind::Line) b.ratio = dice.between(.85, 1.15);
    return network;
}

inline double distance(const engines::Sequences& a, const engines::Sequences& b) {
    return std::abs(a.positive - b.positive) + std::abs(a.negative - b.negative) + std::abs(a.zero - b.zero);
}

inline constexpr FaultKind kShunts[] = {FaultKind::ThreePhaseGround, FaultKind::PhaseAGround, FaultKind::PhaseBC,
                                        FaultKind::PhaseBCGround};

}  // namespace property
