#include "engines/faults/SequencePorts.h"

#include <algorithm>
#include <cmath>

namespace engines {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

int count(const std::vector<Point>& points, bool nearI) {
    return static_cast<int>(
        std::count_if(points.begin(), points.end(), [&](const Point& p) { return p.nearI() == nearI; }));
}

Complex dot(const ComplexVector& a, const ComplexVector& b) {
    Complex sum;
    for (std::size_t i = 0; i < a.size(); ++i) sum += a[i] * b[i];
    return sum;
}

}  // namespace

SequencePorts::SequencePorts(const Network& network, const SequenceNetwork& whole, std::shared_ptr<const Places> places)
    : grid_(&network), whole_(whole.shared_from_this()), places_(std::move(places)) {
    takeOut(whole);
    for (const Port& port : places_->ports) {
        if (port.branch >= 0) {
            const int first = net_->elements().coupledWith(port.branch).front();
            if (!admittances_.contains(first)) admittances_[first] = net_->admittance(port.branch);
        }
    }
    for (const Port& port : places_->ports) views_.push_back(viewOf(port));
    respond();
}

bool SequencePorts::through(int branch) const {
    const Link& link = net_->elements().links()[at(branch)];
    return link.from >= 0 && link.to >= 0;
}

void SequencePorts::takeOut(const SequenceNetwork& whole) {
    std::vector<int> removed;
    for (const auto& [branch, points] : places_->cuts) {
        const Link& link = whole.elements().links()[at(branch)];
        const bool atI = link.from >= 0, atJ = link.to >= 0;
        if ((atI && atJ) || (atI && count(points, true) > 0) || (atJ && count(points, false) > 0)) {
            removed.push_back(branch);
        }
    }
    net_ = whole.without(removed);
}

void SequencePorts::viewAtBus(int bus, double sign, View& view) const {
    view.ref = Ref::Bus;
    view.refBus = bus;
    view.sign = sign;
}

void SequencePorts::viewInBranch(const Port& port, View& view) const {
    const Branch& branch = grid_->branches[at(port.branch)];
    const bool connected = net_->elements().links()[at(port.branch)].conducts;
    const int before = places_->cutsBefore(port.branch, port.at), all = places_->cutsOn(port.branch);
    view.way = {0, port.at.x};
    if (connected && before == 0) {
        viewAtBus(branch.from.value, 1, view);
    } else if (connected && before == all) {
        viewAtBus(branch.to.value, -1, view);
        view.way = {port.at.x, 1};
    } else if (before > 0) {
        view.way.from = places_->cuts.at(port.branch)[at(before - 1)].x;
    }
}

// A transformer without a zero-sequence path between its ends: the half at each end stands for that end's terminal.
void SequencePorts::viewInTransformer(const Port& port, View& view) const {
    const Branch& branch = grid_->branches[at(port.branch)];
    const Link& link = net_->elements().links()[at(port.branch)];
    const bool nearI = port.at.nearI();
    const int before = places_->cutsBefore(port.branch, port.at);
    const int between = nearI ? before : places_->cutsOn(port.branch) - before;
    if (between == 0) {
        viewAtBus((nearI ? branch.from : branch.to).value, nearI ? 1 : -1, view);
    } else if (link.conducts && (nearI ? link.from : link.to) >= 0) {
        view.ref = Ref::Ground;
        view.way = {0, 1};
    }
}

// Cuts on the way number the pieces; the windings of a transformer without a path between them are pieces of their own.
int SequencePorts::pieceOf(const Port& port) const {
    const int before = places_->cutsBefore(port.branch, port.at);
    const bool otherWinding = !through(port.branch) && !port.at.nearI();
    return otherWinding ? before + places_->cutsOn(port.branch) + 1 : before;
}

SequencePorts::View SequencePorts::viewOf(const Port& port) {
    View view;
    if (port.branch < 0)
        viewAtBus(port.bus, 1, view);
    else if (through(port.branch))
        viewInBranch(port, view);
    else
        viewInTransformer(port, view);
    weigh(port, view);
    if (port.series) return view;
    std::pair<int, int> key{-1, -1};
    if (view.ref == Ref::Floating) key = {port.branch, pieceOf(port)};
    if (view.ref == Ref::Bus && !net_->islands().live(view.refBus)) key.second = net_->islands().of(view.refBus);
    if (key.second < 0) return view;
    const auto known = std::find(floats_.begin(), floats_.end(), key);
    view.floating = static_cast<int>(known - floats_.begin());
    if (known == floats_.end()) floats_.push_back(key);
    return view;
}

