#include <QRegularExpression>

#include "programs/frame/StageColumns.h"
#include "tests/flow/DemoStudy.h"

/// Calculations of one case and of its copy with the programs that are delivered.
class CaseCopies : public DemoStudy {
  protected:
    void SetUp() override {
        DemoStudy::SetUp();
        places.programDir = QString(MORVANE_BIN_DIR) + "/";
        QVector<RelayRequest> requests;
        for (const Location& at : RelayStore::locations(6)) requests.append({at, 3, 240, 2200, {}});
        ASSERT_EQ(RelayStore::install(requests), requests.size());
        for (const InstalledRelay& relay : RelayStore::list(3)) relays << relay.RNo;
        ASSERT_TRUE(cases.UpdateCaseChain(1));
        makeCase(3, relays, 1);
        exec("UPDATE RLY_CASE_RLY SET PartFlg2=1,PartFlg3=1,PartFlg4=1");
        ASSERT_TRUE(cases.UpdateCaseChain(3));
    }
    static QStringList rows(const QString& text) {
        QStringList found;
        sql::Query query;
        query.exec(text);
        while (query.next()) found << query.text(0) + ',' + query.text(1);
        return found;
    }
    static QString columns(const QString& base) { return stageColumns(base).join(",',',"); }
    /// Calculates the case and stores it. \return the settings of its relays, bit for bit
    QStringList calculated(int caseNo) {
        if (!cases.select(caseNo) || start() != "ready") return {};
        RunSession session(*cases.current(), places);
        if (!session.open() || run(session, RunSession::Automatic) != "complete" || !session.ensure()) return {};
        if (!cases.SaveRecord(1, cases.form())) return {};
        return settings(caseNo);
    }
    static QStringList settings(int caseNo) {
        return rows("SELECT CONCAT(RNo,Cdz),CONCAT(" + columns("Rdz") +
                    ") FROM RLY_CASERDZ WHERE Case_No=" + QString::number(caseNo) + " ORDER BY RNo,DzNo");
    }
    QVector<int> relays;
};

TEST_F(CaseCopies, ACopyGivesTheSameSettingsToTheLastDigitAndBothDisplaysKeepThem) {
    cases.insert(3, 0, -1, "基础方案");
    ASSERT_TRUE(cases.pasteFrom(1)) << errors.join('|').toStdString();
    const QStringList first = calculated(1);
    ASSERT_EQ(first.size(), 2 * relays.size()) << errors.join('|').toStdString();
    EXPECT_GT(first.filter(QRegularExpression("Idz,[1-9]")).size(), relays.size() / 2);
    EXPECT_TRUE(calculated(2) == first);
    ASSERT_TRUE(cases.SaveRecord(1, cases.form(false)));
    EXPECT_TRUE(settings(2) == first);
    ASSERT_TRUE(cases.select(1) && cases.LoadCaseRelays() && cases.SaveRecord(1, cases.form(false)));
    EXPECT_TRUE(settings(1) == first);
}
