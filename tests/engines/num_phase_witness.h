#pragma once

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "tests/engines/num_grid.h"

/// A second opinion: the whole network written out in phases, every inner point a node of its own, every current an
/// unknown, solved densely. Slow and plain on purpose; shares no code with the engine.
namespace num {

class PhaseWitness {
  public:
    PhaseWitness(const exchange::NetworkData& data, const Network& network, const std::vector<Condition>& conditions)
        : data_(data), network_(network), conditions_(conditions) {
        nodes_ = static_cast<int>(data.buses.size());
        for (std::size_t i = 0; i < data.buses.size(); ++i) nodeOf_[data.buses[i].no] = static_cast<int>(i);
        for (const auto& l : data.lines) chain(l.idNo, l.iNo, l.jNo, nullptr);
        for (const auto& t : data.transformers) chain(t.idNo, t.iNo, t.jNo, &t);
        for (const Condition& c : conditions) {
            if (c.branch.value < 0) elements_.push_back({Type::Fault, c.bus.value, -1, 0, 0, 0, c});
        }
        solve();
    }
    /// Voltage of a bus, phase by phase.
    [[nodiscard]] Complex voltage(int no, int phase) const { return narrow(x_[at(3 * nodeOf_.at(no) + phase)]); }
    /// Current into a line at its end.
    [[nodiscard]] Complex current(int id, End end, int phase) const {
        const auto& [first, last] = ends_.at(id);
        return end == End::I ? narrow(x_[at(unknown(first) + phase)]) : -narrow(x_[at(unknown(last) + phase)]);
    }

  private:
    using Long = std::complex<long double>;
    enum class Type { Segment, Switch, Fault };
    struct Element {
        Type type;
        int a, b;
        int line;
        double from, to;
        Condition condition;
    };
    struct Stamp {
        int a, b;
        Complex y1, y0;
        double gain = 1;  // of the ideal transformer at a
    };
    static Complex narrow(Long z) { return {static_cast<double>(z.real()), static_cast<double>(z.imag())}; }
    static std::size_t at(int i) { return static_cast<std::size_t>(i); }
    static bool series(const Condition& c) { return static_cast<int>(c.kind) >= 5; }
    [[nodiscard]] int unknown(int element) const { return 3 * nodes_ + 3 * element; }

    void chain(int id, int i, int j, const exchange::NetTransformer* transformer) {
        std::vector<Condition> inside;
        for (const Condition& c : conditions_) {
            if (c.branch.value < 0 || network_.branches[at(c.branch.value)].idNo != id) continue;
            const bool beside = std::any_of(conditions_.begin(), conditions_.end(), [&](const Condition& o) {
                return series(o) && o.branch == c.branch && o.percent == c.percent && o.group == c.group;
            });
            const bool atBus = !series(c) && !beside && (c.percent == 0 || c.percent == 100);
            if (atBus)
                elements_.push_back({Type::Fault, nodeOf_[c.percent == 0 ? i : j], -1, 0, 0, 0, c});
            else
                inside.push_back(c);
        }
        // Along the branch; at one place the open comes first up to the middle, last behind it.
        const auto rank = [](const Condition& c) { return c.percent + ((c.percent <= 50) == series(c) ? 0.0 : 1e-6); };
        std::stable_sort(inside.begin(), inside.end(),
                         [&](const Condition& a, const Condition& b) { return rank(a) < rank(b); });
        int node = nodeOf_[i];
        double x = 0;
        bool passed = !transformer;
        const auto go = [&](int next, double to) {
            if (!transformer)
                elements_.push_back({Type::Segment, node, next, id, x, to, {}});
            else
                stamp(*transformer, node, next);
            node = next;
            x = to;
        };
        const int first = static_cast<int>(elements_.size());
        if (!transformer) go(nodes_++, 0);
        for (const Condition& c : inside) {
            if (!transformer && c.percent / 100 > x) go(nodes_++, c.percent / 100);
            if (transformer && !passed && c.percent > 50) go(nodes_++, 1), passed = true;
            if (series(c)) {
                elements_.push_back({Type::Switch, node, nodes_, 0, 0, 0, c});
                node = nodes_++;
            } else {
                elements_.push_back({Type::Fault, node, -1, 0, 0, 0, c});
            }
        }
        if (!transformer || !passed) {
            go(nodeOf_[j], 1);
        } else {
            Condition closed;
            closed.kind = FaultKind::OpenABC;
            elements_.push_back({Type::Switch, node, nodeOf_[j], 0, 0, 0, closed});
        }
        if (!transformer) ends_[id] = {first, static_cast<int>(elements_.size()) - 1};
    }

