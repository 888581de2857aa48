#include "engines/network/SequenceNetwork.h"

#include <algorithm>
#include <cmath>
#include <mutex>
#include <stdexcept>

namespace engines {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

// An update that loses more digits than this gives way to new factors.
constexpr double kUpdateLoss = 1e5;
// What is left of terms this much larger is their rounding.
constexpr double kCancelled = 1e-12;
// Bounds of what one network keeps; what is in use elsewhere stays alive there.
constexpr std::size_t kKeptValues = std::size_t{1} << 22;
constexpr std::size_t kKeptVariants = 256;

double magnitude(Complex z) { return std::abs(z.real()) + std::abs(z.imag()); }

double largestEntry(const Matrix& m) {
    double largest = 0;
    for (int i = 0; i < m.rows(); ++i) {
        for (int j = 0; j < m.columns(); ++j) largest = std::max(largest, std::abs(m(i, j)));
    }
    return largest;
}

Matrix product(const Matrix& a, const Matrix& b) {
    Matrix c(a.rows(), b.columns());
    for (int i = 0; i < a.rows(); ++i) {
        for (int k = 0; k < a.columns(); ++k) {
            for (int j = 0; j < b.columns(); ++j) c(i, j) += a(i, k) * b(k, j);
        }
    }
    return c;
}

/// Inverse for a bridge and the bus held beyond it. No other way carries the bridge's current, so its own entry is
/// nothing, and no rounding may say otherwise: what lies beyond would seem to act on the rest.
Matrix inverseOfBridge(const Matrix& s) {
    const Complex across = reciprocal(s(0, 1));
    Matrix result(2, 2);
    result(0, 0) = -engines::product(engines::product(across, across), s(1, 1));
    result(0, 1) = result(1, 0) = across;
    return result;
}

ComplexVector times(const Matrix& m, const ComplexVector& v) {
    ComplexVector result(at(m.rows()));
    for (int i = 0; i < m.rows(); ++i) {
        for (int j = 0; j < m.columns(); ++j) result[at(i)] += m(i, j) * v[at(j)];
    }
    return result;
}

}  // namespace

/// Theory (7). Z' = Z + W S^-1 W', W = Z B: the columns of B are the weights of the branches taken out, S = D - B' Z B
/// with D their part of the primitive admittance. Source: Alsac, Stott, Tinney, Sparsity-oriented compensation methods,
/// 1983.
struct SequenceNetwork::Update {
    std::vector<HalfColumn> halves;     // of the columns of B
    std::vector<DrivenColumn> columns;  // the same, driven
    Matrix inverse;                     // of S
    ComplexVector beforeFault;          // S^-1 B' V0
};

void addDifference(BusWeights& weights, const Link& link, Complex weight) {
    if (weight == Complex{}) return;
    if (link.from >= 0) weights.emplace_back(link.from, weight * link.gain);
    if (link.to >= 0) weights.emplace_back(link.to, -weight);
}

SequenceNetwork::SequenceNetwork(std::shared_ptr<const SequenceElements> elements, ComplexVector injection)
    : elements_(std::move(elements)),
      islands_(std::make_shared<Islands>(*elements_, removed_)),
      injection_(std::move(injection)),
      factors_(std::make_unique<Factors>([this] { return matrix(); })) {
    startFromInjection();
}

SequenceNetwork::SequenceNetwork(const SequenceNetwork& whole, std::vector<int> removed,
                                 std::shared_ptr<const Islands> islands, std::unique_ptr<Update> update)
    : elements_(whole.elements_),
      removed_(std::move(removed)),
      islands_(std::move(islands)),
      injection_(whole.injection_),
      update_(std::move(update)) {
    if (update_)
        base_ = &whole;
    else
        factors_ = std::make_unique<Factors>([this] { return matrix(); });
    startFromInjection();
}

SequenceNetwork::~SequenceNetwork() = default;

void SequenceNetwork::startFromInjection() {
    if (startsFlat()) return;
    if (update_) {
        ComplexVector seenBefore;
        for (const HalfColumn& half : update_->halves) {
            Complex sum;
            for (const auto& [bus, weight] : half.weights) sum += weight * base_->prefault(bus);
            seenBefore.push_back(sum);
        }
        update_->beforeFault = times(update_->inverse, seenBefore);
        return;
    }
    ComplexVector current = injection_;
    for (int i = 0; i < elements_->buses(); ++i) {
        if (!islands_->live(i)) current[at(i)] = 0;
    }
    prefault_ = factors_->solve(std::move(current));
}

