#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "exchange/ControlFile.h"
#include "exchange/FileNames.h"
#include "exchange/MainBranchFile.h"
#include "exchange/ModeFile.h"
#include "exchange/NetworkFiles.h"
#include "exchange/RelayFile.h"
#include "exchange/RuleFaultFile.h"
#include "exchange/RuleFile.h"
#include "exchange/TextFile.h"
#include "exchange/VirtualRelayFile.h"
#include "tests/engines/num_matpower.h"

/// The input of a calculation on a public network: ten relays at lines far from one another, six rules each with ten
/// outages around the relay and four operating modes; faults at both ends and in the middle of the line, branch
/// coefficients for all branches behind the far end.
namespace bench {

inline constexpr int kRelays = 10, kOutages = 10, kModes = 4;

class LargeStudy {
  public:
    /// \param text  of a MATPOWER case
    explicit LargeStudy(const std::string& text) : data_(num::matpowerNetwork(text)) {
        for (const auto& l : data_.lines) add({l.idNo, l.iNo, l.jNo});
        for (const auto& t : data_.transformers) add({t.idNo, t.iNo, t.jNo});
        chooseRelays();
    }
    [[nodiscard]] const exchange::NetworkData& network() const { return data_; }

    void writeTo(const std::filesystem::path& directory) const {
        namespace file = exchange::file;
        exchange::writeNetwork(directory, data_);
        const std::pair<const char*, std::string> files[] = {
            {file::kControl, exchange::format(exchange::Control{1, 0, 0, 0})},
            {file::kRelays, relays()},
            {file::kMainBranches, mainBranches()},
            {file::kModes, modes()},
            {file::kVirtualRelays, exchange::format(exchange::VirtualRelays{})},
            {file::kRuleFaults, rules()},
            {file::kRules, ruleFile()}};
        for (const auto& [name, bytes] : files) exchange::replace(directory / name, bytes);
    }

    /// RELAY.R1 with relays at both ends of the first lines.
    [[nodiscard]] std::string relaysAtBothEnds(std::size_t count) const {
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            const auto& line = data_.lines[i / 2];
            text += exchange::format(
                relay(static_cast<int>(i) + 1, {line.idNo, line.iNo, line.jNo}, static_cast<int>(i % 2) + 1));
        }
        return text;
    }

