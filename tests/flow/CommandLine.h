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

/// Joins lines with line feeds and writes them to a file below a folder.
inline void writeLines(const QString& folder, const QString& name, const QStringList& lines) {
    QFile file(folder + "/" + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << file.fileName().toStdString();
    file.write((lines.join('\n') + "\n").toUtf8());
}

/// Calls that must succeed, in this order.
inline void callAll(const QList<QStringList>& calls) {
    for (const QStringList& words : calls) {
        const Answer answer = call(words);
        ASSERT_EQ(answer.code, 0) << words.join(' ').toStdString() << '\n' << answer.err;
    }
}

/// The directory of a project, with a slash at its end.
inline QString directoryOf(const QString& project) {
    return QString::fromStdString(call({"project", "path", project}).out).trimmed();
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