Complex SequenceNetwork::prefault(int bus) const {
    if (!islands_->live(bus)) return {};
    if (startsFlat()) return 1;
    if (!update_) return prefault_[at(bus)];
    Complex voltage = base_->prefault(bus);
    const auto by = half(BusIndex{bus});
    for (std::size_t c = 0; c < update_->columns.size(); ++c) {
        voltage += factors().dot(*by, update_->columns[c]) * update_->beforeFault[c];
    }
    return voltage;
}

ComplexVector SequenceNetwork::prefaultVoltages() const {
    ComplexVector result(at(elements_->buses()));
    if (update_ && !startsFlat()) {
        BusWeights injection;
        for (std::size_t c = 0; c < update_->halves.size(); ++c) {
            for (const auto& [bus, w] : update_->halves[c].weights)
                injection.emplace_back(bus, w * update_->beforeFault[c]);
        }
        result = factors().solve(injection);
    }
    for (int i = 0; i < elements_->buses(); ++i) {
        if (!islands_->live(i))
            result[at(i)] = 0;
        else
            result[at(i)] += update_ ? base_->prefault(i) : prefault(i);
    }
    return result;
}

bool SequenceNetwork::conducts(int branch) const {
    if (!elements_->links()[at(branch)].conducts) return false;
    return removed_.empty() || !std::binary_search(removed_.begin(), removed_.end(), branch);
}

Matrix SequenceNetwork::admittance(int branch) const {
    const auto members = elements_->coupledWith(branch);
    if (members.size() == 1) {
        Matrix own(1, 1);
        if (conducts(branch)) own(0, 0) = elements_->links()[at(branch)].y;
        return own;
    }
    std::vector<int> active;
    for (int i = 0; i < static_cast<int>(members.size()); ++i) {
        if (conducts(members[at(i)])) active.push_back(i);
    }
    const int n = static_cast<int>(active.size());
    Matrix z(n, n);
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            z(i, j) = elements_->impedance(members[at(active[at(i)])], {}, members[at(active[at(j)])], {});
        }
    }
    const Matrix y = inverse(z);
    Matrix result(static_cast<int>(members.size()), static_cast<int>(members.size()));
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) result(active[at(i)], active[at(j)]) = y(i, j);
    }
    return result;
}

void SequenceNetwork::addCoupled(int first, SymmetricMatrix& matrix) const {
    const auto members = elements_->coupledWith(first);
    const auto& links = elements_->links();
    const Matrix y = admittance(first);
    for (int a = 0; a < y.rows(); ++a) {
        for (int b = a; b < y.rows(); ++b) {
            const Link &p = links[at(members[at(a)])], &q = links[at(members[at(b)])];
            for (const auto& [i, gainI] : {std::pair{p.from, p.gain}, std::pair{p.to, -1.0}}) {
                for (const auto& [j, gainJ] : {std::pair{q.from, q.gain}, std::pair{q.to, -1.0}}) {
                    // Each entry off the diagonal once, though both orders of its ends come by.
                    const double times = a != b && i == j ? 2 : a == b && i != j ? 0.5 : 1;
                    if (i >= 0 && j >= 0) matrix.add(i, j, y(a, b) * (gainI * gainJ * times));
                }
            }
        }
    }
}

// A floating island: its first bus is held.
void SequenceNetwork::hold(SymmetricMatrix& matrix) const {
    if (islands_->floating() == 0) return;
    for (int i = 0; i < elements_->buses(); ++i) {
        if (islands_->of(i) != i || islands_->live(i)) continue;
        const double size = std::abs(matrix.diagonal[at(matrix.ordering->place[at(i)])]);
        matrix.add(i, i, {0, size > 0 ? -size : -1});
    }
}

