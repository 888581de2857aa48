#include "programs/frame/SettingConversion.h"

#include <cmath>

namespace {

double usable(double factor) { return std::isfinite(factor) && factor > 0 ? factor : 1.0; }

}  // namespace

double conversionFactor(int vType, double ctPri, double ctSec, double ptPri, double ptSec) {
    switch (vType) {
        case 1:
            return usable(ctPri / ctSec);
        case 2:
            return usable((ctSec / ctPri) * (ptSec / ptPri));
        case 3:
            return usable(ptSec / ptPri);
        default:
            return 1.0;
    }
}
