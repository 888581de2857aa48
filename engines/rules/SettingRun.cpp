#include "engines/rules/SettingRun.h"

#include <ostream>
#include <set>
#include <string>

#include "engines/rules/BranchCoefficients.h"
#include "engines/rules/Candidates.h"
#include "engines/rules/Interpreter.h"
#include "engines/rules/RuleCheck.h"
#include "engines/rules/Sections.h"
#include "exchange/FileNames.h"
#include "exchange/TextFile.h"

namespace engines {

namespace {

const std::string kGroupsFile = exchange::file::kRuleFaults;

std::string ruleText(int rno, int pno, int ruleNo) {
    return "relay " + std::to_string(rno) + ", part " + std::to_string(pno) + ", rule " + std::to_string(ruleNo);
}

class Run {
  public:
    Run(const Study& study, FaultCalculation& calculation)
        : study_(study),
          sections_(study),
          coefficients_(study, sections_, calculation),
          finder_(study, sections_, calculation, coefficients_),
          interpreter_(finder_) {}

    RunResults evaluate() {
        for (const exchange::RelayRules& group : study_.groups)
            for (const exchange::RuleSection& section : group.sections) evaluate(group, section);
        results_.coefficients = coefficients_.lines();
        results_.notes.insert(results_.notes.end(), study_.notes.begin(), study_.notes.end());
        return std::move(results_);
    }

  private:
    const exchange::RuleBlock& ruleOf(const exchange::RuleSection& section, const std::string& where) {
        const auto found = study_.rules.find(section.ruleNo);
        if (found == study_.rules.end()) throw exchange::FormatError(kGroupsFile, 0, where + ": no such rule");
        if (checked_.insert(section.ruleNo).second) checkRule(found->second);
        return found->second;
    }

    static std::span<const double> parametersOf(const exchange::RuleBlock& rule, int vector, const std::string& where) {
        if (vector == 0) return {};
        const auto& vectors = rule.parameterVectors;
        if (vector < 0 || vector > static_cast<int>(vectors.size()))
            throw exchange::FormatError(kGroupsFile, 0, where + ": no parameter vector " + std::to_string(vector));
        return vectors[static_cast<std::size_t>(vector - 1)];
    }

    RuleInHand inHand(const StudyRelay& relay, const exchange::RuleSection& section, const std::string& where) {
        RuleInHand rule{relay, {0}, {}};
        if (!section.modes.empty()) rule.operatingModes = section.modes;
        std::map<int, std::vector<exchange::FaultRow>> rows;
        for (const exchange::RuleFault& fault : section.faults) rows[fault.rMode].push_back(fault.row);
        for (const auto& [mode, faults] : rows)
            rule.cases.emplace(mode, faultCases(study_.network, faults, kGroupsFile, where, results_.notes));
        return rule;
    }

    void evaluate(const exchange::RelayRules& group, const exchange::RuleSection& section) {
        ++nCal_;
        const std::string where = ruleText(group.rno, group.pno, section.ruleNo);
        const exchange::RuleBlock& rule = ruleOf(section, where);
        const auto parameters = parametersOf(rule, section.parameterVector, where);
        const StudyRelay* relay = findRelay(study_, group.rno);
        RuleResult result;
        if (relay == nullptr || !relay->located)
            result.reason = relay ? "the network does not have its element" : "RELAY.R1 does not have the relay";
        else
            result = interpreter_.evaluate(rule, parameters, inHand(*relay, section, where));
        record(group, section, where, result);
    }

    void record(const exchange::RelayRules& group, const exchange::RuleSection& section, const std::string& where,
                RuleResult& result) {
        const bool none = result.outputs.empty();
        if (none) results_.notes.push_back(where + ": no result: " + result.reason);
        results_.settings.push_back(
            {nCal_, group.rno, group.pno, none ? 0 : section.ruleNo, std::move(result.outputs)});
        for (const Choice& c : result.choices)
            results_.choices.push_back(
                {nCal_, group.rno, group.pno, section.ruleNo, c.modeNo, c.nSela, c.nSelb, c.nSelc, c.nSys});
        results_.variables.push_back({nCal_, group.rno, group.pno, section.ruleNo, std::move(result.inputs)});
    }

    const Study& study_;
    Sections sections_;
    BranchCoefficients coefficients_;
    CandidateFinder finder_;
    Interpreter interpreter_;
    std::set<int> checked_;
    RunResults results_;
    int nCal_ = 0;
};

template <typename Record>
std::string text(const std::vector<Record>& records) {
    std::string all;
    for (const Record& record : records) all += exchange::format(record);
    return all;
}

}  // namespace

RunResults evaluateRules(const Study& study, FaultCalculation& calculation) {
    return Run(study, calculation).evaluate();
}

void writeResults(const std::filesystem::path& directory, const RunResults& results) {
    exchange::replace(directory / exchange::file::kSettingResults, text(results.settings));
    exchange::replace(directory / exchange::file::kFaultResults, text(results.choices));
    exchange::replace(directory / exchange::file::kCoefficients, text(results.coefficients));
    exchange::replace(directory / exchange::file::kVariableResults, text(results.variables));
}

void runSettings(const std::filesystem::path& directory, std::ostream& err) {
    RunResults results;
    try {
        const Study study = readStudy(directory);
        ModeStudies calculation(study.network, study.modes);
        results = evaluateRules(study, calculation);
    } catch (...) {
        writeResults(directory, {});
        throw;
    }
    writeResults(directory, results);
    for (const std::string& note : results.notes) err << note << '\n';
}

}  // namespace engines
