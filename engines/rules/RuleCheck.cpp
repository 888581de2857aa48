#include "engines/rules/RuleCheck.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>

#include "engines/rules/Arithmetic.h"
#include "engines/rules/VariableKind.h"
#include "exchange/FileNames.h"
#include "exchange/TextFile.h"

namespace engines {

namespace {

class Check {
  public:
    explicit Check(const exchange::RuleBlock& rule) : rule_(rule) {}

    void run() {
        variables();
        modeLines();
        ruleLines();
        for (int number = 1; number <= rule_.nOutPut; ++number)
            if (!set_.contains(exchange::kOutputBase + number))
                fail("output " + std::to_string(number) + " is never set");
    }

  private:
    [[noreturn]] void fail(const std::string& what) const {
        throw exchange::FormatError(exchange::file::kRules, 0, "rule " + std::to_string(rule_.ruleNo) + ": " + what);
    }

    void variable(const exchange::RuleVariable& v) {
        const std::string name = "variable " + std::to_string(v.varNo);
        if (v.varNo < 1 || v.varNo >= Registers::kSize) fail(name + " is out of range");
        if (!modeOf_.emplace(v.varNo, v.modeNo).second) fail(name + " stands twice");
        if (!isVariableKind(v.vType)) fail(name + " is of the unknown kind " + std::to_string(v.vType));
        if (!standsInMode(v.vType, v.modeNo))
            fail(name + " of kind " + std::to_string(v.vType) + " cannot stand in mode " + std::to_string(v.modeNo));
    }

    void variables() {
        for (const exchange::RuleVariable& v : rule_.variables) variable(v);
        std::map<int, int> places;
        for (const exchange::RuleVariable& v : rule_.variables) {
            if (modeClass(v.modeNo) != ModeClass::BranchesBehind || v.vPos < 2) continue;
            if (places.emplace(v.modeNo, v.vPos).first->second != v.vPos)
                fail("mode " + std::to_string(v.modeNo) + " asks for lines and for transformers");
        }
    }

    void operand(int code, int modeNo, const std::string& place) const {
        if (code == 0) return;
        if (code > 0 && code < exchange::kParameterBase) {
            const auto found = modeOf_.find(code);
            if (found == modeOf_.end()) fail(place + " uses " + operandName(code) + ", which is no variable");
            if (found->second > modeNo) fail(place + " uses " + operandName(code) + " of a later mode");
        } else if (code > exchange::kParameterBase && code < exchange::kOutputBase) {
            if (code - exchange::kParameterBase > rule_.nPar)
                fail(place + " uses " + operandName(code) + ", which is no parameter");
        } else if (!isResult(code)) {
            fail(place + " has the unknown operand code " + std::to_string(code));
        } else if (!set_.contains(code)) {
            fail(place + " uses " + operandName(code) + " before it is set");
        }
    }

    static bool isResult(int code) {
        const int number = code % 100;
        return number != 0 && code > exchange::kOutputBase && code < exchange::kTemporaryBase + Registers::kSize;
    }

    void step(int first, int second, int nop, int modeNo, const std::string& place) const {
        if (!isOperation(nop)) fail(place + " has the unknown operation " + std::to_string(nop));
        operand(first, modeNo, place);
        operand(second, modeNo, place);
    }

    void modeLines() {
        std::set<int> selecting;
        auto lines = rule_.modeLines;
        std::ranges::stable_sort(lines, {}, &exchange::RuleModeLine::modeNo);
        for (const exchange::RuleModeLine& line : lines) {
            const std::string place = "mode " + std::to_string(line.modeNo);
            if (modeClass(line.modeNo) == ModeClass::None) fail("there is no " + place);
            step(line.first, line.second, line.nop, line.modeNo, place);
            if (line.y < 1 || line.y >= Registers::kSize)
                fail(place + " puts a result into T" + std::to_string(line.y));
            if (line.consel < 0 || line.consel > 2) fail(place + " selects by " + std::to_string(line.consel));
            if (line.consel != 0 && !selecting.insert(line.modeNo).second) fail(place + " selects twice");
            set_.insert(exchange::kTemporaryBase + line.y);
        }
    }

    void ruleLines() {
        constexpr int kAfterAllModes = 99;
        for (std::size_t i = 0; i < rule_.lines.size(); ++i) {
            const exchange::RuleLine& line = rule_.lines[i];
            const std::string place = "line " + std::to_string(i + 1);
            step(line.first, line.second, line.nop, kAfterAllModes, place);
            if (!isResult(line.y)) fail(place + " puts its result nowhere");
            set_.insert(line.y);
        }
    }

    const exchange::RuleBlock& rule_;
    std::map<int, int> modeOf_;  // by variable number
    std::set<int> set_;          // codes of results set so far
};

}  // namespace

void checkRule(const exchange::RuleBlock& rule) { Check(rule).run(); }

}  // namespace engines
