#include "exchange/ModeFile.h"

#include "exchange/TextFile.h"

namespace exchange {

std::string format(const ModeElement& element) {
    std::string line;
    for (const int field : {element.sysNo, element.idNo, element.firstNode, element.secondNode, element.m10})
        line += std::to_string(field) + ",  ";
    return line + element.r + ",  " + element.x + ",  \r\n";
}

std::vector<ModeElement> parseModes(std::string_view text, const std::string& file) {
    std::vector<ModeElement> elements;
    for (Lines lines(text, file); lines.next();) {
        if (lines.blank()) continue;
        const Fields fields = lines.fields();
        elements.push_back({fields.whole(0), fields.whole(1), fields.whole(2), fields.whole(3), fields.whole(4),
                            fields.numeral(5), fields.numeral(6)});
        if (elements.back().m10 != 0 && elements.back().m10 != 1) fields.fail("the sequence is 1 or 0");
    }
    return elements;
}

}  // namespace exchange
