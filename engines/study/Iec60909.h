#pragma once

/// Formulas of IEC 60909-0, short-circuit currents in three-phase a.c. systems. Pure functions: relative reactances are
/// on the element's own rating, voltages phase to phase in kV, currents in kA, impedances in ohm.
namespace engines::iec60909 {

/// Voltage factor for the largest currents: 1.05 up to 1 kV, 1.1 above.
/// Source: IEC 60909-0, Table 1 (low voltage with a tolerance of 6 %)
double largestVoltageFactor(double nominalKv);
/// Voltage factor for the smallest currents: 0.95 up to 1 kV, 1.0 above. Source: as above
double smallestVoltageFactor(double nominalKv);

/// Impedance of a network feeder, Z = c Un / (sqrt3 Ik"). Source: IEC 60909-0, 3.2
double feederImpedance(double c, double nominalKv, double ikKa);

/// K_T = 0.95 c_max / (1 + 0.6 x_T) of a network transformer, or of two windings of a three-winding one.
/// Source: IEC 60909-0, 3.3.3
double transformerFactor(double cMax, double xT);

/// A synchronous generator's rating.
struct GeneratorRating {
    double kv = 0;            ///< U_rG
    double x = 0;             ///< x"d
    double sinPhi = 0;        ///< of the rated power factor
    double voltageRange = 0;  ///< p_G, as a share of U_rG
};
/// A unit transformer's rating.
struct UnitTransformerRating {
    double highKv = 0, lowKv = 0;  ///< U_rTHV, U_rTLV
    double x = 0;                  ///< x_T
};

/// K_G = (Un / U_rG) c_max / (1 + x"d sin phi) of a generator without unit transformer. Source: IEC 60909-0, 3.6.1
double generatorFactor(double cMax, double nominalKv, const GeneratorRating& generator);

/// K_S = (UnQ / U_rG)^2 (U_rTLV / U_rTHV)^2 c_max / (1 + |x"d - x_T| sin phi) of a power station unit whose transformer
/// has an on-load tap changer. \param nominalKv  UnQ, of the network at the high-voltage side. Source: IEC 60909-0,
/// 3.7.1
double unitFactor(double cMax, double nominalKv, const GeneratorRating& generator,
                  const UnitTransformerRating& transformer);

/// K_SO = UnQ / (U_rG (1 + p_G)) U_rTLV / U_rTHV c_max / (1 + x"d sin phi) of a unit without one; taps (p_T) in the
/// middle. Source: IEC 60909-0, 3.7.2
double unitFactorWithoutTapChanger(double cMax, double nominalKv, const GeneratorRating& generator,
                                   const UnitTransformerRating& transformer);

/// Resistance at a conductor temperature over that at 20 degrees: 1 + 0.004 (theta - 20).
/// Source: IEC 60909-0, 2.5 (copper, aluminium and its alloys)
double resistanceFactor(double celsius);

}  // namespace engines::iec60909
