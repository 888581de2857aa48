#include "tests/flow/CommandLine.h"

#include <algorithm>
#include <map>

using testing::AllOf;
using testing::Ge;
using testing::HasSubstr;
using testing::Le;

TEST(CommandLine, UsageErrorsAreExitCodeOne) {
    EXPECT_EQ(call({}).code, 1);
    EXPECT_EQ(call({"relays", "install", "x", "--level", "220"}).code, 1);
    EXPECT_EQ(call({"relays", "install", "x", "--type", "1"}).code, 1);
    EXPECT_EQ(call({"case", "fly", "x"}).code, 1);
    EXPECT_EQ(call({"--help"}).code, 0);
}

TEST(CommandLine, WhatIsNotThereIsBadInput) {
    EXPECT_EQ(call({"modes", "list", "没有这个工程"}).code, 2);
    EXPECT_EQ(call({"project", "new", "a/b"}).code, 2);
    const Answer import = call({"import", "没有这个工程", "/nowhere"});
    EXPECT_EQ(import.code, 2);
    EXPECT_THAT(import.err, HasSubstr("/nowhere"));
}

TEST_F(DemoProject, ListsComeAsJson) {
    EXPECT_THAT(call({"project", "list", "--json"}).json(), testing::Contains(name));
    const auto modes = call({"modes", "list", name, "--json"}).json();
    ASSERT_EQ(modes.size(), 2U);
    EXPECT_FALSE(modes[0]["changes"].empty());
    const auto relays = call({"relays", "list", name, "--json"}).json();
    EXPECT_EQ(relays[0]["ct"], 240);
    EXPECT_EQ(call({"case", "list", name, "--json"}).json()[0]["name"], "零序");
}

