#include "engines/network/SequenceNetwork.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace engines {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

// An update that loses more digits than this gives way to new factors.
constexpr double kUpdateLoss = 1e5;
// Bounds of what one network keeps; what is in use elsewhere stays alive there.
constexpr std::size_t kKeptValues = std::size_t{1} << 22;
constexpr std::size_t kKeptVariants = 256;

void addPair(std::vector<SymmetricEntry>& entries, const Link& a, const Link& b, Complex y) {
    for (const auto& [i, signI] : {std::pair{a.from, a.gain}, std::pair{a.to, -1.0}}) {
        for (const auto& [j, signJ] : {std::pair{b.from, b.gain}, std::pair{b.to, -1.0}}) {
            if (i >= 0 && j >= 0) entries.push_back({i, j, y * (signI * signJ * (i == j ? 2.0 : 1.0))});
        }
    }
}

void addSelf(std::vector<SymmetricEntry>& entries, const Link& link, Complex y) {
    if (link.from >= 0) entries.push_back({link.from, link.from, y * (link.gain * link.gain)});
    if (link.to >= 0) entries.push_back({link.to, link.to, y});
    if (link.from >= 0 && link.to >= 0) entries.push_back({link.from, link.to, -y * link.gain});
}

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

}  // namespace

/// Z' = Z + W S^-1 W', W = Z B: the columns of B are the weights of the branches taken out, S = D - B' Z B with D
/// their part of the primitive admittance. Source: Alsac, Stott, Tinney, Sparsity-oriented compensation methods, 1983.
struct SequenceNetwork::Update {
    std::vector<BusWeights> weights;
    std::vector<ComplexVector> columns;
    Matrix inverse;
};

void addDifference(BusWeights& weights, const Link& link, Complex weight) {
    if (weight == Complex{}) return;
    if (link.from >= 0) weights.emplace_back(link.from, weight * link.gain);
    if (link.to >= 0) weights.emplace_back(link.to, -weight);
}

Complex weighted(const BusWeights& weights, const ComplexVector& voltages) {
    Complex sum;
    for (const auto& [bus, weight] : weights) sum += weight * voltages[at(bus)];
    return sum;
}

SequenceNetwork::SequenceNetwork(std::shared_ptr<const SequenceElements> elements, ComplexVector injection)
    : elements_(std::move(elements)),
      islands_(std::make_shared<Islands>(*elements_, removed_)),
      bridges_(bridges(*elements_)),
      injection_(std::move(injection)) {
    const std::vector<SymmetricEntry> matrix = entries();
    ordering_ = elements_->orderings() ? elements_->orderings()->of(elements_->buses(), matrix)
                                       : std::make_shared<const Ordering>(elements_->buses(), matrix);
    factors_ = std::make_unique<Factors>(ordering_, matrix);
    startFromInjection();
}

SequenceNetwork::SequenceNetwork(const SequenceNetwork& whole, std::vector<int> removed,
                                 std::shared_ptr<const Islands> islands, std::unique_ptr<Update> update)
    : elements_(whole.elements_),
      removed_(std::move(removed)),
      islands_(std::move(islands)),
      injection_(whole.injection_),
      ordering_(whole.ordering_),
      update_(std::move(update)) {
    if (update_)
        base_ = &whole;
    else
        factors_ = std::make_unique<Factors>(ordering_, entries());
    startFromInjection();
}

SequenceNetwork::~SequenceNetwork() = default;

void SequenceNetwork::startFromInjection() {
    if (injection_.empty()) return;
    ComplexVector current = injection_;
    for (int i = 0; i < elements_->buses(); ++i) {
        if (!islands_->live(i)) current[at(i)] = 0;
    }
    prefault_ = solve(current);
}

Complex SequenceNetwork::prefault(int bus) const {
    if (!islands_->live(bus)) return {};
    return prefault_.empty() ? Complex{1} : prefault_[at(bus)];
}

ComplexVector SequenceNetwork::prefaultCurrents() const {
    const auto& links = elements_->links();
    ComplexVector result(2 * links.size());
    if (startsFlat()) return result;
    for (int k = 0; k < static_cast<int>(links.size()); ++k) {
        const Link& link = links[at(k)];
        if (!conducts(k)) continue;
        const Complex i = (link.gain * prefault(link.from) - prefault(link.to)) / link.z;
        result[2 * at(k)] = link.gain * i;
        result[2 * at(k) + 1] = -i;
    }
    return result;
}

bool SequenceNetwork::conducts(int branch) const {
    return elements_->links()[at(branch)].conducts && !std::binary_search(removed_.begin(), removed_.end(), branch);
}

