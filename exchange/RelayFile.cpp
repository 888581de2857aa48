#include "exchange/RelayFile.h"

#include "exchange/TextFile.h"

namespace exchange {

namespace {

constexpr std::string_view kLabelStart = "' ";
constexpr std::string_view kLabelEnd = " ',";
constexpr char kSideWord[] = "\xb2\xe0";  // the character for "side" in GBK

std::string head(const RelayBlock& relay) {
    using std::to_string;
    return to_string(relay.valid) + ",    " + to_string(relay.rno) + ",    ' " + relay.label + " ',   " +
           to_string(relay.iNo) + ",   " + to_string(relay.jNo) + ",    " + to_string(relay.idNo) + ",    " +
           to_string(relay.side) + ",    " + to_string(relay.parts.size()) + ",    0,\r\n";
}

std::string partLine(std::size_t part, const std::array<std::string, 4>& values) {
    std::string line = "      " + std::to_string(part) + ",    ";
    for (const auto& value : values) line += value + ",    ";
    return line + "\r\n";
}

/// Reads a head line into all but the parts. \return number of parts
int parseHead(const Lines& lines, RelayBlock& relay) {
    const auto line = lines.line();
    const auto start = line.find(kLabelStart);
    const auto end = line.rfind(kLabelEnd);
    if (start == std::string_view::npos || end == std::string_view::npos || end < start + kLabelStart.size())
        throw FormatError(lines.file(), lines.lineNo(), "a relay with its label in apostrophes is expected");
    const Fields before(line.substr(0, start), lines.file(), lines.lineNo());
    relay.valid = before.whole(0);
    relay.rno = before.whole(1);
    relay.label = line.substr(start + kLabelStart.size(), end - start - kLabelStart.size());
    const Fields behind(line.substr(end + kLabelEnd.size()), lines.file(), lines.lineNo());
    relay.iNo = behind.whole(0);
    relay.jNo = behind.whole(1);
    relay.idNo = behind.whole(2);
    relay.side = behind.whole(3);
    if (relay.side != 1 && relay.side != 2) behind.fail("the side of a relay is 1 or 2");
    return behind.whole(4);
}

std::array<std::string, 4> parsePart(const Fields& fields, int part) {
    if (fields.whole(0) != part) fields.fail("part " + std::to_string(part) + " of the relay is expected");
    return {fields.numeral(1), fields.numeral(2), fields.numeral(3), fields.numeral(4)};
}

RelayBlock parseBlock(Lines& lines) {
    RelayBlock relay;
    const int parts = parseHead(lines, relay);
    if (!lines.next() || !lines.blank())
        throw FormatError(lines.file(), lines.lineNo(), "a blank line is expected below the head of a relay");
    for (int part = 1; part <= parts; ++part) {
        if (!lines.next()) throw FormatError(lines.file(), lines.lineNo(), "the last relay lacks parts");
        relay.parts.push_back(parsePart(lines.fields(), part));
    }
    return relay;
}

}  // namespace

std::string relayLabel(const std::string& idName, const std::string& nodeName, const std::string& typeCode) {
    return idName + "  " + nodeName + kSideWord + "  " + typeCode;
}

std::string format(const RelayBlock& relay) {
    std::string block = head(relay) + "   \r\n";
    for (std::size_t i = 0; i < relay.parts.size(); ++i) block += partLine(i + 1, relay.parts[i]);
    return block;
}

std::vector<RelayBlock> parseRelays(std::string_view text, const std::string& file) {
    std::vector<RelayBlock> relays;
    for (Lines lines(text, file); lines.next();)
        if (!lines.blank()) relays.push_back(parseBlock(lines));
    return relays;
}

}  // namespace exchange
