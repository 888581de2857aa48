#include "exchange/VirtualRelayFile.h"

#include "exchange/TextFile.h"

namespace exchange {

std::string format(const VirtualRelays& relays) {
    std::string text = std::to_string(relays.count) + ",  0,  0,\r\n";
    for (const auto& relay : relays.relays) {
        text += "   ";
        for (const int field : {relay.iNo, relay.jNo, relay.idNo, relay.side}) text += std::to_string(field) + ",   ";
        text += "\r\n";
    }
    return text;
}

VirtualRelays parseVirtualRelays(std::string_view text, const std::string& file) {
    Lines lines(text, file);
    if (!lines.next()) throw FormatError(file, 0, "is empty");
    VirtualRelays relays{lines.fields().whole(0), {}};
    while (lines.next()) {
        if (lines.blank()) continue;
        const Fields fields = lines.fields();
        relays.relays.push_back({fields.whole(0), fields.whole(1), fields.whole(2), fields.whole(3)});
        if (const int side = relays.relays.back().side; side != 1 && side != 2)
            fields.fail("the side of a virtual relay is 1 or 2");
    }
    if (static_cast<int>(relays.relays.size()) > relays.count)
        throw FormatError(file, lines.lineNo(), "more virtual relays than the head counts");
    return relays;
}

}  // namespace exchange
