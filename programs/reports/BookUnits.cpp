#include "programs/reports/BookUnits.h"

#include "programs/workflow/ResultTable.h"

QString bookUnit(int vType) { return vType == kImpedance ? QStringLiteral("Ω") : unitOf(vType); }

QString bookVariableUnit(int vType) {
    const auto among = [&](int from, int to) { return vType >= from && vType <= to; };
    if (among(1, 9) || vType == 121 || vType == 131) return "A";
    if (among(11, 18)) return "V";
    if (among(21, 22) || among(101, 106) || among(141, 142)) return "Ω";
    if (vType == 122 || vType == 132) return "kV";
    if (vType == 108) return "°";
    if (vType == 109) return "km";
    return vType == 123 ? "MVA" : "";
}