TEST_F(DemoProject, RefusalsNameWhatIsWrong) {
    QTemporaryDir folder;
    QFile file(folder.filePath("relays.csv"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("element,side,type\n没有,I,3\n") > 0);
    file.close();
    const Answer csv = call({"relays", "install", name, "--csv", file.fileName()});
    EXPECT_EQ(csv.code, 2);
    EXPECT_THAT(csv.err, HasSubstr("relays.csv:2: "));
    const Answer mode = call({"case", "new", name, "--type", "3", "--name", "x", "--max", "没有"});
    EXPECT_EQ(mode.code, 2);
    EXPECT_THAT(mode.err, HasSubstr("没有运行方式没有"));
    EXPECT_EQ(call({"case", "new", name, "--type", "3", "--name", "零序"}).code, 2);
    EXPECT_EQ(call({"case", "new", name, "--type", "0", "--name", "y"}).code, 2);
    EXPECT_EQ(call({"case", "new", name, "--type", "3", "--name", "z", "--scheme", "没有"}).code, 2);
    EXPECT_EQ(call({"case", "run", name, "9"}).code, 2);
    EXPECT_EQ(call({"relays", "remove", name, "999"}).code, 2);
    EXPECT_EQ(call({"modes", "add", name, "最大方式", "--cut", "没有"}).code, 2);
    EXPECT_EQ(call({"case", "list", name, "--json"}).json().size(), 1U);
}

TEST_F(DemoProject, ACaseRunsFromSensitivityParametersToStoredSettings) {
    const Answer run = call({"case", "run", name, "零序", "--klm"});
    ASSERT_EQ(run.code, 0) << run.err;
    const auto results = call({"case", "results", name, "1", "--json"}).json();
    const auto isOfPartOne = [](const auto& row) { return row["part"] == 1 && row["setting"] == "Idz"; };
    int seen = 0;
    for (const auto& row : results) {
        if (!isOfPartOne(row)) continue;
        ++seen;
        const double primary = row["primary"], secondary = row["secondary"];
        EXPECT_THAT(primary, AllOf(Ge(100), Le(40000)));
        EXPECT_NEAR(secondary, primary / 240, 1e-4 * secondary);
        EXPECT_THAT(double(row["sensitivity"]), AllOf(Ge(0.1), Le(10)));
        EXPECT_EQ(int(row["rule"]) / 100, 31);
    }
    EXPECT_EQ(seen, 2);

    ASSERT_EQ(call({"case", "save", name, "1"}).code, 0);
    double stored = 0;
    for (const auto& row : call({"export", "settings", name, "--json"}).json())
        if (row["relay"] == results[0]["relay"] && isOfPartOne(row)) stored = row["primary"];
    EXPECT_EQ(stored, double(results[0]["primary"]));
    EXPECT_THAT(call({"export", "settings", name}).out, HasSubstr("relay,type,type_name,element"));
}

TEST_F(DemoProject, ACopyCalculatesLikeTheOriginal) {
    ASSERT_EQ(call({"case", "run", name, "1"}).code, 0);
    const std::string original = call({"case", "results", name, "1", "--csv"}).out;
    EXPECT_THAT(original, HasSubstr(",3101,"));
    ASSERT_EQ(call({"project", "save-as", name, "流程副本"}).code, 0);
    EXPECT_EQ(call({"case", "show", name, "1"}).code, 0);
    const Answer run = call({"case", "run", "流程副本", "1"});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(call({"case", "results", "流程副本", "1", "--csv"}).out, original);
    EXPECT_EQ(call({"project", "delete", "流程副本"}).code, 0);
}

TEST_F(DemoProject, ASecondRunGivesWhatTheFirstGave) {
    ASSERT_EQ(call({"case", "new", name, "--type", "3", "--name", "环网", "--part", "1", "2", "3", "--max", "最大方式",
                    "--min", "最小方式", "--sens", "最小方式"})
                  .code,
              0);
    ASSERT_EQ(call({"case", "run", name, "环网", "--klm"}).code, 0);
    const std::string first = call({"case", "results", name, "环网", "--csv"}).out;
    EXPECT_GT(std::count(first.begin(), first.end(), '\n'), 20);
    ASSERT_EQ(call({"case", "save", name, "环网"}).code, 0);
    ASSERT_EQ(call({"case", "run", name, "环网"}).code, 0);
    EXPECT_EQ(call({"case", "results", name, "环网", "--csv"}).out, first);
    EXPECT_EQ(call({"case", "delete", name, "环网"}).code, 0);
}

/// The programs beside one that hangs instead of calculating.
class HangingEngine : public DemoProject {
  protected:
    void SetUp() override {
        ASSERT_TRUE(QDir(folder.path()).mkpath("bin"));
        bin = folder.filePath("bin");
        for (const char* program : {"morvane", "morvane-server-keeper", "VASKEL.EXE", "QORDEN.EXE"})
            ASSERT_TRUE(QFile::copy(QString(MORVANE_BIN_DIR "/") + program, bin + "/" + program)) << program;
        QFile engine(bin + "/HALDERN.EXE");
        ASSERT_TRUE(engine.open(QIODevice::WriteOnly) && engine.write("#!/bin/sh\n: > hanging\nexec sleep 600\n") > 0);
        engine.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    QTemporaryDir folder;
    QString bin;
};

TEST_F(HangingEngine, AnInterruptEndsTheRunAndKeepsTheCase) {
    const std::string path = call({"project", "path", name}).out;
    const QString mark = QString::fromStdString(path).trimmed() + "Temp/hanging";
    QFile::remove(mark);
    QProcess process;
    process.start(bin + "/morvane", {"case", "run", name, "1"});
    for (int i = 0; i < 200 && !QFile::exists(mark); ++i) process.waitForFinished(100);
    ASSERT_TRUE(QFile::exists(mark)) << process.readAllStandardError().toStdString();
    EXPECT_EQ(call({"case", "list", name}).code, 0);
    QProcess::execute("kill", {"-INT", QString::number(process.processId())});
    ASSERT_TRUE(process.waitForFinished(20000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 3);
    EXPECT_THAT(process.readAllStandardError().toStdString(), HasSubstr("中止计算"));
    const Answer again = call({"case", "run", name, "1"});
    EXPECT_EQ(again.code, 0) << again.err;
}

TEST_F(HangingEngine, AKilledRunGivesItsTablesBackToTheNextVerb) {
    ASSERT_EQ(call({"case", "run", name, "1", "--klm"}).code, 0);
    const std::string before = call({"case", "results", name, "1", "--csv"}).out;
    EXPECT_THAT(before, HasSubstr(",3101,"));
    const QString mark = directoryOf(name) + "Temp/hanging";
    QFile::remove(mark);
    QFile engine(bin + "/HALDERN.EXE");
    ASSERT_TRUE(engine.open(QIODevice::WriteOnly));
    engine.write("#!/bin/sh\necho $$ > pid; mv pid hanging\nexec sleep 600\n");
    engine.close();
    QProcess process;
    process.start(bin + "/morvane", {"case", "run", name, "1"});
    for (int i = 0; i < 200 && !QFile::exists(mark); ++i) process.waitForFinished(100);
    ASSERT_TRUE(QFile::exists(mark)) << process.readAllStandardError().toStdString();
    const Answer busy = call({"case", "results", name, "1"});
    EXPECT_EQ(busy.code, 3);
    EXPECT_THAT(busy.err, HasSubstr("（程序morvane，进程" + std::to_string(process.processId()) + "，自"));
    for (const QStringList& words : {QStringList{"relays", "virtual", name}, {"project", "delete", name}})
        EXPECT_EQ(call(words).code, 3) << words[0].toStdString();
    EXPECT_EQ(call({"relays", "list", name}).code, 0);
    process.kill();
    ASSERT_TRUE(process.waitForFinished(20000));
    QFile pid(mark);
    ASSERT_TRUE(pid.open(QIODevice::ReadOnly));
    QProcess::execute("kill", {"-KILL", QString::fromUtf8(pid.readAll().trimmed())});

    const Answer after = call({"case", "results", name, "1", "--csv"});
    EXPECT_EQ(after.out, before);
    EXPECT_THAT(after.err, HasSubstr("已恢复计算前的数据\n"));
    EXPECT_THAT(call({"case", "results", name, "1"}).err, testing::Not(HasSubstr("已恢复")));
}

TEST_F(HangingEngine, AServerThatDiesInARunCostsTheRunButNotTheCase) {
    const std::string path = call({"project", "path", name}).out;
    const QString mark = QString::fromStdString(path).trimmed() + "Temp/hanging";
    const std::string before = call({"--json", "case", "show", name, "1"}).out;
    QFile::remove(mark);
    QFile engine(bin + "/HALDERN.EXE");
    ASSERT_TRUE(engine.open(QIODevice::WriteOnly) && engine.write("#!/bin/sh\n: > hanging\nexec sleep 2\n") > 0);
    engine.close();
    QProcess process;
    process.start(bin + "/morvane", {"case", "run", name, "1"});
    for (int i = 0; i < 200 && !QFile::exists(mark); ++i) process.waitForFinished(100);
    ASSERT_TRUE(QFile::exists(mark));
    QFile pid(qEnvironmentVariable("XDG_DATA_HOME") + "/morvane/server/server.pid");
    ASSERT_TRUE(pid.open(QIODevice::ReadOnly));
    ASSERT_EQ(QProcess::execute("kill", {"-KILL", QString::fromUtf8(pid.readAll().trimmed())}), 0);
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_THAT(process.exitCode(), testing::AnyOf(3, 4));
    EXPECT_THAT(process.readAllStandardError().toStdString(), HasSubstr("服务器"));
    EXPECT_EQ(call({"--json", "case", "show", name, "1"}).out, before);
    const Answer again = call({"case", "run", name, "1"});
    EXPECT_EQ(again.code, 0) << again.err;
}

/// A published network with breakers and disconnectors; it lies beside the checkout where it is at hand.
/// Settings of distance and zero-sequence relays on all 110 kV lines of a network: (element, part, setting) -> values.
std::map<std::string, std::vector<double>> settingsOf110kV(const QString& project, const QString& network) {
    callAll({{"project", "new", project, "--replace"},
             {"import", project, network},
             {"relays", "install", project, "--type", "1", "2", "3", "--level", "110"}});
    for (const char* type : {"1", "2", "3"})
        callAll({{"case", "new", project, "--type", type, "--name", type}, {"case", "run", project, type, "--klm"}});
    std::map<std::string, std::vector<double>> settings;
    for (const auto& row : call({"case", "results", project, "1", "2", "3", "--json"}).json()) {
        const std::string element = std::string(row["location"]).substr(0, std::string(row["location"]).find(' '));
        const std::string key =
            std::string(row["type"]) + element + std::to_string(int(row["part"])) + std::string(row["setting"]);
        const bool hasNone = row["primary"].is_null() || double(row["primary"]) == 0;
        EXPECT_FALSE(hasNone && row["setting"] != "t") << key;
        if (!hasNone) settings[key].push_back(row["primary"]);
    }
    for (auto& [key, values] : settings) std::ranges::sort(values);
    EXPECT_EQ(call({"project", "delete", project}).code, 0);
    return settings;
}

TEST(PublicNetwork, MiniGridGivesEverySettingAndTheSameFirstStagesInBothOfItsForms) {
    const QString networks = qEnvironmentVariable("MORVANE_SHARED_NETWORKS", MORVANE_SHARED_NETWORKS);
    const QString folder = networks + "/cgmes_minigrid";
    if (!QDir(folder).exists()) GTEST_SKIP() << "no public networks at " << networks.toStdString();
    const auto stations = settingsOf110kV("MiniGrid", folder + "/NodeBreaker/BaseCase_Complete_v3");
    const auto buses = settingsOf110kV("MiniGrid", folder + "/BusBranch/BaseCase_v3");
    ASSERT_GT(stations.size(), 60U);
    int compared = 0;
    for (const auto& [key, values] : stations) {
        if (!key.ends_with("1Zdz") && !key.ends_with("1Idz")) continue;
        const auto other = buses.find(key);
        ASSERT_NE(other, buses.end()) << key;
        ASSERT_EQ(values.size(), other->second.size()) << key;
        for (std::size_t i = 0; i < values.size(); ++i)
            EXPECT_NEAR(values[i], other->second[i], 1e-4 * values[i]) << key;
        ++compared;
    }
    EXPECT_EQ(compared, 18);  // six lines, three types
}
