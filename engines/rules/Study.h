#pragma once

#include <array>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "engines/rules/FaultCases.h"
#include "exchange/BranchGraph.h"
#include "exchange/ControlFile.h"
#include "exchange/MainBranchFile.h"
#include "exchange/ModeFile.h"
#include "exchange/RelayFile.h"
#include "exchange/ResultFiles.h"
#include "exchange/RuleFaultFile.h"
#include "exchange/RuleFile.h"

/// The whole input of a setting calculation, read and placed on the network.
namespace engines {

/// What a relay protects.
enum class RelayKind { Branch, Generator, Shunt, Bus };

struct StudyRelay {
    int rno = 0;
    bool valid = true;
    RelayKind kind = RelayKind::Bus;
    bool located = false;  ///< the network has its element
    RelayPlace place;
    int idNo = 0;
    int ownNode = 0;   ///< bus number
    int shunt = -1;    ///< place in Network::shunts
    std::string name;  ///< GBK; for messages
    /// Settings by part; four each.
    std::vector<std::array<double, 4>> settings;
};

/// A main branch of the branch-coefficient calculation with its faults placed on the network.
struct StudyMainBranch {
    exchange::MainBranch record;
    FaultCases cases;
    /// Bus number at which the branch starts, seen from its section.
    [[nodiscard]] int startNode() const { return record.side == 1 ? record.iNo : record.jNo; }
};

struct Study {
    exchange::Control control;
    Network network;
    exchange::BranchGraph graph;
    std::vector<StudyRelay> relays;  ///< in the order of the file
    std::vector<StudyMainBranch> mainBranches;
    std::map<int, std::vector<ModeChange>> modes;  ///< by `SysNo`
    std::vector<exchange::RelayRules> groups;
    std::map<int, exchange::RuleBlock> rules;  ///< by number
    std::vector<exchange::CoefficientResult> earlier;
    Notes notes;
};

/// Reads every input file of a directory. \throws exchange::FormatError
Study readStudy(const std::filesystem::path& directory);

/// The relay of this number; null when the study has none.
const StudyRelay* findRelay(const Study& study, int rno);

/// \throws exchange::FormatError for a setting that is no number
StudyRelay placeRelay(const exchange::RelayBlock& block, const Network& network);

/// An element of an operating mode on the network; a note and nothing when the network does not have it.
void addModeChange(const exchange::ModeElement& element, Study& study);

}  // namespace engines
