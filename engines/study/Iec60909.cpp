#include "engines/study/Iec60909.h"

#include <cmath>
#include <numbers>

namespace engines::iec60909 {

double largestVoltageFactor(double nominalKv) { return nominalKv > 1 ? 1.1 : 1.05; }
double smallestVoltageFactor(double nominalKv) { return nominalKv > 1 ? 1.0 : 0.95; }

double feederImpedance(double c, double nominalKv, double ikKa) { return c * nominalKv / (std::numbers::sqrt3 * ikKa); }

double transformerFactor(double cMax, double xT) { return 0.95 * cMax / (1 + 0.6 * xT); }

double generatorFactor(double cMax, double nominalKv, const GeneratorRating& generator) {
    return nominalKv / generator.kv * cMax / (1 + generator.x * generator.sinPhi);
}

double unitFactor(double cMax, double nominalKv, const GeneratorRating& generator,
                  const UnitTransformerRating& transformer) {
    const double ratios = nominalKv / generator.kv * transformer.lowKv / transformer.highKv;
    return ratios * ratios * cMax / (1 + std::abs(generator.x - transformer.x) * generator.sinPhi);
}

double unitFactorWithoutTapChanger(double cMax, double nominalKv, const GeneratorRating& generator,
                                   const UnitTransformerRating& transformer) {
    const double ratios =
        nominalKv / (generator.kv * (1 + generator.voltageRange)) * transformer.lowKv / transformer.highKv;
    return ratios * cMax / (1 + generator.x * generator.sinPhi);
}

double resistanceFactor(double celsius) { return 1 + 0.004 * (celsius - 20); }

}  // namespace engines::iec60909