SymmetricMatrix SequenceNetwork::matrix() const {
    SymmetricMatrix result(elements_->ordering());
    const auto& links = elements_->links();
    const Ordering& o = *result.ordering;
    const bool coupled = !elements_->couplings().empty(), whole = removed_.empty();
    const IndexPair* places = o.pairPlace.data();
    const int* slots = o.pairSlot.data();
    Complex *diagonal = result.diagonal.data(), *lower = result.lower.data();
    for (std::size_t k = 0; k < links.size(); ++k) {
        const Link& link = links[k];
        if (coupled && elements_->coupledWith(link.branch).size() > 1) {
            if (elements_->coupledWith(link.branch).front() == link.branch) addCoupled(link.branch, result);
        } else if (link.conducts && (whole || conducts(link.branch))) {
            const Complex y = link.y, seenFromI = y * link.gain;
            if (link.from >= 0) diagonal[places[k].first] += seenFromI * link.gain;
            if (link.to >= 0) diagonal[places[k].second] += y;
            if (link.from >= 0 && link.to >= 0) lower[slots[k]] -= seenFromI;
        }
    }
    for (const NodeShunt& s : elements_->shunts()) result.diagonal[at(o.place[at(s.bus)])] += s.y;
    hold(result);
    return result;
}

/// \param held  bus of a part that the branches cut off, to be held as a floating island is; -1 none
std::unique_ptr<SequenceNetwork::Update> SequenceNetwork::update(const std::vector<int>& branches, int held) const {
    auto result = std::make_unique<Update>();
    const int n = static_cast<int>(branches.size()), size = held < 0 ? n : n + 1;
    Matrix d(size, size), s(size, size);
    const auto take = [&](const BusWeights& weights) {
        result->halves.push_back(half(weights));
        result->columns.push_back(factors_->driven(result->halves.back()));
    };
    for (int c = 0; c < n; ++c) {
        const auto members = elements_->coupledWith(branches[at(c)]);
        const Matrix y = admittance(branches[at(c)]);
        const auto place = [&](int k) {
            const auto it = std::find(members.begin(), members.end(), k);
            return it == members.end() ? -1 : static_cast<int>(it - members.begin());
        };
        const int own = place(branches[at(c)]);
        BusWeights weights;
        for (int m = 0; m < y.rows(); ++m) addDifference(weights, elements_->links()[at(members[at(m)])], y(m, own));
        for (int r = 0; r < n; ++r) {
            if (const int other = place(branches[at(r)]); other >= 0) d(r, c) = y(other, own);
        }
        take(weights);
    }
    if (held >= 0) {
        take({{held, 1}});
        d(n, n) = 1.0 / (Complex{0, 1} * std::abs(d(0, 0)));
    }
    for (int r = 0; r < size; ++r) {
        for (int c = 0; c < size; ++c) s(r, c) = d(r, c) - factors_->dot(result->halves[at(r)], result->columns[at(c)]);
    }
    try {
        result->inverse = held < 0 ? inverse(s) : inverseOfBridge(s);
    } catch (const std::domain_error&) {
        return nullptr;
    }
    if (!(largestEntry(product(result->inverse, d)) < kUpdateLoss)) return nullptr;
    return result;
}

// Without a bridge among one branch the network keeps its live and its floating buses; labels of islands that merely
// fall apart into live ones do not matter. A bridge of a live island cuts off a part that floats: it is held by the
// update.
std::shared_ptr<const SequenceNetwork> SequenceNetwork::makeWithout(const std::vector<int>& removed) const {
    const auto make = [&](std::shared_ptr<const Islands> islands, std::unique_ptr<Update> update) {
        return std::shared_ptr<const SequenceNetwork>(
            new SequenceNetwork(*this, removed, std::move(islands), std::move(update)));
    };
    if (removed.size() == 1 && !bridges_->has(removed.front())) return make(islands_, update(removed, -1));
    if (removed.size() == 1) {
        auto cutOff = bridges_->cutOff(removed.front());
        const int held = cutOff.front();
        if (islands_->live(held))
            return make(std::make_shared<const Islands>(islands_, std::move(cutOff)), update(removed, held));
    }
    auto islands = std::make_shared<const Islands>(*elements_, removed);
    const bool splits = islands->floating() > islands_->floating();
    return make(std::move(islands), splits ? nullptr : update(removed, -1));
}

