#include "platform/server/Server.h"
#include "platform/sql/Sql.h"
#include "tests/flow/CommandLine.h"

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// Cases with all zero-sequence relays of the 220 kV lines.
class CaseVerbs : public DemoProject {
  protected:
    static Answer make(const QString& caseName, const QStringList& more) {
        return call(QStringList{"case", "new", name, "--type", "3", "--name", caseName, "--max", "最大方式", "--min",
                                "最小方式", "--sens", "最小方式"} +
                    more);
    }
    void TearDown() override {
        for (const auto& made : call({"case", "list", name, "--json"}).json())
            if (made["number"] != 1) call({"case", "delete", name, QString::number(int(made["number"]))});
    }
    /// Rules that decide a setting of the case somewhere.
    static std::set<int> decidingRules(const QString& caseName) {
        std::set<int> rules;
        for (const auto& row : call({"case", "results", name, caseName, "--json"}).json())
            rules.insert(int(row["rule"]));
        return rules;
    }
};

TEST_F(CaseVerbs, ALoadFlowCaseServesTheRuleForOpenPhases) {
    ASSERT_EQ(make("潮流", {"--load-flow", "夏季大方式", "--part", "1", "--without-rule", "3101"}).code, 0);
    const Answer run = call({"case", "run", name, "潮流"});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_THAT(decidingRules("潮流"), AllOf(testing::Contains(3102), Not(testing::Contains(3101))));
    ASSERT_EQ(call({"case", "rules", name, "潮流", "--on", "3101", "--off", "3102"}).code, 0);
    ASSERT_EQ(call({"case", "run", name, "潮流"}).code, 0);
    EXPECT_THAT(decidingRules("潮流"), AllOf(testing::Contains(3101), Not(testing::Contains(3102))));
}

TEST_F(CaseVerbs, RulesAreListedWithTheirStateAndChangedWholeOrNotAtAll) {
    ASSERT_EQ(make("原则", {"--without-rule", "3202,3302"}).code, 0);
    std::set<int> off;
    const auto listed = [&] { return call({"case", "rules", name, "原则", "--json"}).json(); };
    const auto before = listed();
    for (const auto& rule : before) {
        if (rule["in_force"] == 0) off.insert(int(rule["rule"]));
        EXPECT_TRUE(rule["in_force"] == 0 || rule["in_force"] == rule["relays"]);
    }
    EXPECT_EQ(off, (std::set<int>{3202, 3302}));
    const Answer unknown = call({"case", "rules", name, "原则", "--on", "3202", "--off", "3101", "1101"});
    EXPECT_EQ(unknown.code, 2);
    EXPECT_THAT(unknown.err, HasSubstr("1101"));
    EXPECT_EQ(call({"case", "rules", name, "原则", "--on", "3101", "--off", "3101"}).code, 2);
    EXPECT_EQ(listed(), before);
    EXPECT_EQ(make("不成", {"--without-rule", "9999"}).code, 2);
    EXPECT_EQ(call({"case", "list", name, "--json"}).json().size(), 2U);
}

TEST_F(CaseVerbs, RelaysOutsideTheNetworkOfTheCaseAreLeftOut) {
    const Answer made = make("停运", {"--scheme", "青龙线停运"});
    ASSERT_EQ(made.code, 0) << made.err;
    EXPECT_THAT(made.err, AllOf(HasSubstr("警告: "), HasSubstr("青龙线 青山青龙线侧、青龙线 龙泉青龙线侧\n")));
    const auto shown = call({"case", "show", name, "停运", "--json"}).json();
    ASSERT_FALSE(shown["relays"].empty());
    for (const auto& relay : shown["relays"]) EXPECT_THAT(std::string(relay), Not(testing::StartsWith("青龙线")));
    const Answer run = call({"case", "run", name, "停运"});
    EXPECT_EQ(run.code, 0);
    EXPECT_THAT(run.err, Not(HasSubstr("要整定的保护不在")));

    QStringList gone = {"--scheme", "青龙线停运", "--relay"};
    for (const auto& relay : call({"relays", "list", name, "--json"}).json())
        if (relay["element"] == "青龙") gone << QString::number(int(relay["number"]));
    ASSERT_EQ(gone.size(), 5);
    const Answer none = make("全停", gone);
    EXPECT_EQ(none.code, 2);
    EXPECT_THAT(none.err, HasSubstr("不能定义作业"));
    EXPECT_EQ(call({"case", "show", name, "全停"}).code, 2);
}

