#include "engines/study/NamePlates.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_map>
#include <unordered_set>

#include "engines/study/Iec60909.h"

namespace engines {

namespace {

using namespace iec60909;

std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// The network with what corrections look up.
class Corrector {
  public:
    Corrector(Network& network, const Iec60909Method& method) : network_(network), method_(method) {
        for (const Source& source : network.sources) sources_.emplace(source.name, static_cast<int>(sources_.size()));
    }

    void correct(const NamePlates& plates) {
        for (const auto& plate : plates.transformers)
            if (plate.unit) correctUnit(plate, plates);
        for (const auto& plate : plates.transformers) correctTransformer(plate);
        for (const auto& plate : plates.threeWinding) correctThreeWinding(plate);
        for (const auto& plate : plates.sources) correctSource(plate);
        for (const auto& plate : plates.lines) correctLine(plate);
        if (!method_.maximum) removeMotors(plates);
        network_.loadFlow = false;
    }
    std::vector<AppliedFactor> factors;

  private:
    Bus& bus(BusIndex i) { return network_.buses[at(i.value)]; }
    double ohmBase(BusIndex i) { return bus(i).baseKv * bus(i).baseKv / 100; }
    Branch* branch(int idNo) {
        const auto found = network_.branchById.find(idNo);
        return found == network_.branchById.end() ? nullptr : &network_.branches[at(found->second)];
    }
    int sourceOf(const SourcePlate& plate) const {
        const auto found = sources_.find(plate.name);
        return found == sources_.end() ? -1 : found->second;
    }

    /// Reactance on the element's rating from a value on 100 MVA and a base voltage.
    static double relative(double x, double mva, double kv, double baseKv) {
        return x * mva / 100 * (baseKv / kv) * (baseKv / kv);
    }
    double lowSideFactor(double kvA, double kvB) { return largestVoltageFactor(std::min(kvA, kvB)); }

    /// The impedances of a branch from plate values at its I side, behind its rated ratio.
    void place(Branch& b, const WindingPlate& i, const WindingPlate& j, Complex z1, Complex z0) {
        b.ratio = (i.ratedKv / bus(b.from).baseKv) / (j.ratedKv / bus(b.to).baseKv);
        const double square = b.ratio * b.ratio;
        b.z1 = z1 / square;
        if (b.zeroPath == ZeroPath::None) return;
        b.z0 = (z0 + 3.0 * i.neutral / ohmBase(b.from)) / square + 3.0 * j.neutral / ohmBase(b.to);
    }

    void correctTransformer(const TransformerPlate& plate) {
        Branch* b = branch(plate.idNo);
        if (!b || units_.contains(plate.idNo)) return;
        const double x = relative(plate.z1.imag(), ratingOf(plate), plate.i.ratedKv, bus(b->from).baseKv);
        const double value = transformerFactor(lowSideFactor(bus(b->from).baseKv, bus(b->to).baseKv), x);
        const double k = applied({"K_T", plate.idNo, {}, value});
        place(*b, plate.i, plate.j, k * plate.z1, k * plate.z0);
    }

    /// The factors are for the largest currents; for the smallest they are 1.
    double applied(const AppliedFactor& factor) {
        if (!method_.maximum) return 1;
        factors.push_back(factor);
        return factor.value;
    }

    static double ratingOf(const TransformerPlate& plate) { return std::max(plate.i.ratedMva, plate.j.ratedMva); }

    using Star = std::array<Complex, 3>;
    void correctThreeWinding(const ThreeWindingPlate& plate) {
        Branch* first = branch(plate.idNo);
        if (!first) return;
        const std::array<double, 3> k = pairFactors(plate, bus(first->from).baseKv);
        const Star z1 = corrected(plate.z1, k), z0 = corrected(plate.z0, k);
        for (int w = 0; w < 3; ++w) {
            Branch* b = branch(plate.idNo + w);
            const WindingPlate star{plate.winding[0].ratedKv, plate.winding[0].ratedMva, {}};
            if (b) place(*b, star, plate.winding[w], z1[at(w)], z0[at(w)]);
        }
    }

    /// Of the pairs 12, 13, 23, each on the smaller of its two ratings.
    std::array<double, 3> pairFactors(const ThreeWindingPlate& plate, double baseKv) {
        constexpr int pair[3][2] = {{0, 1}, {0, 2}, {1, 2}};
        constexpr const char* symbol[3] = {"K_T12", "K_T13", "K_T23"};
        std::array<double, 3> k{};
        for (int p = 0; p < 3; ++p) {
            const auto [a, b] = pair[p];
            const double mva = std::min(plate.winding[a].ratedMva, plate.winding[b].ratedMva);
            const double x = relative((plate.z1[a] + plate.z1[b]).imag(), mva, plate.winding[0].ratedKv, baseKv);
            const double c = lowSideFactor(plate.winding[a].ratedKv, plate.winding[b].ratedKv);
            k[at(p)] = applied({symbol[p], plate.idNo, {}, transformerFactor(c, x)});
        }
        return k;
    }

    static Star corrected(const Complex z[3], const std::array<double, 3>& k) {
        const Complex z12 = k[0] * (z[0] + z[1]), z13 = k[1] * (z[0] + z[2]), z23 = k[2] * (z[1] + z[2]);
        return {(z12 + z13 - z23) / 2.0, (z12 + z23 - z13) / 2.0, (z13 + z23 - z12) / 2.0};
    }