  private:
    struct Edge {
        int idNo, iNo, jNo;
    };
    void add(Edge edge) {
        at_[edge.iNo].push_back(static_cast<int>(edges_.size()));
        at_[edge.jNo].push_back(static_cast<int>(edges_.size()));
        edges_.push_back(edge);
    }
    /// Evenly over the lines, at meshed places: several branches at both ends.
    void chooseRelays() {
        const std::size_t stride = data_.lines.size() / kRelays;
        for (std::size_t k = 0; relays_.size() < kRelays; k += stride) {
            std::size_t i = k;
            while (at_.at(data_.lines[i].iNo).size() < 3 || at_.at(data_.lines[i].jNo).size() < 3) ++i;
            const auto& line = data_.lines[i];
            relays_.push_back({line.idNo, line.iNo, line.jNo});
        }
    }
    /// The nearest branches around a branch, itself left out.
    [[nodiscard]] std::vector<Edge> around(const Edge& centre) const {
        std::vector<Edge> found;
        std::set<int> seen{centre.idNo};
        std::vector<int> nodes{centre.jNo, centre.iNo};
        for (std::size_t n = 0; found.size() < kOutages && n < nodes.size(); ++n)
            for (const int place : at_.at(nodes[n])) {
                const Edge& edge = edges_[static_cast<std::size_t>(place)];
                if (found.size() == kOutages || !seen.insert(edge.idNo).second) continue;
                found.push_back(edge);
                nodes.push_back(edge.iNo == nodes[n] ? edge.jNo : edge.iNo);
            }
        return found;
    }
    [[nodiscard]] std::vector<exchange::FaultRow> outages(const Edge& centre) const {
        std::vector<exchange::FaultRow> rows;
        int number = 20;
        for (const Edge& out : around(centre)) {
            ++number;
            for (const int place : {1, 99})
                rows.push_back({number, out.idNo, out.iNo, out.jNo, place, 5, "99999.9999", "99999.9999"});
        }
        return rows;
    }
    [[nodiscard]] std::string relays() const {
        std::string text;
        for (std::size_t i = 0; i < relays_.size(); ++i)
            text += exchange::format(relay(static_cast<int>(i) + 1, relays_[i], 1));
        return text;
    }
    static exchange::RelayBlock relay(int rno, const Edge& edge, int side) {
        exchange::RelayBlock block{1, rno, "L  N  T", edge.iNo, edge.jNo, edge.idNo, side, {}};
        block.parts.assign(3, {"12.5", "0.3", "0.67", "40"});
        return block;
    }
    [[nodiscard]] std::string modes() const {
        std::string text;
        for (int mode = 2; mode <= kModes; ++mode)
            for (const Edge& relay : relays_) {
                const Edge out = around(relay)[static_cast<std::size_t>(mode)];
                for (const int sequence : {1, 0})
                    text += exchange::format(exchange::ModeElement{mode, out.idNo, out.iNo, out.jNo, sequence,
                                                                   "9999999.999999", "9999999.999999"});
            }
        return text;
    }
    [[nodiscard]] static std::vector<int> allModes() {
        std::vector<int> numbers;
        for (int mode = 1; mode <= kModes; ++mode) numbers.push_back(mode);
        return numbers;
    }
    [[nodiscard]] std::string mainBranches() const {
        std::string text;
        int number = 0;
        std::set<std::pair<int, int>> seen;
        for (const Edge& relay : relays_)
            for (const int place : at_.at(relay.jNo)) {
                const Edge& main = edges_[static_cast<std::size_t>(place)];
                if (main.idNo == relay.idNo || !seen.emplace(main.idNo, relay.jNo).second) continue;
                const int side = main.iNo == relay.jNo ? 1 : 2;
                exchange::MainBranch section{++number, main.iNo, main.jNo, main.idNo, side, allModes(), outages(main)};
                section.faults.insert(section.faults.begin(),
                                      {1, main.idNo, main.iNo, main.jNo, side == 1 ? 100 : 0, 1, "0", "0"});
                text += exchange::format(section);
            }
        return text;
    }
    [[nodiscard]] std::string rules() const {
        std::string text;
        for (std::size_t i = 0; i < relays_.size(); ++i) {
            const Edge& own = relays_[i];
            std::vector<exchange::FaultRow> rows;
            int number = 0;
            for (const int place : {100, 50, 0})
                for (const int kind : {1, 2, 4})
                    rows.push_back({++number, own.idNo, own.iNo, own.jNo, place, kind, "0", "0"});
            const auto out = outages(own);
            rows.insert(rows.end(), out.begin(), out.end());
            std::vector<exchange::RuleFault> faults;
            for (const auto& row : rows) faults.push_back({1, row});
            exchange::RelayRules group{static_cast<int>(i) + 1, 1, {}};
            for (const int rule : {101, 102, 103}) group.sections.push_back({rule, 1, allModes(), false, faults});
            for (const int rule : {201, 202, 203}) group.sections.push_back({rule, 1, allModes(), false, {}});
            text += exchange::format(group);
        }
        return text;
    }
    [[nodiscard]] static std::string ruleFile() {
        const auto fault = [](int number, int vType, int consel) {
            return exchange::RuleBlock{number,
                                       1,
                                       1,
                                       1,
                                       1,
                                       1,
                                       {{1, 1, 0, 1, 0, 1, 9, consel}},
                                       {{1, 1, vType, 1}},
                                       {{1.3}},
                                       {{1, 101, 1000, 1, 3, 201}}};
        };
        const auto behind = [](int number, int vType) {
            return exchange::RuleBlock{number,
                                       1,
                                       3,
                                       1,
                                       3,
                                       1,
                                       {{21, 2, 3, 1, 1, 3, 9, 2}},
                                       {{1, 0, 101, 1}, {2, 21, 101, 1}, {3, 21, vType, 1}},
                                       {{0.85}},
                                       {{101, 1, 1, 1, 3, 301}, {309, 101, 1, 1, 3, 302}, {301, 302, 1, 1, 1, 201}}};
        };
        return exchange::format(fault(101, 8, 1)) + exchange::format(fault(102, 1, 2)) +
               exchange::format(fault(103, 21, 2)) + exchange::format(behind(201, 453)) +
               exchange::format(behind(202, 454)) + exchange::format(behind(203, 451));
    }

    exchange::NetworkData data_;
    std::vector<Edge> edges_, relays_;
    std::map<int, std::vector<int>> at_;
};

}  // namespace bench
