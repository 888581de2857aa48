#include <algorithm>

#include "engines/rules/Study.h"
#include "exchange/FileNames.h"

namespace engines {

namespace {

/// The label begins with the element's name; two blanks end it.
std::string elementName(const std::string& label) { return label.substr(0, label.find("  ")); }

std::vector<std::array<double, 4>> settingsOf(const exchange::RelayBlock& block) {
    const std::string where = "relay " + std::to_string(block.rno);
    std::vector<std::array<double, 4>> settings;
    for (const auto& part : block.parts) {
        auto& values = settings.emplace_back();
        std::ranges::transform(part, values.begin(), [&](const std::string& text) {
            return realNumber(text, exchange::file::kRelays, where);
        });
    }
    return settings;
}

void placeAtBranch(const exchange::RelayBlock& block, const Network& network, StudyRelay& relay) {
    relay.kind = RelayKind::Branch;
    relay.place.branch = network.branch(block.idNo, BusNo{block.iNo}, BusNo{block.jNo});
    relay.located = relay.place.branch.value >= 0;
    if (!relay.located) return;
    const Branch& branch = network.branches[static_cast<std::size_t>(relay.place.branch.value)];
    relay.place.end = branch.from == relay.place.bus ? End::I : End::J;
}

void placeAtNode(const exchange::RelayBlock& block, const Network& network, StudyRelay& relay) {
    relay.located = relay.place.bus.value >= 0;
    if (block.idNo == 0) {
        relay.place.source = network.source(elementName(block.label));
        relay.kind = relay.place.source >= 0 ? RelayKind::Generator : RelayKind::Bus;
        return;
    }
    relay.kind = RelayKind::Shunt;
    const auto& shunts = network.shunts;
    const auto found = std::ranges::find(shunts, block.idNo, &exchange::NetShunt::idNo);
    if (found != shunts.end()) relay.shunt = static_cast<int>(found - shunts.begin());
    relay.located = relay.located && relay.shunt >= 0;
}

}  // namespace

StudyRelay placeRelay(const exchange::RelayBlock& block, const Network& network) {
    StudyRelay relay;
    relay.rno = block.rno;
    relay.valid = block.valid == 1;
    relay.idNo = block.idNo;
    relay.name = block.label;
    relay.ownNode = block.side == 1 ? block.iNo : block.jNo;
    relay.place.bus = network.bus(BusNo{relay.ownNode});
    relay.settings = settingsOf(block);
    if (block.iNo == block.jNo)
        placeAtNode(block, network, relay);
    else
        placeAtBranch(block, network, relay);
    return relay;
}

const StudyRelay* findRelay(const Study& study, int rno) {
    const auto found = std::ranges::find(study.relays, rno, &StudyRelay::rno);
    return found == study.relays.end() ? nullptr : &*found;
}

}  // namespace engines
