#include "engines/faults/LocalStudy.h"

#include <algorithm>
#include <set>

#include "engines/faults/SequencePorts.h"
#include "engines/faults/ShuntFault.h"

namespace engines {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

constexpr Complex kOpen{99999.9999, 99999.9999};

/// What a unit of fault current at each place does.
struct Table {
    ComplexVector driving;             // voltage at the place, by place
    ComplexVector share;               // current of the relay, by place and relay
    ComplexVector before;              // voltage of the place before the fault
    ComplexVector load;                // current of the relay before the fault
    std::vector<char> dead, floating;  // by place
};

}  // namespace

/// The study in one sequence network.
class LocalStudy::InSequence {
  public:
    InSequence(const ModeNetwork& mode, Sequence sequence, std::span<const Condition> places,
               std::vector<BranchEnd> relays)
        : network_(mode.network()), whole_(mode.sequence(sequence)), relays_(std::move(relays)) {
        const auto found = std::make_shared<const Places>(placesOf(network_, places));
        ports_ = std::make_shared<const SequencePorts>(network_, whole_, found);
        base_ = now_ = table(ports_);
        for (const Port& port : found->ports) {
            if (port.branch >= 0) involved_.insert(coupling(port.branch));
        }
        for (const BranchEnd& relay : relays_) {
            involved_.insert(coupling(relay.branch.value));
            halves_.push_back(half(relay));
        }
    }

    /// \param conditions  the places and the opens of the outage
    void takeOut(const std::vector<int>& branches, std::span<const Condition> conditions) {
        const auto net = whole_.without(branches);
        const bool whole = net->islands().floating() == whole_.islands().floating();
        updated_ = !net->outageColumns().empty() && whole && net->startsFlat() &&
                   std::ranges::none_of(branches, [&](int k) { return involved_.contains(coupling(k)); });
        if (updated_) return correct(*net);
        const auto found = std::make_shared<const Places>(placesOf(network_, conditions));
        now_ = table(std::make_shared<const SequencePorts>(network_, whole_, found));
    }

    [[nodiscard]] const Table& now() const { return now_; }
    [[nodiscard]] Complex share(int place, int relay) const {
        return now_.share[at(place) * relays_.size() + at(relay)];
    }
    [[nodiscard]] bool updated() const { return updated_; }

  private:
    [[nodiscard]] int coupling(int branch) const { return whole_.elements().coupledWith(branch).front(); }

    [[nodiscard]] HalfColumn half(BranchEnd relay) const {
        const int k = relay.branch.value;
        const auto& links = whole_.elements().links();
        const Link& own = links[at(k)];
        BusWeights weights;
        if (!whole_.conducts(k) || (relay.end == End::I ? own.from : own.to) < 0) return whole_.half(weights);
        const double sign = relay.end == End::I ? own.gain : -1;
        const auto members = whole_.elements().coupledWith(k);
        const Matrix y = whole_.admittance(k);
        const auto row = static_cast<int>(std::ranges::find(members, k) - members.begin());
        for (int m = 0; m < y.rows(); ++m) addDifference(weights, links[at(members[at(m)])], sign * y(row, m));
        return whole_.half(weights);
    }

    [[nodiscard]] Table table(const std::shared_ptr<const SequencePorts>& ports) const {
        Table result;
        const int count = ports->size();
        const SequenceField none(ports, ComplexVector(at(count)), ComplexVector(at(ports->floats())), true);
        for (const BranchEnd& relay : relays_) result.load.push_back(none.current(relay.branch.value, relay.end));
        for (int p = 0; p < count; ++p) {
            ComplexVector unit(at(count));
            unit[at(p)] = 1;
            const SequenceField field(ports, unit, ComplexVector(at(ports->floats())), false);
            result.driving.push_back(-ports->response()(p, p));
            result.before.push_back(ports->prefault(p));
            result.dead.push_back(ports->deadAt(p));
            result.floating.push_back(ports->floatOf(p) >= 0);
            for (const BranchEnd& relay : relays_) result.share.push_back(field.current(relay.branch.value, relay.end));
        }
        return result;
    }

