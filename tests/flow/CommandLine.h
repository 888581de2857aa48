#pragma once

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <nlohmann/json.hpp>

/// What a call of the command line left.
struct Answer {
    int code = -1;
    std::string out, err;
    [[nodiscard]] nlohmann::json json() const { return nlohmann::json::parse(out); }
};

/// Calls the real program; the caller has set the folders of the user (tests/platform/PrivateServer.h).
inline Answer call(const QStringList& words, const QString& binDir = MORVANE_BIN_DIR) {
    QProcess process;
    process.start(binDir + "/morvane", words);
    process.waitForFinished(120000);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAllStandardOutput().toStdString(), process.readAllStandardError().toStdString()};
}

/// A project on the demonstration network with zero-sequence relays on its 220 kV lines and a case of the first two
/// of them, part 1.
class DemoProject : public testing::Test {
  protected:
    static constexpr const char* name = "流程 '一'";

    static void SetUpTestSuite() {
        ASSERT_EQ(call({"project", "new", name, "--replace"}).code, 0);
        ASSERT_EQ(call({"import", name, MORVANE_SOURCE_DIR "/data/networks/demo"}).code, 0);
        ASSERT_EQ(
            call({"relays", "install", name, "--type", "3", "--level", "220", "--ct", "240", "--pt", "2200"}).code, 0);
        const Answer made = call({"--json", "case", "new", name, "--type", "3", "--name", "零序", "--relay", "1", "2",
                                  "--part", "1", "--max", "最大方式", "--min", "最小方式", "--sens", "最小方式"});
        ASSERT_EQ(made.code, 0) << made.err;
        ASSERT_EQ(made.json()["number"], 1);
    }
    static void TearDownTestSuite() { EXPECT_EQ(call({"project", "delete", name}).code, 0); }
};