void SequencePorts::weigh(const Port& port, View& view) const {
    const auto& elements = net_->elements();
    const bool fromI = port.branch >= 0 && view.sign > 0;
    const double gain = port.branch < 0 ? 1 : elements.links()[at(port.branch)].gain;
    if (port.branch >= 0 && port.at.nearI()) view.scale = port.series ? gain : 1 / gain;
    if (!port.series && view.ref == Ref::Bus) view.weights.emplace_back(view.refBus, view.scale * (fromI ? gain : 1));
    if (port.branch < 0) return;
    const auto members = elements.coupledWith(port.branch);
    const Matrix& y = admittances_.at(members.front());
    view.own = static_cast<int>(std::find(members.begin(), members.end(), port.branch) - members.begin());
    const Link& own = elements.links()[at(port.branch)];
    view.conducts = net_->conducts(port.branch) && (port.at.nearI() ? own.from : own.to) >= 0;
    view.admitted.resize(members.size());
    for (int a = 0; a < y.rows(); ++a) {
        if (!port.series) {
            view.drop.push_back(view.scale * view.sign * elements.impedance(members[at(a)], {}, port.branch, view.way));
        }
    }
    for (int a = 0; a < y.rows(); ++a) {
        for (int b = 0; b < y.rows() && !port.series; ++b) view.admitted[at(a)] += y(a, b) * view.drop[at(b)];
        if (port.series && view.conducts) view.admitted[at(a)] = view.scale * y(a, view.own);
        addDifference(view.weights, elements.links()[at(members[at(a)])],
                      port.series ? view.admitted[at(a)] : -view.admitted[at(a)]);
    }
}

double SequencePorts::onWay(int shunt, int open) const {
    const Port &s = places_->ports[at(shunt)], &j = places_->ports[at(open)];
    const View& way = views_[at(shunt)];
    if (s.branch != j.branch || way.ref == Ref::Ground) return 0;
    if (pieceOf(s) != pieceOf(j)) return 0;
    if (way.sign > 0) return j.at < s.at ? 1 : 0;
    return s.at < j.at ? -1 : 0;
}

Complex SequencePorts::localShunts(int s, int t) const {
    const View &a = views_[at(s)], &b = views_[at(t)];
    const Complex shared =
        net_->elements().impedance(places_->ports[at(s)].branch, a.way, places_->ports[at(t)].branch, b.way);
    return dot(a.drop, b.admitted) - a.scale * b.scale * a.sign * b.sign * shared;
}

Complex SequencePorts::local(int j, int l) const {
    const Port &p = places_->ports[at(j)], &q = places_->ports[at(l)];
    if (p.branch < 0 || q.branch < 0) return {};
    if (net_->elements().coupledWith(p.branch).front() != net_->elements().coupledWith(q.branch).front()) return {};
    const View &a = views_[at(j)], &b = views_[at(l)];
    if (!p.series && !q.series) return localShunts(j, l);
    const double scales = a.scale * b.scale;
    if (!p.series) return (b.conducts ? b.scale * a.admitted[at(b.own)] : Complex{}) - scales * onWay(j, l);
    if (!q.series) return scales * onWay(l, j) - (a.conducts ? a.scale * b.admitted[at(a.own)] : Complex{});
    return a.conducts ? -a.scale * b.admitted[at(a.own)] : Complex{};
}

void SequencePorts::respond() {
    for (View& view : views_) {
        view.half = net_->half(view.weights);
        view.injection = net_->inject(view.half);
    }
    response_ = Matrix(size(), size());
    for (int l = 0; l < size(); ++l) {
        for (int j = 0; j < size(); ++j) response_(j, l) = respond(j, l);
    }
}

// What cancels to nothing is nothing: an open on a way that leads nowhere carries no current, and the rest that
// rounding leaves must not decide about its voltage.
Complex SequencePorts::respond(int j, int l) const {
    constexpr double kCancelled = 1e-12;
    const Complex near = local(j, l);
    const Complex far =
        (places_->ports[at(l)].series ? 1.0 : -1.0) * net_->seen(views_[at(j)].half, views_[at(l)].injection);
    const double size = std::max(std::abs(near), std::abs(far));
    return std::abs(near + far) > kCancelled * size ? near + far : Complex{};
}

Complex SequencePorts::prefault(int port) const {
    const View& view = views_[at(port)];
    if (net_->startsFlat()) return !places_->ports[at(port)].series && !deadAt(port) ? 1 : 0;
    Complex sum;
    for (const auto& [bus, weight] : view.weights) sum += weight * net_->prefault(bus);
    return sum;
}

bool SequencePorts::deadAt(int port) const {
    const View& view = views_[at(port)];
    return view.floating >= 0 || view.ref == Ref::Ground;
}

