#pragma once

#include <string>
#include <vector>

#include "platform/import/Import.h"

namespace import {

/// Collects findings of the same sort, which the report tells in one line with their count and the first names.
class Tally {
  public:
    void note(Finding::Kind kind, const std::string& subject, const std::string& text, const std::string& name);
    /// Adds one finding per sort to the report, in the order in which they were first noted.
    void tell(Report& report) const;

  private:
    struct Sort {
        Finding::Kind kind;
        std::string subject, text, names;
        int count = 0;
    };
    std::vector<Sort> sorts_;
};

}  // namespace import
