#include <cmath>
#include <vector>

#include "engines/rules/RuleCheck.h"
#include "exchange/ControlFile.h"
#include "exchange/MainBranchFile.h"
#include "exchange/ModeFile.h"
#include "exchange/RealTimeNameFile.h"
#include "exchange/RelayFile.h"
#include "exchange/ResultFiles.h"
#include "exchange/RuleFaultFile.h"
#include "exchange/RuleFile.h"
#include "exchange/VirtualRelayFile.h"
#include "tests/fuzz/Targets.h"

namespace fuzz {

namespace {

using exchange::format;

template <class Record>
std::string format(const std::vector<Record>& records) {
    std::string text;
    for (const auto& record : records) text += exchange::format(record);
    return text;
}

/// What has been read is written, read again and written the same.
template <class Read>
void wayBack(std::string_view bytes, Read read) {
    const std::string once = format(read(bytes));
    std::string twice;
    try {
        twice = format(read(once));
    } catch (const std::exception& error) {
        throw Broken("what was written is refused: " + std::string(error.what()) + "\n" + once);
    }
    if (once != twice) throw Broken("another file on the way back:\n" + once + "then\n" + twice);
}

template <class Read>
void wayBackOrRefusal(std::string_view bytes, Read read) {
    try {
        wayBack(bytes, [&](std::string_view text) { return read(text, "F"); });
    } catch (const exchange::FormatError& refusal) {
        const std::string_view message = refusal.what();
        if (!message.starts_with("F:")) throw Broken("a refusal without its file: " + std::string(message));
    }
}

void results(std::string_view bytes) {
    wayBack(bytes, exchange::parseSettingResults);
    wayBack(bytes, exchange::parseFaultResults);
    wayBack(bytes, exchange::parseCoefficients);
    wayBack(bytes, exchange::parsePhaseResults);
    wayBack(bytes, exchange::parseVariableResults);
    for (const auto& result : exchange::parseVariableResults(bytes))
        for (const double value : result.values)
            if (!std::isfinite(value)) throw Broken("a result that is not finite");
    if (exchange::unreadableLines(bytes, 1, 4) < 0) throw Broken("a count below 0");
    const auto kept = exchange::keptCoefficientLines(bytes);
    if (exchange::keptCoefficientLines(kept) != kept) throw Broken("kept lines are not kept");
}

}  // namespace

void relayFiles(std::string_view bytes) {
    if (bytes.empty()) return;
    const auto text = bytes.substr(1);
    switch (bytes[0]) {
        case '0':
            return wayBackOrRefusal(text, exchange::parseControl);
        case '1':
            return wayBackOrRefusal(text, exchange::parseRelays);
        case '2':
            return wayBackOrRefusal(text, exchange::parseMainBranches);
        case '3':
            return wayBackOrRefusal(text, exchange::parseModes);
        case '4':
            return wayBackOrRefusal(text, exchange::parseVirtualRelays);
        case '6':
            return wayBackOrRefusal(text, exchange::parseRelayRules);
        case '8':
            return wayBackOrRefusal(text, exchange::parseTurnOrder);
        case 'N':
            return wayBackOrRefusal(text, exchange::parseRealTimeName);
        default:
            return results(text);
    }
}

void ruleFile(std::string_view bytes) {
    wayBackOrRefusal(bytes, exchange::parseRules);
    try {
        for (const auto& rule : exchange::parseRules(bytes, "F")) engines::checkRule(rule);
    } catch (const exchange::FormatError&) {
    }
}

}  // namespace fuzz
