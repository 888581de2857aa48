#include "tests/cases/FaultTable.h"
#include "tests/flow/CommandLine.h"

namespace {

/// The verb "faults" on the demonstration network.
class FaultStudy : public DemoProject {
  protected:
    static Answer faults(const QStringList& words) { return call(QStringList{"faults", name} + words); }
    static cases::FaultTable table(const QStringList& words) {
        const Answer answer = faults(words + QStringList{"--out", "csv"});
        EXPECT_EQ(answer.code, 0) << answer.err;
        return cases::FaultTable(answer.out);
    }
    static std::string bus() {
        for (const auto& row : cases::rowsOf(faults({"--kind", "3ph", "--out", "csv"}).out, "answer"))
            if (std::stod(row.at("a")) > 0) return row.at("place");
        return {};
    }
    /// First line of the network and its number of percent.
    static std::string line() {
        return faults({"--bus", QString::fromStdString(bus()), "--kind", "3ph", "--out", "json"})
            .json()["faults"][0]["branches"][0]["name"];
    }
};

TEST_F(FaultStudy, EveryBusAtOnceTellsTheSameAsEachBusByItself) {
    const auto all = table({"--currents", "touching"});
    const QString place = QString::fromStdString(bus());
    const QStringList one{"--bus", place, "--currents", "all"};
    const Answer alone = faults(one + QStringList{"--out", "csv"});
    ASSERT_EQ(alone.code, 0) << alone.err;
    const cases::FaultTable each(alone.out);
    int compared = 0;
    for (const auto& row : cases::rowsOf(faults({"--bus", place, "--out", "csv"}).out, "answer")) {
        const std::string about =
            row.at("record") + (row.at("record") == "branch" ? ":" + row.at("name") + ":" + row.at("end") : "");
        if (row.at("record") != "branch" && row.at("record") != "fault") continue;
        for (const char* quantity : {"a", "b", "c", "zero"}) {
            const double value = each.value(row.at("place"), row.at("kind"), about, quantity);
            EXPECT_NEAR(all.value(row.at("place"), row.at("kind"), about, quantity), value, 1e-8 + 1e-8 * value);
            ++compared;
        }
    }
    EXPECT_GT(compared, 16);
}

TEST_F(FaultStudy, AConditionAloneIsThatFaultAndAnOpenBesideItLessensTheCurrent) {
    const QString branch = QString::fromStdString(line());
    const auto alone = table({"--condition", "1ph@" + branch + ":50"});
    const auto plain = table({"--branch", branch, "--at", "50", "--kind", "1ph"});
    const std::string place = "1ph@" + branch.toStdString() + ":50";
    const double expected = plain.value(branch.toStdString() + "@50%", "1ph", "fault", "a");
    EXPECT_GT(expected, 0);
    EXPECT_DOUBLE_EQ(alone.value(place, "simultaneous", "fault", "a"), expected);
    const auto both = table({"--condition", "1ph@" + branch + ":50", "--condition", "open3@" + branch + ":1"});
    const double behindOpen =
        both.value(place + " + open3@" + branch.toStdString() + ":1", "simultaneous", "fault", "a");
    EXPECT_LT(behindOpen, 0.99 * expected);
}

TEST_F(FaultStudy, AnOutageIsTheOperatingModeThatCutsTheSameLine) {
    const QString branch = QString::fromStdString(line()), place = QString::fromStdString(bus());
    ASSERT_EQ(call({"modes", "add", name, "停运一线", "--cut", branch}).code, 0);
    const std::string whole = faults({"--bus", place, "--out", "csv"}).out;
    const std::string outage = faults({"--bus", place, "--outage", branch, "--out", "csv"}).out;
    EXPECT_EQ(outage, faults({"--bus", place, "--mode", "停运一线", "--out", "csv"}).out);
    EXPECT_NE(outage, whole);
    EXPECT_EQ(faults({"--bus", place, "--out", "csv"}).out, whole) << "a study leaves nothing behind";
}

TEST_F(FaultStudy, WrongInputIsRefusedInOneLine) {
    const QString place = QString::fromStdString(bus()), branch = QString::fromStdString(line());
    const struct {
        QStringList words;
        int code;
        const char* told;
    } wrong[] = {{{"--bus", "无此母线"}, 2, "网络中没有母线无此母线"},
                 {{"--branch", "无此线路"}, 2, "网络中没有支路无此线路"},
                 {{"--branch", branch, "--at", "101"}, 2, "--at 应在 0 到 100 之间"},
                 {{"--branch", branch, "--at", "1", "2"}, 2, "--at 应给出一个"},
                 {{"--bus", place, "--kind", "open1"}, 2, "断线只能在支路上"},
                 {{"--bus", place, "--kind", "simultaneous"}, 2, "--condition"},
                 {{"--condition", "1ph@" + branch + ":中间"}, 2, "网络中没有这个位置"},
                 {{"--condition", "4ph@" + place}, 2, "--condition 应为"},
                 {{"--bus", place, "--zf", "5+k3"}, 2, "--zf 应为 R+jX"},
                 {{"--bus", place, "--zf", "nan"}, 2, "--zf 应为 R+jX"},
                 {{"--c", "max"}, 2, "应为一个正数"},
                 {{"--impedance", branch}, 2, "--impedance 应为"},
                 {{"--mode", "无此方式"}, 2, "没有运行方式无此方式"},
                 {{"--outage", "无此元件"}, 2, "网络中没有元件无此元件"},
                 {{"--scheme", "无此方案"}, 2, "没有方案无此方案"},
                 {{"--kind", "5ph"}, 1, "5ph"}};
    for (const auto& [words, code, told] : wrong) {
        const Answer answer = faults(words);
        EXPECT_EQ(answer.code, code) << words.join(' ').toStdString();
        EXPECT_THAT(answer.err, testing::HasSubstr(told));
        EXPECT_EQ(answer.out, "");
    }
}

TEST_F(FaultStudy, ImpedancesAreUnderstoodInEveryUsualForm) {
    const QString place = QString::fromStdString(bus());
    const auto current = [&](const char* zf) {
        return table({"--bus", place, "--kind", "1ph", QString("--zf=") + zf})
            .value(place.toStdString(), "1ph", "fault", "a");
    };
    const double whole = current("5+j3");
    EXPECT_EQ(current("5+3j"), whole);
    EXPECT_EQ(current("5.0+j3e0"), whole);
    EXPECT_EQ(current("j3"), current("3j"));
    EXPECT_EQ(current("0-j3"), current("-j3"));
    EXPECT_GT(current("0"), current("5"));
    EXPECT_NE(current("5"), whole);
}

}  // namespace
