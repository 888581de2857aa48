#include "tests/fuzz/SampleFiles.h"

#include "exchange/ControlFile.h"
#include "exchange/FileNames.h"
#include "exchange/MainBranchFile.h"
#include "exchange/ModeFile.h"
#include "exchange/NetworkFiles.h"
#include "exchange/RelayFile.h"
#include "exchange/ResultFiles.h"
#include "exchange/RuleFaultFile.h"
#include "exchange/RuleFile.h"
#include "exchange/TextFile.h"
#include "exchange/VirtualRelayFile.h"
#include "tests/fuzz/Bundle.h"

namespace fuzz {

namespace {

namespace file = exchange::file;

exchange::NetworkData network() {
    exchange::NetworkData n;
    n.loadFlow = true;
    n.buses = {{2, 230, 1.02, 0, 209, "A"},
               {3, 230, 1, -2, 0, "B"},
               {4, 115, 1, -4, 0, "C"},
               {5, 230, 1, -3, 0, "S"},
               {6, 37, 1, -4, 0, "D"}};
    n.lines = {{1, 2, 3, .01, .1, .03, .3, 50, 800, 500}, {2, 2, 3, .01, .1, .03, .3, 50, 800, 500}};
    n.transformers = {{3, 3, 4, 1, 0, .1, 0, .1, 1, 120, 230, 115, 300},
                      {11, 5, 3, 31, 0, .06, 0, .06, 3, 180, 230, 230, 0},
                      {12, 5, 4, 32, 0, .04, 0, .04, 3, 180, 230, 115, 0},
                      {13, 5, 6, 33, 0, .08, 0, .08, 1, 90, 230, 37, 0}};
    n.generators = {{"G1", 2, .01, .2, 0, .1, true, 200, 230, 90, 20}, {"G2", 6, 0, .5, 0, 0, false, 50, 37, 10, 0}};
    n.shunts = {{9, 2, 5, .1, 4.5, true, 60, 230}, {8, 6, -7, 0, 0, false, 10, 37}};
    n.mutuals = {{1, 2, .02, .15, 1, 0, 100, 0, 100}};
    return n;
}

exchange::RelayBlock relay(int rno, int iNo, int jNo, int idNo) {
    exchange::RelayBlock block;
    block.rno = rno, block.label = "L, 'x'", block.iNo = iNo, block.jNo = jNo, block.idNo = idNo;
    block.parts = {{"20", "0.5", "0", "0"}};
    return block;
}

std::string rules() {
    const exchange::RuleBlock current{
        3101, 1, 1, 1, 1, 1, {{1, 1, 0, 1, 0, 1, 9, 1}}, {{1, 1, 8, 1}}, {{1.3}}, {{1, 101, 1000, 1, 3, 201}}};
    const exchange::RuleBlock distance{
        1201,
        2,
        5,
        2,
        3,
        1,
        {{21, 5, 0, 1, 0, 1, 7, 2}, {31, 2, 3, 1, 1, 3, 9, 2}},
        {{1, 0, 101, 1}, {2, 31, 401, 1}, {3, 31, 453, 1}, {4, 0, 141, 1}, {5, 21, 451, 2}},
        {{0.85, 0.8}},
        {{101, 1, 1, 1, 3, 301}, {2, 3, 1, 1, 3, 302}, {301, 302, 1, 1, 1, 201}}};
    return exchange::format(current) + exchange::format(distance);
}

std::string ruleFaults() {
    exchange::RelayRules group{11, 1, {}};
    group.sections.push_back({3101,
                              1,
                              {5},
                              false,
                              {{1, {1, 1, 2, 3, 99, 2, "0", "0.01"}},
                               {1, {2, 3, 3, 4, 50, 4, "0", "0"}},
                               {1, {21, 2, 2, 3, 1, 5, "99999.9999", "99999.9999"}},
                               {1, {21, 2, 2, 3, 1, 1, "0", "0"}}}});
    group.sections.push_back({1201, 1, {}, false, {}});
    return exchange::format(group);
}

std::map<std::string, std::string> filesIn(const Workplace& place) {
    std::map<std::string, std::string> files;
    for (const char* name : file::kConverterFiles)
        if (std::filesystem::exists(place.directory() / name))
            files[name] = exchange::readAll(place.directory() / name);
    return files;
}

}  // namespace

std::map<std::string, std::string> sampleNetwork() {
    const Workplace place({});
    exchange::writeNetwork(place.directory(), network());
    return filesIn(place);
}

std::map<std::string, std::string> sampleStudy() {
    auto files = sampleNetwork();
    files[file::kControl] = exchange::format(exchange::Control{1, 1, 0, 0});
    files[file::kRelays] = exchange::format(relay(11, 2, 3, 1)) + exchange::format(relay(12, 3, 4, 3));
    files[file::kMainBranches] =
        exchange::format(exchange::MainBranch{1, 3, 4, 3, 1, {5}, {{1, 3, 3, 4, 100, 1, "0", "0"}}});
    files[file::kModes] = exchange::format(exchange::ModeElement{5, 2, 2, 3, 1, "9999999.999999", "9999999.999999"}) +
                          exchange::format(exchange::ModeElement{5, 2, 2, 3, 0, "9999999.999999", "9999999.999999"}) +
                          exchange::format(exchange::ModeElement{6, 9, 2, 2, 0, "0.2", "9"});
    files[file::kVirtualRelays] = exchange::format(exchange::VirtualRelays{1, {{5, 3, 11, 1}}});
    files[file::kRuleFaults] = ruleFaults();
    files[file::kRules] = rules();
    files[file::kEarlierCoefficients] = exchange::format(exchange::CoefficientResult{2, 3, 4, 3, 1, 2, 3, 2, 11, 0.5});
    return files;
}

}  // namespace fuzz
