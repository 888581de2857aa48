#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/Context.h"
#include "programs/workflow/CaseStore.h"

namespace cli {

/// What the words behind "case" say.
struct CaseWish {
    std::string project, caseName;
    std::vector<std::string> caseNames;
    std::string name, note, scheme, loadFlow;
    int type = 0;
    std::vector<int> relays, parts;
    std::vector<int> rulesOn, rulesOff;
    std::vector<double> levels;
    std::vector<std::string> maximum, minimum, sensitivity, outages;
    bool withSensitivity = false, keepBackup = false, force = false, csv = false;
};

/// Opens the project when no other program calculates in it, and clears up after one that was killed.
/// \return false with the exit code set
bool openAlone(Context& context, const CaseWish& wish, bool realTime = false);

/// Opens the project and selects a case by its number or name. \return false with the exit code set
bool openCase(Context& context, const CaseWish& wish, CaseStore& cases, bool realTime = false);

/// Selects a case of the open project. \return false with the exit code set
bool selectCase(Context& context, const std::string& caseName, CaseStore& cases);

/// Brings the working tables to the selected case and computes its sensitivities. \return false with the exit code set
bool loadCase(Context& context, CaseStore& cases);

inline QVector<int> numbersOf(const std::vector<int>& numbers) { return {numbers.begin(), numbers.end()}; }

// One function per verb.
void newCase(Context& context, const CaseWish& wish);
void listCases(Context& context, const CaseWish& wish);
void showCase(Context& context, const CaseWish& wish);
void setCaseRules(Context& context, const CaseWish& wish);
void deleteCase(Context& context, const CaseWish& wish);
void runCase(Context& context, const CaseWish& wish);
void runSensitivity(Context& context, const CaseWish& wish);
void showResults(Context& context, const CaseWish& wish);
void saveSettings(Context& context, const CaseWish& wish);

}  // namespace cli
