#include "exchange/FaultRow.h"

namespace exchange {

namespace {
constexpr char kComma[] = ",   ";
}

std::string formatFault(const std::string& indent, int lead, const FaultRow& row) {
    std::string line = indent;
    for (const int field : {lead, row.mType, row.idNo, row.iNo, row.jNo, row.kLoc, row.fType})
        line += std::to_string(field) + kComma;
    return line + row.r + kComma + row.x + kComma + "\r\n";
}

FaultRow parseFault(const Fields& fields) {
    FaultRow row{fields.whole(1), fields.whole(2), fields.whole(3),   fields.whole(4),
                 fields.whole(5), fields.whole(6), fields.numeral(7), fields.numeral(8)};
    const bool fault = row.mType >= 1 && row.mType <= 19;
    const bool outage = row.mType >= 21 && row.mType <= 40;
    if (!fault && !outage)
        fields.fail("the number of a fault lies between 1 and 19, that of an outage between 21 and 40");
    if (row.kLoc < 0 || row.kLoc > 100) fields.fail("the place of a fault lies between 0 and 100 percent");
    if (row.fType < 1 || row.fType > 7) fields.fail("the kind of a fault lies between 1 and 7");
    return row;
}

bool isSectionEnd(const Fields& fields) {
    if (fields.size() != 9) return false;
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (fields.text(i) != "0") return false;
    return true;
}

std::string formatModes(const std::string& indent, const std::vector<int>& modes) {
    std::string line = indent;
    for (const int mode : modes) line += std::to_string(mode) + kComma;
    return line + "\r\n";
}

std::vector<int> parseModeNumbers(const Fields& fields, int count) {
    if (static_cast<int>(fields.size()) != count)
        fields.fail(std::to_string(count) + " operating modes are expected, " + std::to_string(fields.size()) +
                    " stand here");
    std::vector<int> modes;
    for (std::size_t i = 0; i < fields.size(); ++i) modes.push_back(fields.notNegative(i));
    return modes;
}

}  // namespace exchange