    void correct(const SequenceNetwork& net) {
        const auto columns = net.outageColumns();
        const Factors& factors = net.factors();
        seen_.clear();
        for (const HalfColumn& half : halves_) {
            for (const DrivenColumn& column : columns) seen_.push_back(factors.dot(half, column));
        }
        now_ = base_;
        for (int p = 0; p < ports_->size(); ++p) {
            const ComplexVector back = net.sentBack(ports_->injection(p).own);
            Complex* share = now_.share.data() + at(p) * halves_.size();
            for (std::size_t c = 0; c < columns.size(); ++c) {
                now_.driving[at(p)] += product(factors.dot(ports_->half(p), columns[c]), back[c]);
                for (std::size_t r = 0; r < halves_.size(); ++r) {
                    share[r] -= product(seen_[r * columns.size() + c], back[c]);
                }
            }
        }
    }

    const Network& network_;
    const SequenceNetwork& whole_;
    std::vector<BranchEnd> relays_;
    std::shared_ptr<const SequencePorts> ports_;
    std::vector<HalfColumn> halves_;  // of the relays
    std::set<int> involved_;          // coupled sets of places and relays
    Table base_, now_;
    ComplexVector seen_;
    bool updated_ = true;
};

LocalStudy::LocalStudy(const ModeNetwork& mode, std::span<const Condition> places, std::span<const BranchEnd> relays)
    : mode_(&mode), places_(places.begin(), places.end()) {
    for (int p = 0; p < static_cast<int>(places_.size()); ++p) {
        places_[at(p)].kind = FaultKind::ThreePhaseGround;
        places_[at(p)].group = p + 1;
    }
    const std::vector<BranchEnd> ends(relays.begin(), relays.end());
    positive_ = std::make_unique<InSequence>(mode, Sequence::Positive, places_, ends);
    zero_ = std::make_unique<InSequence>(mode, Sequence::Zero, places_, ends);
}

LocalStudy::~LocalStudy() = default;

std::vector<Condition> LocalStudy::conditions(std::span<const BranchIndex> out) const {
    std::vector<Condition> all = places_;
    for (const BranchIndex branch : out) {
        for (const double end : {0.0, 100.0}) all.push_back({branch, {}, end, FaultKind::OpenABC, kOpen, -1});
    }
    return all;
}

void LocalStudy::takeOut(std::span<const BranchIndex> branches) {
    std::vector<int> removed;
    for (const BranchIndex branch : branches) removed.push_back(branch.value);
    std::ranges::sort(removed);
    const std::vector<Condition> all = conditions(branches);
    positive_->takeOut(removed, all);
    zero_->takeOut(removed, all);
}

bool LocalStudy::updated() const { return positive_->updated() && zero_->updated(); }

PlaceFault LocalStudy::fault(int place, FaultKind kind, Complex z) const {
    const std::size_t p = at(place);
    const Table &positive = positive_->now(), &zero = zero_->now();
    PlaceFault result{place, {}, {}, positive.dead[p] != 0};
    if (result.dead) return result;
    const bool grounded = !zero.floating[p];
    const Complex before = positive.before[p], z1 = positive.driving[p], z0 = zero.driving[p];
    result.current = shuntCurrent(kind, before, z1, z0, grounded, z);
    result.voltage = {before - product(z1, result.current.positive), -product(z1, result.current.negative), {}};
    result.voltage.zero = grounded ? -product(z0, result.current.zero) : displacement(kind, result.voltage);
    return result;
}

Sequences LocalStudy::current(const PlaceFault& fault, int relay) const {
    if (fault.dead) return {};
    const Complex share = positive_->share(fault.place, relay);
    return {positive_->now().load[at(relay)] + product(share, fault.current.positive),
            product(share, fault.current.negative), product(zero_->share(fault.place, relay), fault.current.zero)};
}

}  // namespace engines
