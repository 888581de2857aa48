#include <map>

#include "tests/flow/CommandLine.h"
#include "tests/flow/DenseNetwork.h"

namespace {

const QString cases[] = {"相间距离", "接地距离", "零序电流"};

/// Runs the whole demonstration. \return its result files and tables by name
std::map<std::string, std::string> demonstration() {
    QProcess process;
    process.start(MORVANE_SOURCE_DIR "/tools/demo.sh", {MORVANE_BIN_DIR});
    EXPECT_TRUE(process.waitForFinished(300000));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    std::map<std::string, std::string> found;
    const QDir folder(directoryOf("演示") + "Temp");
    for (const QString& name : folder.entryList({"RELAY.*", "RRULE.DAT"}, QDir::Files)) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::ReadOnly)) found[name.toStdString()] = file.readAll().toStdString();
    }
    for (const QString& name : cases) found[name.toStdString()] = call({"case", "results", "演示", name, "--json"}).out;
    return found;
}

class Demonstration : public testing::Test {
  protected:
    static void SetUpTestSuite() { first = demonstration(); }
    static void TearDownTestSuite() {
        EXPECT_EQ(call({"project", "delete", "演示"}).code, 0);
        first.clear();
    }
    static nlohmann::json results(const QString& name) { return nlohmann::json::parse(first.at(name.toStdString())); }
    static inline std::map<std::string, std::string> first;
};

}  // namespace

TEST_F(Demonstration, GivesEveryPartOfEveryRelayASettingAndASensitivity) {
    const size_t parts[] = {3, 3, 4};
    for (size_t type = 0; type < 3; ++type) {
        size_t settings = 0;
        for (const auto& row : results(cases[type])) {
            const std::string kind = row["setting"];
            EXPECT_GT(int(row["rule"]), 0) << row;
            if (kind != "Zdz" && kind != "Idz") continue;
            ++settings;
            EXPECT_GT(double(row["primary"]), 0) << row;
            EXPECT_GT(row.value("sensitivity", 0.0), 0) << row;
        }
        const auto relays = call({"relays", "list", "演示", "--type", QString::number(type + 1), "--json"}).json();
        EXPECT_GT(relays.size(), 20U);
        EXPECT_EQ(settings, parts[type] * relays.size());
    }
}

TEST_F(Demonstration, FirstZeroSequenceStagesAgreeWithADenseSolution) {
    const DenseNetwork network(MORVANE_SOURCE_DIR "/data/networks/demo");
    std::map<int, double> calculated;
    for (const auto& row : results("零序电流"))
        if (row["part"] == 1 && row["setting"] == "Idz") calculated[row["relay"]] = row["primary"];
    int compared = 0;
    for (const auto& relay : call({"relays", "list", "演示", "--type", "3", "--json"}).json()) {
        const QString element = QString::fromStdString(relay["element"]);
        if (element.startsWith("平南") || element.startsWith("平北"))
            continue;  // to the T node, whose stages reach beyond
        const double expected = 1.3 * network.largest3I0(element, relay["side"] == "I");
        EXPECT_NEAR(calculated[relay["number"]], expected, 1e-4 * expected) << relay;
        ++compared;
    }
    EXPECT_GT(compared, 20);
}

TEST_F(Demonstration, SameInputGivesTheSameBytes) {
    const auto second = demonstration();
    for (const auto& [name, text] : second) EXPECT_EQ(text, first[name]) << name;
    for (const char* name : {"RELAY.R1", "RELAY.R2", "RELAY.R6", "RRULE.DAT", "RELAY.RP1"})
        EXPECT_FALSE(second.at(name).empty()) << name;
}

TEST_F(Demonstration, AlsoRunsOnTheOtherSchemeAndOnTheLoadFlow) {
    const QString made[] = {"停运", "潮流"};
    const QStringList sources[] = {{"--scheme", "青龙线停运"}, {"--load-flow", "夏季大方式"}};
    for (int k = 0; k < 2; ++k) {
        callAll({QStringList{"case", "new", "演示", "--type", "3", "--name", made[k], "--max", "最大方式", "--min",
                             "最小方式"} +
                     sources[k],
                 {"case", "run", "演示", made[k]}});
        int larger = 0, firstStages = 0;
        std::map<int, double> base;
        for (const auto& row : results("零序电流"))
            if (row["part"] == 1 && row["setting"] == "Idz") base[row["relay"]] = row["primary"];
        for (const auto& row : call({"case", "results", "演示", made[k], "--json"}).json()) {
            if (row["part"] != 1 || row["setting"] != "Idz") continue;
            const bool outOfService = k == 0 && QString::fromStdString(row["location"]).startsWith("青龙");
            EXPECT_EQ(double(row["primary"]) > 0, !outOfService) << row;
            EXPECT_EQ(int(row["rule"]) > 0, !outOfService) << row;
            larger += double(row["primary"]) != base[row["relay"]];
            ++firstStages;
        }
        EXPECT_GT(firstStages, 20);
        EXPECT_GT(larger, 5) << "the source of the case makes no difference";
    }
}
