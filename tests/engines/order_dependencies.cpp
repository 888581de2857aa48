#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/network/SectionGraph.h"
#include "engines/order/RelayDependencies.h"
#include "engines/order/TurnOrder.h"
#include "exchange/ControlFile.h"
#include "exchange/FileNames.h"
#include "exchange/ResultFiles.h"
#include "tests/TemporaryDirectory.h"
#include "tests/engines/EngineRun.h"

namespace engines {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

/// Buses 2 - 3 - 4 in a row, a three-winding transformer at 4 with its star point 9 and far buses 5 and 6, line 5 - 7.
exchange::NetworkData network() {
    exchange::NetworkData n;
    for (const int no : {2, 3, 4, 5, 6, 7, 9}) n.buses.push_back({no, 110, 1, 0, 0, std::to_string(no)});
    n.lines = {{1, 2, 3, 0, .1, 0, .3, 1, 0, 0}, {2, 4, 3, 0, .1, 0, .3, 1, 0, 0}, {3, 5, 7, 0, .1, 0, .3, 1, 0, 0}};
    for (const auto& [id, kind, bus] : {std::tuple{11, 31, 4}, std::tuple{12, 32, 5}, std::tuple{13, 33, 6}})
        n.transformers.push_back({id, 9, bus, kind, 0, .1, 0, .1, 3, 100, 110, 110, 0});
    n.generators.push_back({"G", 2, 0, .2, 0, 0, false, 100, 10, 0, 0});
    n.shunts.push_back({20, 3, 5, 0, 0, false, 10, 110});
    return n;
}

exchange::RelayBlock relay(int rno, int idNo, int iNo, int jNo, int side) {
    return {1, rno, std::to_string(rno), iNo, jNo, idNo, side, {{"1", "0", "0", "0"}}};
}

Digraph dependencies(const std::vector<exchange::RelayBlock>& relays,
                     const exchange::VirtualRelays& virtualRelays = {}) {
    return relayDependencies(relays, sectionGraph(network(), virtualRelays));
}

TEST(RelayDependenciesTest, LooksAtTheFarEndForRelaysThatLookAway) {
    const auto found =
        dependencies({relay(1, 1, 2, 3, 1), relay(2, 1, 2, 3, 2), relay(3, 2, 4, 3, 2), relay(4, 2, 4, 3, 1)});
    EXPECT_THAT(found[0], ElementsAre(2)) << "not the relay that looks back, not the one at the other end";
    EXPECT_THAT(found[1], IsEmpty());
    EXPECT_THAT(found[2], IsEmpty());
    EXPECT_THAT(found[3], ElementsAre(1));
}

TEST(RelayDependenciesTest, PassesTheStarPointAndVirtualRelays) {
    const std::vector<exchange::RelayBlock> relays = {relay(1, 2, 4, 3, 2), relay(2, 11, 9, 4, 2),
                                                      relay(3, 3, 5, 7, 1)};
    EXPECT_THAT(dependencies(relays), ElementsAre(ElementsAre(1), ElementsAre(2), IsEmpty()));
    const exchange::VirtualRelays atBus4{1, {{9, 4, 11, 2}}};
    EXPECT_THAT(dependencies(relays, atBus4)[0], UnorderedElementsAre(1, 2));
}

TEST(RelayDependenciesTest, ABusOrShuntRelayDependsOnTheRelaysOfItsBus) {
    const auto found =
        dependencies({relay(1, 0, 3, 3, 1), relay(2, 20, 3, 3, 1), relay(3, 1, 2, 3, 2), relay(4, 2, 4, 3, 2)});
    EXPECT_THAT(found[0], UnorderedElementsAre(2, 3));
    EXPECT_THAT(found[1], UnorderedElementsAre(2, 3));
    EXPECT_THAT(found[3], IsEmpty());
}

TEST(RelayDependenciesTest, LeavesOutWhatIsNotValidOrNotInTheNetwork) {
    auto notValid = relay(2, 2, 4, 3, 2);
    notValid.valid = 0;
    const auto found = dependencies({relay(1, 1, 2, 3, 1), notValid, relay(3, 77, 2, 3, 1)});
    EXPECT_THAT(found, ElementsAre(IsEmpty(), IsEmpty(), IsEmpty()));
}

TEST(RelayDependenciesTest, ParallelLinesAndThreeWindingTransformersMakeLoops) {
    auto n = network();
    n.lines.push_back({4, 2, 3, 0, .1, 0, .3, 1, 0, 0});
    n.lines.push_back({5, 5, 4, 0, .1, 0, .3, 1, 0, 0});
    const auto orderOf = [&](const std::vector<exchange::RelayBlock>& relays) {
        std::vector<int> numbers;
        for (const auto& block : relays) numbers.push_back(block.rno);
        return turnOrder(numbers, relayDependencies(relays, sectionGraph(n, {})));
    };
    const auto parallel =
        orderOf({relay(4, 4, 2, 3, 2), relay(2, 1, 2, 3, 2), relay(3, 4, 2, 3, 1), relay(1, 1, 2, 3, 1)});
    EXPECT_EQ(parallel.breakRelays, 2) << "either way round the two lines";
    EXPECT_THAT(parallel.order, ElementsAre(1, 2, 3, 4));
    const auto star = orderOf({relay(8, 5, 5, 4, 1), relay(7, 11, 9, 4, 2), relay(6, 12, 9, 5, 2)});
    EXPECT_EQ(star.breakRelays, 1) << "from 4 through the transformer to 5 and back along the line";
    EXPECT_THAT(star.order, ElementsAre(7, 6, 8));
}

class TurnOrderProgram : public TemporaryDirectory {
  protected:
    void SetUp() override {
        TemporaryDirectory::SetUp();
        exchange::writeNetwork(directory, network());
        put(exchange::file::kControl, exchange::format(exchange::Control{}));
        put(exchange::file::kRelays, format(relay(30, 1, 2, 3, 1)) + format(relay(12, 3, 5, 7, 1)) +
                                         format(relay(20, 2, 4, 3, 2)) + format(relay(10, 11, 9, 4, 2)));
        put(exchange::file::kVirtualRelays, exchange::format(exchange::VirtualRelays{}));
    }
    void put(const std::string& name, const std::string& text) const { exchange::replace(directory / name, text); }
    [[nodiscard]] bool hasResult() const { return std::filesystem::exists(directory / exchange::file::kTurnOrder); }
};

TEST_F(TurnOrderProgram, WritesTheOrderOfTheCase) {
    ASSERT_EQ(runEngine(exchange::file::kOrderProgram, directory).status, 0);
    const auto order = exchange::parseTurnOrder(exchange::readAll(directory / exchange::file::kTurnOrder), "RELAY.R8");
    EXPECT_EQ(order.breakRelays, 0);
    EXPECT_THAT(order.order, ElementsAre(12, 10, 20, 30));
}

TEST_F(TurnOrderProgram, EndsWithOneLineAndNoResultWhenAFileIsMissingOrWrong) {
    const auto failsWith = [&](const std::string& line) {
        const auto run = runEngine(exchange::file::kOrderProgram, directory);
        EXPECT_NE(run.status, 0);
        EXPECT_EQ(run.error, line + "\n");
        EXPECT_FALSE(hasResult());
    };
    put(exchange::file::kVirtualRelays, "1,  0,  0,\r\n   2,   x,   1,   1,   \r\n");
    failsWith("RELAY.R4:2: field 2 is not a whole number: 'x'");
    std::filesystem::remove(directory / exchange::file::kRelays);
    failsWith("RELAY.R1: cannot be read");
    std::filesystem::remove(directory / exchange::file::kControl);
    failsWith("RELAY.R0: cannot be read");
}

}  // namespace
}  // namespace engines