SequenceField::SequenceField(std::shared_ptr<const SequencePorts> ports, ComplexVector values, ComplexVector floats,
                             bool withPrefault)
    : ports_(std::move(ports)), values_(std::move(values)), floats_(std::move(floats)), withPrefault_(withPrefault) {
    const auto outageColumns = ports_->net_->outageColumns();
    ComplexVector outages(outageColumns.size());
    for (int l = 0; l < ports_->size(); ++l) {
        const Complex current = (ports_->places_->ports[at(l)].series ? 1.0 : -1.0) * values_[at(l)];
        if (current == Complex{}) continue;
        const Injection& injection = ports_->views_[at(l)].injection;
        injections_.emplace_back(&injection.own, current);
        for (std::size_t c = 0; c < outages.size(); ++c) outages[c] += injection.outages[c] * current;
    }
    for (std::size_t c = 0; c < outages.size(); ++c) injections_.emplace_back(&outageColumns[c], outages[c]);
}

Complex SequenceField::component(const HalfColumn& by) const {
    Complex sum;
    for (const auto& [column, current] : injections_) sum += ports_->net_->factors().dot(by, *column) * current;
    return sum;
}

Complex SequenceField::floating(int bus) const {
    const Islands& islands = ports_->net_->islands();
    if (islands.live(bus)) return {};
    const auto& keys = ports_->floats_;
    const auto key = std::find(keys.begin(), keys.end(), std::pair{-1, islands.of(bus)});
    return key == keys.end() ? Complex{} : floats_[static_cast<std::size_t>(key - keys.begin())];
}

Complex SequenceField::voltage(int bus) const {
    const SequenceNetwork& net = *ports_->net_;
    const Islands& islands = net.islands();
    if (!islands.live(bus) && std::find(ports_->floats_.begin(), ports_->floats_.end(),
                                        std::pair{-1, islands.of(bus)}) == ports_->floats_.end())
        return {};
    return component(*net.half(BusIndex{bus})) + floating(bus) + (withPrefault_ ? net.prefault(bus) : Complex{});
}

bool SequenceField::loaded() const { return withPrefault_ && !ports_->net_->startsFlat(); }

// A common voltage of a floating island drives no current, nor does the flat start.
Complex SequenceField::drop(int branch) const {
    const SequenceNetwork& net = *ports_->net_;
    const Link& link = net.elements().links()[at(branch)];
    const Complex driven = component(*net.across(branch));
    if (!loaded()) return driven;
    const auto before = [&](int bus) { return bus >= 0 ? net.prefault(bus) : Complex{}; };
    return driven + link.gain * before(link.from) - before(link.to);
}

Complex SequenceField::ownCurrent(int branch) const {
    const SequenceNetwork& net = *ports_->net_;
    if (!net.conducts(branch)) return {};
    const auto members = net.elements().coupledWith(branch);
    const auto known = ports_->admittances_.find(members.front());
    if (known == ports_->admittances_.end() && members.size() == 1)
        return drop(branch) * net.elements().links()[at(branch)].y;
    const Matrix y = known == ports_->admittances_.end() ? net.admittance(branch) : known->second;
    const int own = static_cast<int>(std::find(members.begin(), members.end(), branch) - members.begin());
    Complex sum;
    for (int m = 0; m < y.rows(); ++m) {
        if (y(own, m) != Complex{}) sum += y(own, m) * drop(members[at(m)]);
    }
    for (int l = 0; l < ports_->size(); ++l) {
        const Port& port = ports_->places_->ports[at(l)];
        if (port.branch < 0 || net.elements().coupledWith(port.branch).front() != members.front()) continue;
        sum -= ports_->views_[at(l)].admitted[at(own)] * values_[at(l)];
    }
    return sum;
}

Complex SequenceField::current(int branch, End end) const {
    const Link& link = ports_->net_->elements().links()[at(branch)];
    const double gain = end == End::I ? link.gain : 1;
    Complex sum;
    if ((end == End::I ? link.from : link.to) >= 0) sum = end == End::I ? ownCurrent(branch) : -ownCurrent(branch);
    for (int l = 0; l < ports_->size(); ++l) {
        const Port& port = ports_->places_->ports[at(l)];
        const auto& view = ports_->views_[at(l)];
        if (port.branch != branch || port.series || view.ref != SequencePorts::Ref::Bus) continue;
        if ((view.sign > 0) == (end == End::I)) sum += view.scale * values_[at(l)];
    }
    return gain * sum;
}

Complex SequenceField::counterpart(int port) const {
    Complex sum = withPrefault_ ? ports_->prefault(port) : Complex{};
    for (int l = 0; l < ports_->size(); ++l) sum += ports_->response()(port, l) * values_[at(l)];
    const int floating = ports_->floatOf(port);
    return floating < 0 ? sum : sum + floats_[at(floating)];
}

}  // namespace engines
