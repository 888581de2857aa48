#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "exchange/FaultRow.h"

namespace exchange {

/// One section of RELAY.R2: a main branch of the branch-coefficient calculation with its modes and fault rows.
struct MainBranch {
    int fzNo = 0;
    int iNo = 0;
    int jNo = 0;
    int idNo = 0;
    int side = 1;
    std::vector<int> modes;  ///< `SysNo`
    std::vector<FaultRow> faults;
};

std::string format(const MainBranch& branch);
/// \throws FormatError
std::vector<MainBranch> parseMainBranches(std::string_view text, const std::string& file);

}  // namespace exchange
