#include "engines/rules/SettingRun.h"

#include <algorithm>
#include <optional>
#include <ostream>
#include <set>
#include <string>

#include "engines/network/Threads.h"
#include "engines/rules/BranchCoefficients.h"
#include "engines/rules/Candidates.h"
#include "engines/rules/Interpreter.h"
#include "engines/rules/RuleCheck.h"
#include "engines/rules/Sections.h"
#include "engines/rules/VariableKind.h"
#include "exchange/FileNames.h"
#include "exchange/TextFile.h"

namespace engines {

namespace {

const std::string kGroupsFile = exchange::file::kRuleFaults;

/// From so many buses on, threads take less time than they cost.
constexpr std::size_t kWorthThreads = 500;

std::string ruleText(int rno, int pno, int ruleNo) {
    return "relay " + std::to_string(rno) + ", part " + std::to_string(pno) + ", rule " + std::to_string(ruleNo);
}

/// One rule of one relay part: what it is evaluated with and what comes of it.
struct Job {
    const exchange::RelayRules& group;
    const exchange::RuleSection& section;
    const exchange::RuleBlock& rule;
    std::span<const double> parameters;
    std::optional<RuleInHand> inHand;  ///< nothing when the relay has no place
    RuleResult result;
    Notes notes;
    [[nodiscard]] std::string name() const { return ruleText(group.rno, group.pno, section.ruleNo); }
};

bool asksForTheNetwork(const Job& job) {
    const auto isSource = [](const exchange::RuleVariable& v) { return isSourceImpedance(v.vType); };
    return job.inHand && (!job.section.faults.empty() || std::ranges::any_of(job.rule.variables, isSource));
}

class Run {
  public:
    Run(const Study& study, FaultCalculation& calculation)
        : study_(study),
          sections_(study),
          calculation_(calculation),
          coefficients_(study, sections_, calculation),
          finder_(study, sections_, calculation, coefficients_),
          interpreter_(finder_) {}

    RunResults evaluate(int threads) {
        for (const exchange::RelayRules& group : study_.groups) take(group);
        prepareModes(threads);
        coefficients_.computeAll(threads);
        inParallel(
            static_cast<int>(groups_.size()),
            [&](int i) {
                for (Job& job : groups_[static_cast<std::size_t>(i)])
                    if (job.inHand) job.result = interpreter_.evaluate(job.rule, job.parameters, *job.inHand);
            },
            threads);
        for (auto& jobs : groups_)
            for (Job& job : jobs) record(job);
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

    void placeFaults(const StudyRelay& relay, Job& job) {
        job.inHand.emplace(RuleInHand{relay, {0}, {}});
        if (!job.section.modes.empty()) job.inHand->operatingModes = job.section.modes;
        std::map<int, std::vector<exchange::FaultRow>> rows;
        for (const exchange::RuleFault& fault : job.section.faults) rows[fault.rMode].push_back(fault.row);
        for (const auto& [mode, faults] : rows)
            job.inHand->cases.emplace(mode, faultCases(study_.network, faults, kGroupsFile, job.name(), job.notes));
    }

    void take(const exchange::RelayRules& group) {
        const StudyRelay* relay = findRelay(study_, group.rno);
        auto& jobs = groups_.emplace_back();
        for (const exchange::RuleSection& section : group.sections) {
            const std::string where = ruleText(group.rno, group.pno, section.ruleNo);
            const exchange::RuleBlock& rule = ruleOf(section, where);
            Job& job = jobs.emplace_back(
                Job{group, section, rule, parametersOf(rule, section.parameterVector, where), {}, {}, {}});
            if (relay == nullptr || !relay->located)
                job.result.reason =
                    relay ? "the network does not have its element" : "RELAY.R1 does not have the relay";
            else
                placeFaults(*relay, job);
        }
    }

    void prepareModes(int threads) {
        std::set<int> modes;
        for (const auto& jobs : groups_)
            for (const Job& job : jobs)
                if (asksForTheNetwork(job))
                    modes.insert(job.inHand->operatingModes.begin(), job.inHand->operatingModes.end());
        calculation_.prepare(std::vector(modes.begin(), modes.end()), threads);
    }

    void record(Job& job) {
        ++nCal_;
        const auto& [group, section, rule, parameters, inHand, result, notes] = job;
        const bool none = result.outputs.empty();
        results_.notes.insert(results_.notes.end(), notes.begin(), notes.end());
        if (none) results_.notes.push_back(job.name() + ": no result: " + result.reason);
        results_.settings.push_back({nCal_, group.rno, group.pno, none ? 0 : section.ruleNo, result.outputs});
        for (const Choice& c : result.choices)
            results_.choices.push_back(
                {nCal_, group.rno, group.pno, section.ruleNo, c.modeNo, c.nSela, c.nSelb, c.nSelc, c.nSys});
        results_.variables.push_back({nCal_, group.rno, group.pno, section.ruleNo, result.inputs});
    }

    const Study& study_;
    Sections sections_;
    FaultCalculation& calculation_;
    BranchCoefficients coefficients_;
    CandidateFinder finder_;
    Interpreter interpreter_;
    std::set<int> checked_;
    std::vector<std::vector<Job>> groups_;
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

RunResults evaluateRules(const Study& study, FaultCalculation& calculation, int threads) {
    return Run(study, calculation).evaluate(threads);
}

void writeResults(const std::filesystem::path& directory, const RunResults& results) {
    exchange::replace(directory / exchange::file::kSettingResults, text(results.settings));
    exchange::replace(directory / exchange::file::kFaultResults, text(results.choices));
    exchange::replace(directory / exchange::file::kCoefficients, text(results.coefficients));
    exchange::replace(directory / exchange::file::kVariableResults, text(results.variables));
}

void runSettings(const std::filesystem::path& directory, std::ostream& err, const std::function<void()>& written) {
    RunResults results;
    std::optional<Study> study;
    std::optional<ModeStudies> calculation;
    try {
        study.emplace(readStudy(directory));
        calculation.emplace(study->network, study->modes);
        const bool large = study->network.buses.size() >= kWorthThreads;
        results = evaluateRules(*study, *calculation, large ? 0 : 1);
    } catch (...) {
        writeResults(directory, {});
        throw;
    }
    writeResults(directory, results);
    for (const std::string& note : results.notes) err << note << '\n';
    written();
}

}  // namespace engines
