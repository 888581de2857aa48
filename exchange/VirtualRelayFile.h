#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace exchange {

struct VirtualRelay {
    int iNo = 0;
    int jNo = 0;
    int idNo = 0;
    int side = 1;
    /// The bus at which it stands.
    [[nodiscard]] int node() const { return side == 1 ? iNo : jNo; }
};

/// RELAY.R4. The count of the head may exceed the lines: a virtual relay outside the network has none.
struct VirtualRelays {
    int count = 0;
    std::vector<VirtualRelay> relays;
};

std::string format(const VirtualRelays& relays);
/// \throws FormatError
VirtualRelays parseVirtualRelays(std::string_view text, const std::string& file);

}  // namespace exchange
