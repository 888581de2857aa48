// The turn order: in which order the relays of the case are to be set, so that each finds those it depends on done.

#include <cstdio>
#include <exception>
#include <string>

#include "engines/network/SectionGraph.h"
#include "engines/order/RelayDependencies.h"
#include "engines/order/TurnOrder.h"
#include "exchange/ControlFile.h"
#include "exchange/FileNames.h"
#include "exchange/NetworkFiles.h"
#include "exchange/TextFile.h"

namespace {

exchange::TurnOrder orderOfCase() {
    using namespace exchange;
    // The control record selects nothing here; a case whose record is broken must still not start.
    static_cast<void>(parseControl(readAll(file::kControl), file::kControl));
    const auto relays = parseRelays(readAll(file::kRelays), file::kRelays);
    const auto virtualRelays = parseVirtualRelays(readAll(file::kVirtualRelays), file::kVirtualRelays);
    const auto graph = engines::sectionGraph(readNetwork("."), virtualRelays);
    std::vector<int> numbers;
    numbers.reserve(relays.size());
    for (const auto& relay : relays) numbers.push_back(relay.rno);
    return engines::turnOrder(numbers, engines::relayDependencies(relays, graph));
}

}  // namespace

int main() {
    try {
        exchange::replace(exchange::file::kTurnOrder, exchange::format(orderOfCase()));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
