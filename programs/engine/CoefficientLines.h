#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// Lines of RELAY.RP3 gathered over engine runs, each of which writes the file anew with its own. Of a main branch and
/// a relay the last line counts; it takes the place of the one before.
class CoefficientLines {
  public:
    void take(std::string_view file);
    void clear();
    [[nodiscard]] bool isEmpty() const { return lines_.empty(); }
    /// All of them, as one file.
    [[nodiscard]] std::string file() const;

  private:
    std::vector<std::string> lines_;
    std::unordered_map<std::string, std::size_t> at_;  ///< by `FzNo` and `NLRNo` as they are written
};
