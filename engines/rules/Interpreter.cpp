#include "engines/rules/Interpreter.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>

#include "engines/rules/VariableKind.h"

namespace engines {

using exchange::RuleBlock;
using exchange::RuleModeLine;
using exchange::RuleVariable;

namespace {

/// The largest value that a setting's column can hold.
constexpr double kLargestOutput = 9999999.999999;

/// One mode of a rule with its variables and lines, each in the order of the file.
struct Mode {
    int number = 0;
    std::vector<RuleVariable> variables;
    std::vector<RuleModeLine> lines;

    [[nodiscard]] int selects() const {
        const auto line = std::ranges::find_if(lines, [](const RuleModeLine& l) { return l.consel != 0; });
        return line == lines.end() ? 0 : line->consel;
    }
};

std::vector<Mode> modesOf(const RuleBlock& rule) {
    std::set<int> numbers;
    for (const RuleVariable& v : rule.variables) numbers.insert(v.modeNo);
    for (const RuleModeLine& l : rule.modeLines) numbers.insert(l.modeNo);
    std::vector<Mode> modes;
    for (const int number : numbers) {
        Mode& mode = modes.emplace_back();
        mode.number = number;
        std::ranges::copy_if(rule.variables, std::back_inserter(mode.variables),
                             [=](auto& v) { return v.modeNo == number; });
        std::ranges::copy_if(rule.modeLines, std::back_inserter(mode.lines),
                             [=](auto& l) { return l.modeNo == number; });
    }
    return modes;
}

template <typename Line>
Step stepOf(const Line& line) {
    return {line.first, line.second, line.a, line.b, line.nop};
}

void setInputs(const Mode& mode, const Candidate& candidate, Registers& registers) {
    for (std::size_t i = 0; i < mode.variables.size(); ++i)
        registers.setInput(mode.variables[i].varNo, candidate.values[i]);
}

/// Runs the mode's lines at a candidate. \return the selecting line's result, 0 without one
Outcome runLines(const Mode& mode, Registers& registers) {
    Outcome selected{0, {}};
    for (const RuleModeLine& line : mode.lines) {
        Outcome outcome = evaluate(stepOf(line), registers);
        if (!outcome) return outcome;
        registers.setTemporary(line.y, outcome.value);
        if (line.consel != 0) selected = outcome;
    }
    return selected;
}

/// Chooses among candidates: keeps the best so far, and why others were refused.
class Selection {
  public:
    Selection(const Mode& mode, const Registers& before) : mode_(mode), before_(before) {}

    void offer(const Candidate& candidate) {
        if (!candidate.lack.empty()) return refuse(candidate.lack);
        if (candidate.unseen && mode_.selects() != 0) return refuse("a fault that the relay does not see");
        Registers registers = before_;
        setInputs(mode_, candidate, registers);
        const Outcome outcome = runLines(mode_, registers);
        if (!outcome) return refuse(outcome.fault);
        if (chosen_ && !isBetter(outcome.value)) return;
        chosen_ = candidate.choice;
        best_ = outcome.value;
        after_ = registers;
    }

    [[nodiscard]] const std::optional<Choice>& chosen() const { return chosen_; }
    [[nodiscard]] const Registers& registers() const { return after_; }
    [[nodiscard]] std::string reason() const {
        const std::string mode = "mode " + std::to_string(mode_.number);
        std::string whys;
        for (const std::string& why : refusals_) whys += (whys.empty() ? "" : ", ") + why;
        return refusals_.empty() ? mode + " has no candidate" : mode + " has no candidate (" + whys + ")";
    }

  private:
    void refuse(const std::string& why) {
        if (std::ranges::find(refusals_, why) == refusals_.end()) refusals_.push_back(why);
    }
    [[nodiscard]] bool isBetter(double value) const {
        // The last digits are rounding: candidates that differ by no more are equal, and the first of them stands.
        constexpr double kRounding = 1e-11;
        const double margin = kRounding * std::abs(best_);
        return (mode_.selects() == 1 && value > best_ + margin) || (mode_.selects() == 2 && value < best_ - margin);
    }

    const Mode& mode_;
    const Registers& before_;
    Registers after_;
    std::optional<Choice> chosen_;
    double best_ = 0;
    std::vector<std::string> refusals_;  // different ones
};

/// Own data needs no candidate: each variable stands for itself, and a missing one matters only where it is used.
bool standsForItself(const Mode& mode) { return modeClass(mode.number) == ModeClass::OwnData && mode.lines.empty(); }

/// \return why the mode has no candidate; empty when it has one
std::string choose(const Mode& mode, const std::vector<Candidate>& candidates, Registers& registers,
                   RuleResult& result) {
    if (standsForItself(mode)) {
        if (!candidates.empty()) setInputs(mode, candidates.front(), registers);
        return {};
    }
    Selection selection(mode, registers);
    for (const Candidate& candidate : candidates) selection.offer(candidate);
    if (!selection.chosen()) return selection.reason();
    registers = selection.registers();
    if (mode.number > 0) result.choices.push_back(*selection.chosen());
    return {};
}

std::string runRule(const RuleBlock& rule, Registers& registers) {
    for (std::size_t i = 0; i < rule.lines.size(); ++i) {
        const Outcome outcome = evaluate(stepOf(rule.lines[i]), registers);
        if (!outcome) return "line " + std::to_string(i + 1) + ": " + outcome.fault;
        registers.set(rule.lines[i].y, outcome.value);
    }
    return {};
}

void takeInputs(const RuleBlock& rule, const Registers& registers, RuleResult& result) {
    for (const RuleVariable& v : rule.variables) {
        const auto count = static_cast<std::size_t>(v.varNo);
        if (result.inputs.size() < count) result.inputs.resize(count, 0.0);
        const double value = registers.input(v.varNo);
        result.inputs[count - 1] = std::isfinite(value) ? value : 0.0;
    }
}

void takeOutputs(const RuleBlock& rule, const Registers& registers, RuleResult& result) {
    for (int number = 1; number <= rule.nOutPut; ++number) {
        result.outputs.push_back(registers.output(number) + 0.0);  // no negative zero
        if (std::abs(result.outputs.back()) <= kLargestOutput) continue;
        result.reason = "output " + std::to_string(number) + " is too large for a setting";
        result.outputs.clear();
        return;
    }
}

}  // namespace

RuleResult Interpreter::evaluate(const RuleBlock& rule, std::span<const double> parameters, const RuleInHand& inHand) {
    RuleResult result;
    Registers registers(parameters);
    std::string lacks;
    for (const Mode& mode : modesOf(rule))
        if (const auto why = choose(mode, finder_.find(mode.number, mode.variables, inHand), registers, result);
            !why.empty())
            lacks += "; " + why;
    takeInputs(rule, registers, result);
    result.reason = runRule(rule, registers);
    if (result.reason.empty()) takeOutputs(rule, registers, result);
    if (result.outputs.empty()) result.reason += lacks;
    return result;
}

}  // namespace engines
