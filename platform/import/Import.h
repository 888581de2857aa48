#pragma once

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/host/NetworkModel.h"

namespace import {

/// A file that is not what it says: `FILE:LINE: what is wrong` (line 0: the file as a whole).
class ImportError : public std::runtime_error {
  public:
    ImportError(const std::string& file, int line, const std::string& what);
};

/// One line of the report that every import ends with.
struct Finding {
    enum class Kind { Came, Defaulted, Missing, Suspicious, Changed };
    Kind kind = Kind::Came;
    std::string subject;  ///< element or kind of element, UTF-8
    std::string text;     ///< one sentence, Chinese
    int count = 1;
};
/// A word for a kind of finding, Chinese.
std::string kindText(Finding::Kind kind);

struct Report {
    std::vector<Finding> findings;
    void add(Finding::Kind kind, std::string subject, std::string text, int count = 1);
};

struct Options {
    /// Names that do not fit char(20) in GBK, or repeat: shortened by the stated rule and reported, or refused.
    bool shortenNames = true;
    /// Default zero-sequence and machine data for a network that has none; each default is reported.
    bool defaultSequenceData = true;
    std::function<void(int percent, const std::string& what)> progress;

    void tell(int percent, const std::string& what) const {
        if (progress) progress(percent, what);
    }
};

enum class InputKind { Csv, Cgmes, Matpower };
/// What an input is, by its content. \throws ImportError when it is none of them
InputKind kindOf(const std::filesystem::path& input);

/// Reads a network, telling the kind of input by its content: a folder of plain CSV files, CGMES files (a folder, a
/// zip, or one file), a MATPOWER case. \throws ImportError
host::NetworkModel read(const std::filesystem::path& input, const Options& options, Report& report);

host::NetworkModel readCsv(const std::filesystem::path& folder, const Options& options, Report& report);
host::NetworkModel readCgmes(const std::filesystem::path& input, const Options& options, Report& report);
host::NetworkModel readMatpower(const std::filesystem::path& file, const Options& options, Report& report);

/// Writes a network as a folder of plain CSV files that readCsv() takes; a kind without elements has no file.
/// \throws exchange::FormatError when a file cannot be written
void writeCsv(const host::NetworkModel& model, const std::filesystem::path& folder);

/// Checks every importer shares: references, names, x0 = 0, r0 < r1, islands without source or grounding, zero
/// impedances, duplicate names, trailing blanks and control characters (refused, with the row where there is one).
/// \throws ImportError
void check(host::NetworkModel& model, const Options& options, Report& report);

}  // namespace import
