#pragma once

namespace exchange::file {

inline constexpr char kRealTimeName[] = "RTDB.INC";
inline constexpr char kControl[] = "RELAY.R0";
inline constexpr char kRelays[] = "RELAY.R1";
inline constexpr char kMainBranches[] = "RELAY.R2";
inline constexpr char kModes[] = "RELAY.R3";
inline constexpr char kVirtualRelays[] = "RELAY.R4";
inline constexpr char kUnused5[] = "RELAY.R5";
inline constexpr char kRuleFaults[] = "RELAY.R6";
inline constexpr char kEarlierCoefficients[] = "RELAY.R7";
inline constexpr char kTurnOrder[] = "RELAY.R8";
inline constexpr char kRules[] = "RRULE.DAT";
inline constexpr char kSettingResults[] = "RELAY.RP1";
inline constexpr char kFaultResults[] = "RELAY.RP2";
inline constexpr char kCoefficients[] = "RELAY.RP3";
inline constexpr char kPhaseResults[] = "RELAY.RP4";
inline constexpr char kVariableResults[] = "RELAY.RP5";

// Written by the network converter for the other two executables; the module only removes them.
inline constexpr char kNames[] = "NAME.INC";
inline constexpr char kOutput[] = "GT.OUT";
inline constexpr const char* kConverterFiles[] = {"LF.L0", "LF.L1",  "LF.L2", "LF.L3",  "LF.L4",   "LF.L5",
                                                  "LF.L6", "LF.L13", "ST.S1", "ST.S2",  "ST.S3",   "ST.S4",
                                                  "ST.S5", "ST.S6",  "ST.S7", "GT.OUT", "NAME.INC"};

inline constexpr char kConverterProgram[] = "VASKEL.EXE";
inline constexpr char kOrderProgram[] = "QORDEN.EXE";
inline constexpr char kEngineProgram[] = "HALDERN.EXE";

}  // namespace exchange::file