std::shared_ptr<const SequenceNetwork> SequenceNetwork::without(const std::vector<int>& branches) const {
    std::vector<int> removed;
    std::copy_if(branches.begin(), branches.end(), std::back_inserter(removed), [&](int k) { return conducts(k); });
    if (removed.empty()) return shared_from_this();
    {
        const std::lock_guard lock(mutex_);
        if (!bridges_) bridges_ = std::make_unique<const Bridges>(*elements_);
        if (const auto found = variants_.find(removed); found != variants_.end()) return found->second;
    }
    const auto made = makeWithout(removed);
    const std::lock_guard lock(mutex_);
    if (variants_.size() >= kKeptVariants) variants_.clear();
    return variants_.emplace(std::move(removed), made).first->second;
}

template <class Make>
std::shared_ptr<const HalfColumn> SequenceNetwork::kept(Halves& halves, int key, Make make) const {
    {
        const std::lock_guard lock(mutex_);
        if (const auto found = halves.find(key); found != halves.end()) return found->second;
    }
    const auto made = std::make_shared<const HalfColumn>(make());
    const std::lock_guard lock(mutex_);
    if (keptValues_ > kKeptValues) halves_.clear(), across_.clear(), keptValues_ = 0;
    keptValues_ += made->values.size();
    return halves.emplace(key, made).first->second;
}

std::shared_ptr<const HalfColumn> SequenceNetwork::half(BusIndex bus) const {
    if (base_) return base_->half(bus);
    return kept(halves_, bus.value, [&] { return factors_->half(bus.value); });
}

std::shared_ptr<const HalfColumn> SequenceNetwork::across(int branch) const {
    if (base_) return base_->across(branch);
    return kept(across_, branch, [&] {
        BusWeights weights;
        addDifference(weights, elements_->links()[at(branch)], 1);
        return half(weights);
    });
}

HalfColumn SequenceNetwork::half(const BusWeights& weights) const {
    std::vector<std::shared_ptr<const HalfColumn>> halves;
    std::vector<std::pair<const HalfColumn*, Complex>> terms;
    for (const auto& [bus, weight] : weights) {
        halves.push_back(half(BusIndex{bus}));
        terms.emplace_back(halves.back().get(), weight);
    }
    return combined(factors().ordering(), terms);
}

ComplexVector SequenceNetwork::sentBack(const DrivenColumn& own) const {
    if (!update_) return {};
    ComplexVector seenByOutages;
    for (const HalfColumn& half : update_->halves) seenByOutages.push_back(factors().dot(half, own));
    return times(update_->inverse, seenByOutages);
}

Injection SequenceNetwork::inject(const HalfColumn& weights) const {
    Injection result{factors().driven(weights), {}};
    result.outages = sentBack(result.own);
    return result;
}

Complex SequenceNetwork::seen(const HalfColumn& by, const Injection& injection) const {
    Complex sum = factors().dot(by, injection.own);
    double size = magnitude(sum);
    for (std::size_t c = 0; c < injection.outages.size(); ++c) {
        const Complex term = product(factors().dot(by, update_->columns[c]), injection.outages[c]);
        size = std::max(size, magnitude(term));
        sum += term;
    }
    // A way that an outage makes a dead end carries nothing, not what rounding leaves.
    return injection.outages.empty() || magnitude(sum) > kCancelled * size ? sum : Complex{};
}

std::span<const DrivenColumn> SequenceNetwork::outageColumns() const {
    return update_ ? std::span<const DrivenColumn>(update_->columns) : std::span<const DrivenColumn>{};
}

ComplexVector SequenceNetwork::solve(const BusWeights& injection) const {
    if (!update_) return factors().solve(injection);
    ComplexVector seenByOutages;
    for (const DrivenColumn& column : update_->columns) {
        Complex sum;
        for (const auto& [bus, weight] : injection) sum += weight * factors().dot(*half(BusIndex{bus}), column);
        seenByOutages.push_back(sum);
    }
    const ComplexVector outages = times(update_->inverse, seenByOutages);
    BusWeights all = injection;
    for (std::size_t c = 0; c < outages.size(); ++c) {
        for (const auto& [bus, weight] : update_->halves[c].weights) all.emplace_back(bus, weight * outages[c]);
    }
    return factors().solve(all);
}

}  // namespace engines