Matrix SequenceNetwork::admittance(int branch) const {
    const auto members = elements_->coupledWith(branch);
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

std::vector<SymmetricEntry> SequenceNetwork::entries() const {
    std::vector<SymmetricEntry> result;
    const auto& links = elements_->links();
    for (int k = 0; k < static_cast<int>(links.size()); ++k) {
        const auto members = elements_->coupledWith(k);
        if (members.size() == 1) {
            addSelf(result, links[at(k)], conducts(k) ? 1.0 / links[at(k)].z : Complex{});
        } else if (members.front() == k) {
            const Matrix y = admittance(k);
            for (int a = 0; a < y.rows(); ++a) {
                addSelf(result, links[at(members[at(a)])], y(a, a));
                for (int b = a + 1; b < y.rows(); ++b) {
                    addPair(result, links[at(members[at(a)])], links[at(members[at(b)])], y(a, b));
                }
            }
        }
    }
    std::vector<double> held(at(elements_->buses()), 0);
    for (const auto& e : result) held[at(e.row)] = std::max(held[at(e.row)], std::abs(e.value));
    for (const NodeShunt& s : elements_->shunts()) result.push_back({s.bus, s.bus, s.y});
    for (int i = 0; i < elements_->buses(); ++i) {
        const bool hold = islands_->of(i) == i && !islands_->live(i);
        result.push_back({i, i, hold ? Complex{0, -(held[at(i)] > 0 ? held[at(i)] : 1.0)} : Complex{}});
    }
    return result;
}

std::unique_ptr<SequenceNetwork::Update> SequenceNetwork::update(const std::vector<int>& branches) const {
    auto result = std::make_unique<Update>();
    const int n = static_cast<int>(branches.size());
    Matrix d(n, n), s(n, n);
    for (int c = 0; c < n; ++c) {
        const auto members = elements_->coupledWith(branches[at(c)]);
        const Matrix y = admittance(branches[at(c)]);
        const auto place = [&](int k) {
            const auto it = std::find(members.begin(), members.end(), k);
            return it == members.end() ? -1 : static_cast<int>(it - members.begin());
        };
        const int own = place(branches[at(c)]);
        BusWeights& weights = result->weights.emplace_back();
        for (int m = 0; m < y.rows(); ++m) addDifference(weights, elements_->links()[at(members[at(m)])], y(m, own));
        for (int r = 0; r < n; ++r) {
            if (const int other = place(branches[at(r)]); other >= 0) d(r, c) = y(other, own);
        }
        result->columns.push_back(solve(weights));
    }
    for (int r = 0; r < n; ++r) {
        for (int c = 0; c < n; ++c) s(r, c) = d(r, c) - weighted(result->weights[at(r)], result->columns[at(c)]);
    }
    try {
        result->inverse = inverse(s);
    } catch (const std::domain_error&) {
        return nullptr;
    }
    if (!(largestEntry(product(result->inverse, d)) < kUpdateLoss)) return nullptr;
    return result;
}

// Without a bridge among one branch the network keeps its live and its floating buses; labels of islands that merely
// fall apart into live ones do not matter.
std::shared_ptr<const Islands> SequenceNetwork::islandsWithout(const std::vector<int>& branches) const {
    if (branches.size() == 1 && !bridges_[at(branches.front())]) return islands_;
    return std::make_shared<const Islands>(*elements_, branches);
}

std::shared_ptr<const SequenceNetwork> SequenceNetwork::without(const std::vector<int>& branches) const {
    std::vector<int> removed;
    std::copy_if(branches.begin(), branches.end(), std::back_inserter(removed), [&](int k) { return conducts(k); });
    if (removed.empty()) return shared_from_this();
    const std::lock_guard lock(mutex_);
    auto& kept = variants_[removed];
    if (!kept) {
        const std::shared_ptr<const Islands> islands = islandsWithout(removed);
        const bool splits = islands != islands_ && islands->floating() > islands_->floating();
        kept.reset(new SequenceNetwork(*this, removed, islands, splits ? nullptr : update(removed)));
    }
    const std::shared_ptr<const SequenceNetwork> result = kept;
    if (variants_.size() > kKeptVariants) variants_.clear();
    return result;
}

void SequenceNetwork::correct(ComplexVector& voltages) const {
    const int n = static_cast<int>(update_->weights.size());
    ComplexVector seen;
    for (const BusWeights& weights : update_->weights) seen.push_back(weighted(weights, voltages));
    for (int r = 0; r < n; ++r) {
        Complex factor;
        for (int c = 0; c < n; ++c) factor += update_->inverse(r, c) * seen[at(c)];
        for (std::size_t i = 0; i < voltages.size(); ++i) voltages[i] += update_->columns[at(r)][i] * factor;
    }
}

ComplexVector SequenceNetwork::solve(const ComplexVector& injection) const {
    if (factors_) return factors_->solve(injection);
    ComplexVector voltages = base_->solve(injection);
    correct(voltages);
    return voltages;
}

ComplexVector SequenceNetwork::solve(const BusWeights& injection) const {
    ComplexVector voltages = factors_ ? factors_->solve(injection) : base_->solve(injection);
    if (update_) correct(voltages);
    return voltages;
}

std::shared_ptr<const ComplexVector> SequenceNetwork::column(int bus) const {
    const std::lock_guard lock(mutex_);
    auto& kept = columns_[bus];
    if (!kept) {
        ComplexVector voltages = base_ ? *base_->column(bus) : factors_->solve(BusWeights{{bus, 1.0}});
        if (update_) correct(voltages);
        kept = std::make_shared<const ComplexVector>(std::move(voltages));
    }
    const auto result = kept;
    if (columns_.size() * result->size() > kKeptValues) columns_.clear();
    return result;
}

}  // namespace engines
