#include "engines/rules/VariableKind.h"

#include "engines/faults/FaultStudy.h"

namespace engines {

ModeClass modeClass(int modeNo) {
    if (modeNo == 0) return ModeClass::OwnData;
    if (modeNo >= 1 && modeNo <= 20) return ModeClass::Faults;
    if (modeNo >= 21 && modeNo <= 30) return ModeClass::BranchesBehind;
    if (modeNo >= 31 && modeNo <= 40) return ModeClass::RelaysBehind;
    if (modeNo >= 41 && modeNo <= 45) return ModeClass::BranchesHere;
    return ModeClass::None;
}

bool isElementDatum(int vType) {
    return (vType >= vtype::kZ1 && vType <= vtype::kLength) ||
           (vType >= vtype::kRatedCurrent && vType <= vtype::kRatedPower);
}

bool isSourceImpedance(int vType) { return vType == vtype::kSourceImpedance1 || vType == vtype::kSourceImpedance0; }

bool isRelaySetting(int vType) { return vType >= vtype::kFirstSetting && vType <= vtype::kLastSetting; }

bool isBranchCoefficient(int vType) { return vType >= vtype::kCoefficient1 && vType <= vtype::kTransformerAssist0; }

namespace {

bool isLoadDatum(int vType) { return vType == vtype::kLoadCurrent || vType == vtype::kLowestVoltage; }

}  // namespace

bool isVariableKind(int vType) {
    return isFaultQuantity(vType) || isElementDatum(vType) || isLoadDatum(vType) || isSourceImpedance(vType) ||
           isRelaySetting(vType) || isBranchCoefficient(vType);
}

bool standsInMode(int vType, int modeNo) {
    switch (modeClass(modeNo)) {
        case ModeClass::OwnData:
            return isElementDatum(vType) || isLoadDatum(vType) || isSourceImpedance(vType);
        case ModeClass::Faults:
            return isFaultQuantity(vType);
        case ModeClass::RelaysBehind:
            return isRelaySetting(vType) || isElementDatum(vType) || isBranchCoefficient(vType);
        case ModeClass::BranchesBehind:
        case ModeClass::BranchesHere:
            return isElementDatum(vType) || isBranchCoefficient(vType);
        case ModeClass::None:
            return false;
    }
    return false;
}

SettingPlace settingPlace(int vType) { return {(vType - 397) / 4, (vType - 397) % 4 + 1}; }

}  // namespace engines
