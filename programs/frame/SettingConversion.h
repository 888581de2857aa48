#pragma once

/// Factor from the primary to the secondary value of a setting; primary = secondary / factor.
/// \param vType  kind of value: 1 current, 2 impedance, 3 voltage, any other has no ratio (1)
/// \return never 0 and always finite: without a usable ratio (0, negative, not finite) 1, as for a relay that has none
double conversionFactor(int vType, double ctPri, double ctSec, double ptPri, double ptSec);
