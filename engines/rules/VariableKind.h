#pragma once

/// What the number `VType` of a rule's input variable stands for. The full list with units is docs/rule-language.md.
namespace engines {

/// Classes of modes by `ModeNo`: what their candidates are.
enum class ModeClass { OwnData, Faults, BranchesBehind, RelaysBehind, BranchesHere, None };
ModeClass modeClass(int modeNo);

namespace vtype {
inline constexpr int kZ1 = 101, kZ0 = 102, kR1 = 103, kX1 = 104, kR0 = 105, kX0 = 106;
inline constexpr int kK0 = 107, kLineAngle = 108, kLength = 109;
inline constexpr int kRatedCurrent = 121, kRatedVoltage = 122, kRatedPower = 123;
inline constexpr int kLoadCurrent = 131, kLowestVoltage = 132;
inline constexpr int kSourceImpedance1 = 141, kSourceImpedance0 = 142;
inline constexpr int kFirstSetting = 401, kLastSetting = 420;
inline constexpr int kCoefficient1 = 451, kCoefficient0 = 452;
inline constexpr int kAssist1 = 453, kAssist0 = 454;
inline constexpr int kTransformerAssist1 = 455, kTransformerAssist0 = 456;
}  // namespace vtype

bool isElementDatum(int vType);       ///< 101 to 109, 121 to 123
bool isSourceImpedance(int vType);    ///< 141, 142
bool isRelaySetting(int vType);       ///< 401 to 420
bool isBranchCoefficient(int vType);  ///< 451 to 456
bool isVariableKind(int vType);       ///< any number that this engine knows
/// A variable of this kind can stand in a mode of this number.
bool standsInMode(int vType, int modeNo);

/// Part and number of the setting that 401 to 420 ask for, both from 1.
struct SettingPlace {
    int part = 0;
    int number = 0;
};
SettingPlace settingPlace(int vType);

}  // namespace engines
