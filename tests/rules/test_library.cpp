#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/sql/Sql.h"
#include "programs/frame/RuleLibrary.h"
#include "tests/frame/ServerFixture.h"

namespace {

const QString delivered = QStringLiteral(MORVANE_SOURCE_DIR "/data/rules");

class RuleLibraryTest : public ServerFixture {
  protected:
    void loadDelivered() {
        QString error;
        ASSERT_TRUE(RuleLibrary::load(delivered, tables::ruleConnection, &error)) << error.toStdString();
    }
    /// The faults found after one statement has spoilt the delivered library.
    QString faultsAfter(const QString& statement) {
        loadDelivered();
        EXPECT_TRUE(sql::Query(tables::ruleConnection).exec(statement)) << statement.toStdString();
        return RuleLibrary::faults(tables::ruleConnection).join("; ");
    }
    int rows(const QString& table) {
        return sql::scalar(tables::ruleConnection, "SELECT COUNT(*) FROM " + table).toInt();
    }
};

TEST_F(RuleLibraryTest, TheDeliveredLibraryIsSound) {
    loadDelivered();
    const QStringList faults = RuleLibrary::faults(tables::ruleConnection);
    EXPECT_TRUE(faults.isEmpty()) << faults.join("\n").toStdString();
    EXPECT_EQ(sql::scalar(tables::ruleConnection, "SELECT RTypeCode FROM RTYPE ORDER BY RTypeNo,DzNo").toString(),
              "虚拟保护");
    EXPECT_GT(rows("RULEINF"), 20);
}

TEST_F(RuleLibraryTest, LoadingTwiceReplaces) {
    loadDelivered();
    const int before = rows("VARIN");
    loadDelivered();
    EXPECT_EQ(rows("VARIN"), before);
}

TEST_F(RuleLibraryTest, EachKindOfFaultInALibraryIsFound) {
    const QPair<QString, QString> cases[] = {
        {"UPDATE RULE SET X2='I9' WHERE RuleNo=1101 AND Line_No=1", "操作数 I9 没有定义"},
        {"UPDATE RULE SET Y='O7' WHERE RuleNo=1101 AND Line_No=1", "结果 O7 没有定义"},
        {"DELETE FROM PARAINF WHERE RuleNo=1201 AND KNo=2", "NPar 与 PARAINF 不符"},
        {"UPDATE RTYPERULE SET RPartNo=5 WHERE RuleNo=3401", "规则的段号超出保护类型的段数"},
        {"UPDATE VAROUT SET Cdz='Udz' WHERE RuleNo=3101 AND DzNo=1", "规则的输出不是该保护类型的定值"},
        {"DELETE FROM RMU WHERE RuleNo=21", "故障计算没有模板"},
        {"DELETE FROM FZPRM WHERE PatNo=2", "缺少分支系数模板"},
        {"UPDATE USEFKLM SET DRuleNo=77 WHERE RTypeNo=3 AND PNo=2", "灵敏度校验的规则或方式有误"},
        {"UPDATE MODEINF SET Note='' WHERE RuleNo=3101", "计算说明应当只写在故障计算的第一步"},
    };
    for (const auto& [statement, expected] : cases)
        EXPECT_TRUE(faultsAfter(statement).contains(expected)) << statement.toStdString();
}

TEST_F(RuleLibraryTest, ADamagedFileIsRefusedWithItsLineAndNothingChanges) {
    loadDelivered();
    QTemporaryDir folder;
    for (const QString& name : QDir(delivered).entryList(QDir::Files))
        ASSERT_TRUE(QFile::copy(delivered + "/" + name, folder.filePath(name)));
    QFile file(folder.filePath("RTYPE.csv"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("RTypeNo,RTypeCode,RType,NPart,DzNo,Cdz,VType,DspCdz\n0,虚拟保护,x,0,1,V,0,虚拟保护\n");
    file.close();
    QString error;
    EXPECT_FALSE(RuleLibrary::load(folder.path(), tables::ruleConnection, &error));
    EXPECT_TRUE(error.contains("RTYPE.csv:2:")) << error.toStdString();
    EXPECT_EQ(rows("RTYPE"), 11);
}

}  // namespace