    void stamp(const exchange::NetTransformer& t, int a, int b) {
        const Complex y1 = 1.0 / Complex{t.r1, t.x1}, y0 = 1.0 / Complex{t.r0, t.x0};
        const double gain = 1 / network_.branches[at(network_.branchById.find(t.idNo)->second)].ratio;
        stamps_.push_back({a, b, y1, t.zcType == 3 ? y0 : 0, gain});
        if (t.zcType == 1) stamps_.push_back({a, -1, 0, y0, gain});
        if (t.zcType == 2) stamps_.push_back({b, -1, 0, y0});
    }

    /// Share of the coupled stretch that lies along both segments: t runs along it with the first line.
    static double sharedPart(const exchange::NetMutual& m, const Element& one, const Element& two) {
        const auto reach = [](double x, double from, double to) { return (100 * x - from) / (to - from); };
        double low = reach(two.from, m.secondFrom, m.secondTo), high = reach(two.to, m.secondFrom, m.secondTo);
        if (m.sense < 0) low = 1 - std::exchange(high, 1 - low);
        low = std::max({low, reach(one.from, m.firstFrom, m.firstTo), 0.0});
        high = std::min({high, reach(one.to, m.firstFrom, m.firstTo), 1.0});
        return std::max(0.0, high - low);
    }

    [[nodiscard]] Complex coupling(const Element& p, const Element& q) const {
        Complex sum;
        for (const auto& m : data_.mutuals) {
            const double sense = m.sense;
            if (m.firstId == p.line && m.secondId == q.line) sum += sense * sharedPart(m, p, q) * Complex{m.r0, m.x0};
            if (m.firstId == q.line && m.secondId == p.line) sum += sense * sharedPart(m, q, p) * Complex{m.r0, m.x0};
        }
        return sum;
    }

    Long& a(int row, int column) { return a_[at(row)][at(column)]; }

    void addSequenceAdmittance(int row, int column, Complex y1, Complex y0) {
        for (int p = 0; p < 3; ++p) {
            for (int q = 0; q < 3; ++q) {
                a(row + p, column + q) += (Long(y0) + Long(y1) * (p == q ? 2.0L : -1.0L)) / 3.0L;
            }
        }
    }

    void addSegment(int element) {
        const Element& s = elements_[at(element)];
        const int row = unknown(element);
        const auto line = std::find_if(data_.lines.begin(), data_.lines.end(),
                                       [&](const exchange::NetLine& l) { return l.idNo == s.line; });
        const Complex z1{line->r1, line->x1}, z0{line->r0, line->x0};
        for (int p = 0; p < 3; ++p) a(row + p, 3 * s.a + p) += 1, a(row + p, 3 * s.b + p) -= 1;
        addSequenceAdmittance(row, row, -(s.to - s.from) * z1, -(s.to - s.from) * z0);
        for (int other = 0; other < static_cast<int>(elements_.size()); ++other) {
            if (elements_[at(other)].type != Type::Segment || other == element) continue;
            addSequenceAdmittance(row, unknown(other), 0, -coupling(s, elements_[at(other)]));
        }
    }

    void addSwitch(int element) {
        const Element& s = elements_[at(element)];
        const int row = unknown(element);
        for (int p = 0; p < 3; ++p) {
            const bool opened =
                s.condition.kind == FaultKind::OpenABC || (s.condition.kind == FaultKind::OpenA ? p == 0 : p > 0);
            if (opened && s.condition.z.real() > 99999) {
                a(row + p, row + p) = 1;
                continue;
            }
            a(row + p, 3 * s.a + p) += 1;
            a(row + p, 3 * s.b + p) -= 1;
            if (opened) a(row + p, row + p) -= s.condition.z;
        }
    }

    void addFault(int element) {
        const Element& f = elements_[at(element)];
        const int i = unknown(element), v = 3 * f.a;
        const Complex z = f.condition.z;
        switch (f.condition.kind) {
            case FaultKind::ThreePhaseGround:
                for (int p = 0; p < 3; ++p) a(i + p, v + p) = 1, a(i + p, i + p) = -z;
                break;
            case FaultKind::PhaseAGround:
                a(i, v) = 1, a(i, i) = -z, a(i + 1, i + 1) = 1, a(i + 2, i + 2) = 1;
                break;
            case FaultKind::PhaseBC:
                a(i, i) = 1, a(i + 1, i + 1) = 1, a(i + 1, i + 2) = 1;
                a(i + 2, v + 1) = 1, a(i + 2, v + 2) = -1, a(i + 2, i + 1) = -z;
                break;
            default:
                a(i, i) = 1, a(i + 1, v + 1) = 1, a(i + 1, v + 2) = -1;
                a(i + 2, v + 1) = 1, a(i + 2, i + 1) = -z, a(i + 2, i + 2) = -z;
        }
    }

    void addBalance(int element) {
        const Element& e = elements_[at(element)];
        for (int p = 0; p < 3; ++p) {
            a(3 * e.a + p, unknown(element) + p) += 1;
            if (e.b >= 0) a(3 * e.b + p, unknown(element) + p) -= 1;
        }
    }

