#include "exchange/FileNames.h"
#include "exchange/RelayFile.h"
#include "platform/host/Text.h"
#include "programs/engine/CRelayFaultCal.h"
#include "programs/engine/RunInputs.h"
#include "programs/engine/WorkFiles.h"
#include "programs/frame/Messages.h"

namespace {

constexpr std::size_t kSettingsPerPart = 4;

std::string blockOf(exchange::RelayBlock block, int nPart, const SettingsOfRelay& settings) {
    block.parts.resize(nPart);
    for (int part = 0; part < nPart; ++part)
        for (std::size_t k = 0; k < kSettingsPerPart; ++k)
            block.parts[part][k] = k < settings.size() && part < 5 ? settings[k][part] : "0";
    return exchange::format(block);
}

int partsOf(const RuleData& rules, int rTypeNo) {
    const RelayTypeInfo* type = rules.type(rTypeNo);
    return type ? type->NPart : 0;
}

}  // namespace

bool CRelayFaultCal::WriteRelayFile(int relayType, int rno) {
    if (!work::write(workDir_, exchange::file::kRelays, {})) return false;
    const InstalledRelay* first = inputs().relay(rno);
    if (!first || !first->block) {
        ReportError(Text::tr("要整定的保护不在当前方案或潮流作业对应的网络中,请检查数据"), 0);
        return false;
    }
    const SettingsByRelay& working = workingSettings();
    std::string text = blockOf(*first->block, partsOf(rules(), rTypeNo_), working.value(rno));
    const int nPart = partsOf(rules(), relayType);
    bool others = false;
    for (const InstalledRelay& relay : inputs().relaysOfType(relayType)) {
        if (relay.place == first->place) continue;
        const bool fromCase = firstWrite_ != 1 && working.contains(relay.rno);
        if (relay.block)
            text += blockOf(*relay.block, nPart,
                            fromCase ? *working.constFind(relay.rno) : inputs().storedSettings(relayType, relay.rno));
        others = true;
    }
    if (others) firstWrite_ = 0;
    return work::write(workDir_, exchange::file::kRelays, text);
}
