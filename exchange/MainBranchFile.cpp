#include "exchange/MainBranchFile.h"

namespace exchange {

namespace {

MainBranch parseSection(Lines& lines) {
    const Fields head = lines.fields();
    MainBranch branch{
        head.whole(0), head.notNegative(1), head.notNegative(2), head.notNegative(3), head.notNegative(4), {}, {}};
    if (!lines.next()) head.fail("the line of operating modes is missing");
    branch.modes = parseModeNumbers(lines.fields(), head.whole(5));
    while (lines.next()) {
        const Fields fields = lines.fields();
        if (isSectionEnd(fields)) return branch;
        if (fields.whole(0) != branch.fzNo) fields.fail("a fault of another main branch");
        branch.faults.push_back(parseFault(fields));
    }
    head.fail("the end line of the main branch is missing");
}

}  // namespace

std::string format(const MainBranch& branch) {
    std::string section;
    for (const int field :
         {branch.fzNo, branch.iNo, branch.jNo, branch.idNo, branch.side, static_cast<int>(branch.modes.size())})
        section += std::to_string(field) + ",   ";
    section += "\r\n" + formatModes("   ", branch.modes);
    for (const auto& fault : branch.faults) section += formatFault("      ", branch.fzNo, fault);
    return section + kSectionEnd;
}

std::vector<MainBranch> parseMainBranches(std::string_view text, const std::string& file) {
    std::vector<MainBranch> branches;
    for (Lines lines(text, file); lines.next();)
        if (!lines.blank()) branches.push_back(parseSection(lines));
    return branches;
}

}  // namespace exchange