    static bool knowsRating(const SourcePlate& plate) {
        return plate.cosPhi > 0 && plate.ratedMva > 0 && plate.ratedKv > 0;
    }
    GeneratorRating ratingOf(const SourcePlate& plate, const Source& source) {
        const double x = relative(source.z1.imag(), plate.ratedMva, plate.ratedKv, bus(source.bus).baseKv);
        return {plate.ratedKv, x, std::sqrt(std::max(0.0, 1 - plate.cosPhi * plate.cosPhi)), plate.voltageRange};
    }

    /// The only generator at one of the two sides of a transformer; null when there is none or more than one.
    const SourcePlate* generatorBeside(const Branch& b, const NamePlates& plates) const {
        const SourcePlate* found = nullptr;
        for (const auto& plate : plates.sources) {
            const int s = plate.kind == SourceKind::Generator ? sourceOf(plate) : -1;
            if (s < 0) continue;
            const BusIndex place = network_.sources[at(s)].bus;
            if (place != b.from && place != b.to) continue;
            if (found) return nullptr;
            found = &plate;
        }
        return found;
    }

    void correctUnit(const TransformerPlate& plate, const NamePlates& plates) {
        Branch* b = branch(plate.idNo);
        const SourcePlate* generator = b ? generatorBeside(*b, plates) : nullptr;
        if (!generator || !knowsRating(*generator)) return;
        Source& source = network_.sources[at(sourceOf(*generator))];
        const bool lowAtJ = source.bus == b->to;
        const double nominal = bus(lowAtJ ? b->from : b->to).baseKv;
        UnitTransformerRating rating{plate.i.ratedKv, plate.j.ratedKv, 0};
        if (!lowAtJ) std::swap(rating.highKv, rating.lowKv);
        rating.x = relative(plate.z1.imag(), ratingOf(plate), plate.i.ratedKv, bus(b->from).baseKv);
        const auto factor = plate.tapChanger ? unitFactor : unitFactorWithoutTapChanger;
        const double value = factor(largestVoltageFactor(nominal), nominal, ratingOf(*generator, source), rating);
        const double k = applied({plate.tapChanger ? "K_S" : "K_SO", plate.idNo, generator->name, value});
        place(*b, plate.i, plate.j, k * plate.z1, k * plate.z0);
        scale(source, *generator, k);
        units_.insert(plate.idNo);
        unitGenerators_.insert(generator->name);
    }

    void scale(Source& source, const SourcePlate& plate, double k) {
        source.z1 *= k;
        if (source.grounded) source.z0 = k * plate.z0 + 3.0 * plate.neutral / ohmBase(source.bus);
    }

    void correctSource(const SourcePlate& plate) {
        const int s = sourceOf(plate);
        if (s < 0 || unitGenerators_.contains(plate.name)) return;
        Source& source = network_.sources[at(s)];
        const double nominal = bus(source.bus).baseKv;
        if (plate.kind == SourceKind::Feeder) return correctFeeder(source, plate, nominal);
        if (plate.kind == SourceKind::Motor || !knowsRating(plate)) return;
        const double value = generatorFactor(largestVoltageFactor(nominal), nominal, ratingOf(plate, source));
        scale(source, plate, applied({"K_G", 0, plate.name, value}));
    }

    void correctFeeder(Source& source, const SourcePlate& plate, double nominal) {
        const double ik = !method_.maximum && plate.ikMinKa > 0 ? plate.ikMinKa : plate.ikMaxKa;
        if (ik <= 0) return;
        const double z = feederImpedance(method_.voltageFactor(nominal), nominal, ik) / ohmBase(source.bus);
        scale(source, plate, z / std::abs(source.z1));
    }

    void correctLine(const LinePlate& plate) {
        Branch* b = branch(plate.idNo);
        if (!b || method_.maximum || plate.endTemperature <= 0) return;
        const double k = resistanceFactor(plate.endTemperature);
        factors.push_back({"R", plate.idNo, {}, k});
        for (Complex* z : {&b->z1, &b->z0}) z->real(k * z->real());
    }

    void removeMotors(const NamePlates& plates) {
        std::unordered_set<std::string> motors;
        for (const auto& plate : plates.sources)
            if (plate.kind == SourceKind::Motor) motors.insert(plate.name);
        std::erase_if(network_.sources, [&](const Source& source) { return motors.contains(source.name); });
    }

    Network& network_;
    const Iec60909Method& method_;
    std::unordered_map<std::string, int> sources_;
    std::unordered_set<int> units_;
    std::unordered_set<std::string> unitGenerators_;
};

}  // namespace

double Iec60909Method::voltageFactor(double nominalKv) const {
    if (c) return *c;
    return maximum ? largestVoltageFactor(nominalKv) : smallestVoltageFactor(nominalKv);
}

std::vector<AppliedFactor> applyIec60909(Network& network, const NamePlates& plates, const Iec60909Method& method) {
    Corrector corrector(network, method);
    corrector.correct(plates);
    return std::move(corrector.factors);
}

std::vector<double> addZeroSequenceCharging(Network& network, const NamePlates& plates) {
    std::vector<double> atEnd(network.branches.size(), 0.0);
    for (const LinePlate& plate : plates.lines) {
        const auto found = network.branchById.find(plate.idNo);
        if (found == network.branchById.end() || plate.b0 == 0) continue;
        const Branch& b = network.branches[at(found->second)];
        atEnd[at(found->second)] = plate.b0 / 2;
        for (const BusIndex end : {b.from, b.to})
            network.zeroShunts.push_back({end, 1.0 / Complex{0, plate.b0 / 2}, 0});
    }
    return atEnd;
}

}  // namespace engines
