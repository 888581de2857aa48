#include <QTemporaryDir>
#include <set>

#include "engines/rules/RuleCheck.h"
#include "exchange/FileNames.h"
#include "exchange/RuleFile.h"
#include "exchange/TextFile.h"
#include "platform/sql/Sql.h"
#include "programs/engine/CRelayInputCal.h"
#include "programs/frame/RuleLibrary.h"
#include "tests/frame/ServerFixture.h"

namespace {

/// The delivered rules as the engine reads them.
class RuleLanguageTest : public ServerFixture {
  protected:
    void SetUp() override {
        ServerFixture::SetUp();
        QString error;
        ASSERT_TRUE(RuleLibrary::load(MORVANE_SOURCE_DIR "/data/rules", tables::ruleConnection, &error))
            << error.toStdString();
    }
    std::vector<exchange::RuleBlock> written(int relayType, int mode) {
        const QString workDir = directory.path() + "/";
        EXPECT_TRUE(CRelayInputCal(relayType, workDir, 1).WriteRuleFile(relayType, mode));
        const std::string path = workDir.toStdString() + exchange::file::kRules;
        return exchange::parseRules(exchange::readAll(path), exchange::file::kRules);
    }
    QTemporaryDir directory;
};

TEST_F(RuleLanguageTest, TheEngineAcceptsEveryDeliveredRule) {
    std::set<int> accepted;
    const auto take = [&](const std::vector<exchange::RuleBlock>& rules) {
        for (const exchange::RuleBlock& rule : rules) {
            EXPECT_NO_THROW(engines::checkRule(rule)) << rule.ruleNo;
            accepted.insert(rule.ruleNo);
        }
    };
    sql::Query types(tables::ruleConnection);
    ASSERT_TRUE(types.exec("SELECT DISTINCT RTypeNo FROM RTYPERULE WHERE RTypeNo>0"));
    while (types.next()) take(written(types.number(0), 1));
    take(written(1, 2));
    EXPECT_EQ(static_cast<int>(accepted.size()),
              sql::scalar(tables::ruleConnection, "SELECT COUNT(*) FROM RULEINF").toInt());
}

}  // namespace
