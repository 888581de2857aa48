#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "platform/import/Import.h"

/// Names as the tables can hold them: at most 20 characters, all of them in GBK, no trailing blank, no control
/// character.
namespace import {

constexpr int maxNameLength = 20;
constexpr int maxSchemeLength = 10;  ///< a case keeps its scheme in ten characters

/// Position of the first byte that is not UTF-8, npos when there is none.
std::size_t invalidUtf8(std::string_view text);
/// Number of characters of a UTF-8 text.
int characters(std::string_view text);
/// Why a text is no name, as a Chinese phrase; empty when it is one.
std::string whyNoName(std::string_view name, int maxLength = maxNameLength);

/// Gives names that can be stored and do not repeat. The rule: control characters become blanks, characters outside GBK
/// "?", blanks at the end go, an empty name becomes "-"; then a name that is too long or taken keeps as many of its
/// first characters as leave room for "~" and a number, the smallest that makes it unique.
class NameGiver {
  public:
    NameGiver(const Options& options, Report& report) : options_(options), report_(report) {}
    /// \param kind  kind of element for the report, e.g. "线路"
    /// \throws ImportError when the name must be changed and Options::shortenNames is off
    std::string give(const std::string& name, const char* kind, int maxLength = maxNameLength);

  private:
    std::string unique(const std::string& name, int maxLength);

    const Options& options_;
    Report& report_;
    std::unordered_set<std::string> taken_;
    std::unordered_map<std::string, int> next_;  ///< last number tried, by the characters that are kept
};

}  // namespace import
