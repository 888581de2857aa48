#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

/// Every reader of foreign bytes under one signature, for the fuzzer and for the deterministic runs of the tests.
namespace fuzz {

/// What a reader must never do: another exception than its own, a value that is not finite, another file on the way
/// back.
class Broken : public std::logic_error {
  public:
    using std::logic_error::logic_error;
};

/// Takes any bytes; refuses them as the reader does or takes them. \throws Broken
using Run = void (*)(std::string_view bytes);

struct Target {
    const char* name;  ///< also the folder below corpus/
    Run run;
};

/// RTDB.INC, RELAY.R0 to R4, R6, R8 and the result files; the first byte chooses which. Written and read again.
void relayFiles(std::string_view bytes);
/// RRULE.DAT: read, checked as HALDERN.EXE checks, written and read again.
void ruleFile(std::string_view bytes);
/// A bundle of network files: read, written and read again, placed, faulted, ordered.
void networkFiles(std::string_view bytes);
/// A bundle of all that HALDERN.EXE reads: a whole run on a small network.
void settingStudy(std::string_view bytes);
/// The real-time file: VASKEL.EXE's reader.
void realTimeTables(std::string_view bytes);
/// A MATPOWER case.
void matpowerCase(std::string_view bytes);
/// A CGMES document, or an archive of them.
void cgmesModel(std::string_view bytes);
/// A bundle of plain network tables: read, written and read again.
void csvTables(std::string_view bytes);

inline constexpr Target kTargets[] = {
    {"relay_files", relayFiles},         {"rule_file", ruleFile},
    {"network_files", networkFiles},     {"setting_study", settingStudy},
    {"realtime_tables", realTimeTables}, {"matpower_case", matpowerCase},
    {"cgmes_model", cgmesModel},         {"csv_tables", csvTables},
};

}  // namespace fuzz