TEST_F(CaseVerbs, TablesAreRoundedAndSensitivitiesWaitForTheirParameters) {
    ASSERT_EQ(make("表", {"--part", "1", "2"}).code, 0);
    const Answer run = call({"case", "run", name, "表"});
    EXPECT_THAT(run.err, AllOf(testing::ContainsRegex("另有 [0-9]+ 条整定原则没有结果"), Not(HasSubstr("no result"))));
    const Answer loud = call({"--verbose", "case", "run", name, "表"});
    EXPECT_THAT(loud.err, AllOf(HasSubstr("没有结果: "), Not(HasSubstr("另有")), Not(HasSubstr("no result"))));

    const Answer before = call({"case", "results", name, "表"});
    EXPECT_THAT(before.err, HasSubstr("灵敏度参量还没有计算"));
    EXPECT_THAT(before.out, Not(testing::ContainsRegex("  A +[0-9]")));
    for (const auto& row : call({"case", "results", name, "表", "--json"}).json())
        EXPECT_FALSE(row.contains("sensitivity"));
    ASSERT_EQ(call({"case", "klm", name, "表"}).code, 0);
    const Answer after = call({"case", "results", name, "表"});
    EXPECT_THAT(after.err, Not(HasSubstr("灵敏度参量还没有计算")));
    EXPECT_EQ(QString::fromStdString(after.err).count("定值不能为0"), 2) << after.err;  // at first, and with its count
    EXPECT_THAT(after.err, testing::ContainsRegex("（共 [0-9]+ 次）警告: 定值不能为0"));
    EXPECT_THAT(after.out, testing::ContainsRegex(
                               "1  零序电流定值 +[0-9]+\\.[0-9]  +[0-9]+\\.[0-9]{3}  A +[0-9]+\\.[0-9]{2}  310"));
    EXPECT_THAT(after.out, testing::ContainsRegex("2  动作时间 +0\\.[0-9]{2}  +0\\.[0-9]{2}  s +-  32"));
    EXPECT_THAT(after.out, testing::ContainsRegex("3  零序电流定值 +-  +-  A +-  没有适用的整定原则"));
}

TEST_F(CaseVerbs, AStageWithoutItsTimeIsNotSaved) {
    ASSERT_EQ(make("时间", {"--part", "1", "2", "--relay", "1", "2"}).code, 0);
    ASSERT_EQ(call({"case", "run", name, "时间"}).code, 0);
    QString error;
    ASSERT_TRUE(server::openConnection("QMYSQL3", name, "", "", "", "", &error)) << error.toStdString();
    EXPECT_TRUE(sql::Query().exec("UPDATE RLY_CASERDZ SET Rdz21=0,Rdz22=0 WHERE Case_No!=1 AND RNo=1 AND Cdz='t'"));
    server::closeConnection("");
    EXPECT_THAT(call({"case", "results", name, "时间"}).out, HasSubstr("错误: 动作时间没有结果"));
    const std::string before = call({"export", "settings", name}).out;
    const Answer refused = call({"case", "save", name, "时间"});
    EXPECT_EQ(refused.code, 3);
    EXPECT_THAT(refused.err, testing::ContainsRegex("错误: 动作时间没有结果.*侧 2 段\n"));
    EXPECT_EQ(call({"export", "settings", name}).out, before);
    EXPECT_EQ(call({"case", "save", name, "时间", "--force"}).code, 0);
    EXPECT_NE(call({"export", "settings", name}).out, before);
}