    void solve() {
        const int n = 3 * (nodes_ + static_cast<int>(elements_.size()));
        a_.assign(at(n), std::vector<Long>(at(n)));
        x_.assign(at(n), 0);
        // What floats is held by next to nothing.
        for (int i = 0; i < 3 * nodes_; ++i) a(i, i) = 1e-11;
        for (int e = 0; e < static_cast<int>(elements_.size()); ++e) {
            addBalance(e);
            if (elements_[at(e)].type == Type::Segment)
                addSegment(e);
            else if (elements_[at(e)].type == Type::Switch)
                addSwitch(e);
            else
                addFault(e);
        }
        for (const Stamp& s : stamps_) {
            const double g = s.gain;
            addSequenceAdmittance(3 * s.a, 3 * s.a, g * g * s.y1, g * g * s.y0);
            if (s.b < 0) continue;
            addSequenceAdmittance(3 * s.b, 3 * s.b, s.y1, s.y0);
            addSequenceAdmittance(3 * s.a, 3 * s.b, -g * s.y1, -g * s.y0);
            addSequenceAdmittance(3 * s.b, 3 * s.a, -g * s.y1, -g * s.y0);
        }
        for (const auto& g : data_.generators) {
            const int row = 3 * nodeOf_[g.no];
            const Complex y1 = 1.0 / Complex{g.r1, g.x1};
            addSequenceAdmittance(row, row, y1, g.grounded ? 1.0 / Complex{g.r0, g.x0} : 0);
            inject(row, y1 * emf(g));
        }
        for (const auto& sh : data_.shunts) {
            const int row = 3 * nodeOf_[sh.no];
            if (sh.grounded && sh.x1 > 0) addSequenceAdmittance(row, row, 0, 1.0 / Complex{sh.r0, sh.x0});
        }
        if (network_.loadFlow) addLoads();
        eliminate(n);
    }

    /// A current of the positive sequence.
    void inject(int row, Complex current) {
        for (int p = 0; p < 3; ++p) x_[at(row + p)] += current * std::polar(1.0, -2 * M_PI / 3 * p);
    }
    [[nodiscard]] Complex before(int no) const { return network_.buses[at(nodeOf_.at(no))].voltage; }
    [[nodiscard]] Complex emf(const exchange::NetGenerator& g) const {
        if (!network_.loadFlow) return 1;
        return before(g.no) + Complex{g.r1, g.x1} * std::conj(power(g) / before(g.no));
    }
    [[nodiscard]] Complex power(const exchange::NetGenerator& g) const {
        return network_.sources[at(static_cast<int>(&g - data_.generators.data()))].power;
    }

    /// What the branches take from a bus before the fault and its sources do not give, the loads do, at any voltage.
    void addLoads() {
        std::map<int, Complex> missing;
        for (const auto& b : network_.branches) {
            const int i = network_.buses[at(b.from.value)].no.value, j = network_.buses[at(b.to.value)].no.value;
            const Complex current = (before(i) / b.ratio - before(j)) / b.z1;
            missing[i] += current / b.ratio;
            missing[j] -= current;
        }
        for (const auto& g : data_.generators) missing[g.no] -= std::conj(power(g) / before(g.no));
        // Less is the noise of a state without loads, which a part that hangs by nothing would not bear.
        for (const auto& [no, current] : missing)
            if (std::abs(current) > 1e-6) inject(3 * nodeOf_[no], current);
    }

    void eliminate(int n) {
        for (int k = 0; k < n; ++k) {
            int row = k;
            for (int i = k + 1; i < n; ++i) {
                if (std::abs(a(i, k)) > std::abs(a(row, k))) row = i;
            }
            std::swap(a_[at(k)], a_[at(row)]);
            std::swap(x_[at(k)], x_[at(row)]);
            for (int i = k + 1; i < n; ++i) {
                const Long factor = a(i, k) / a(k, k);
                if (factor == Long{}) continue;
                for (int j = k; j < n; ++j) a(i, j) -= factor * a(k, j);
                x_[at(i)] -= factor * x_[at(k)];
            }
        }
        for (int i = n - 1; i >= 0; --i) {
            for (int j = i + 1; j < n; ++j) x_[at(i)] -= a(i, j) * x_[at(j)];
            x_[at(i)] /= a(i, i);
        }
    }

    const exchange::NetworkData& data_;
    const Network& network_;
    const std::vector<Condition>& conditions_;
    int nodes_ = 0;
    std::map<int, int> nodeOf_;
    std::map<int, std::pair<int, int>> ends_;
    std::vector<Element> elements_;
    std::vector<Stamp> stamps_;
    std::vector<std::vector<Long>> a_;
    std::vector<Long> x_;
};

}  // namespace num
