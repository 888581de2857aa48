#include <QFile>
#include <QTemporaryDir>

#include "platform/import/Import.h"
#include "programs/model/RelayCsv.h"
#include "programs/netview/VirtualRelays.h"
#include "tests/workflow/WorkflowFixture.h"

using testing::HasSubstr;

class Relays : public WorkflowFixture {};

TEST_F(Relays, NewRelaysHaveDefaultSettingsAndTheParametersOfTheirPlace) {
    ASSERT_EQ(RelayStore::install({request(oddName, 2, 1), request(oddName, 2, 2)}), 2);
    EXPECT_EQ(rows("SELECT Cdz,NRdz11,NRdz51,NRdz12,BRdz21,BRdz52 FROM RLY_RDZ WHERE RNo=1 ORDER BY DzNo"),
              (QStringList{"Zdz,0,0,0,0,0", "t,0.1,2,0.1,0.5,2", "L,100,100,100,100,100"}));
    EXPECT_EQ(rows("SELECT RTypeCode,RType,I_Name,J_Name,Side,CTPri,CTSec,PTPri,PTSec FROM RLY_RUD WHERE RNo=1"),
              QStringList{"线路相间距离保护,6,A,B,2,1,1,1,1"});
    EXPECT_EQ(rows("SELECT RuleNo,RFault FROM RLY_FKLM ORDER BY RuleNo"), (QStringList{"1,1", "2,1", "11,1", "12,1"}));
}

TEST_F(Relays, ASecondInstallationKeepsWhatStandsAndNumbersOn) {
    ASSERT_EQ(RelayStore::install({request("L1", 1, 3, 600, 1100)}), 1);
    ASSERT_TRUE(exec("UPDATE RLY_RDZ SET NRdz11=7 WHERE RNo=1 AND Cdz='Idz'"));
    ASSERT_TRUE(exec("UPDATE RLY_RUD SET Valid=0 WHERE RNo=1"));
    EXPECT_EQ(RelayStore::install({request("L1", 1, 3), request("L1", 2, 3), request("L1", 2, 3)}), 1);
    const auto relays = RelayStore::list(3);
    ASSERT_EQ(relays.size(), 2);
    EXPECT_FALSE(relays[0].Valid);
    EXPECT_EQ(relays[0].ctRatio, 600);
    EXPECT_EQ(relays[0].ptRatio, 1100);
    EXPECT_EQ(relays[1].RNo, 2);
    EXPECT_EQ(real("SELECT NRdz11 FROM RLY_RDZ WHERE RNo=1 AND Cdz='Idz'"), 7);
}

TEST_F(Relays, ARefusedRequestInstallsNothing) {
    const RelayRequest nowhere{{"L1", "A", "C", 1}, 1, 1, 1, "x.csv:7"};
    EXPECT_EQ(RelayStore::install({request("L1", 1, 1), nowhere}), -1);
    EXPECT_THAT(errors.join('\n').toStdString(), HasSubstr("x.csv:7"));
    EXPECT_EQ(RelayStore::install({request("L1", 1, 1), request("L1", 2, 1, 0)}), -1);
    EXPECT_THAT(errors.join('\n').toStdString(), HasSubstr("CT或PT变比不能为0"));
    EXPECT_EQ(RelayStore::install({request("L1", 1, 0)}), -1);
    EXPECT_EQ(count("RLY_RUD") + count("RLY_RDZ") + count("RLY_FKLM"), 0);
}

TEST_F(Relays, ARealRelayTakesThePlaceOfAVirtualOne) {
    ASSERT_TRUE(SearchDumRelay());
    ASSERT_EQ(count("RLY_DUMRLY", "ID_Name='L3'"), 1);
    ASSERT_EQ(RelayStore::install({request("L3", 2, 1)}), 1);
    EXPECT_EQ(count("RLY_DUMRLY", "ID_Name='L3'"), 0);
    EXPECT_EQ(count("RLY_DUMRLY"), 4);
}

TEST_F(Relays, VoltageLevelsGiveLineEndsButNotThoseAtTNodes) {
    QStringList ends;
    for (const Location& place : RelayStore::lineEnds(110)) ends << place.ID_Name + place.node();
    EXPECT_EQ(ends, (QStringList{oddName + "A", oddName + "B", "L1A", "L1B", "L3B", "L5C", "L6D"}));
    EXPECT_TRUE(RelayStore::lineEnds(220).isEmpty());
    EXPECT_TRUE(RelayStore::lineEnds(66).isEmpty());
    EXPECT_THAT(errors, testing::Contains(QString("电压等级数据有错不能选择保护")));
}

TEST_F(Relays, WindingsStandAtTheStarNode) {
    const auto places = RelayStore::locations(12);
    ASSERT_EQ(places.size(), 3);
    EXPECT_EQ(places[1], (Location{"TC", "*C", "C35", 2}));
    EXPECT_EQ(RelayStore::placesOf("TC", 2, 10).size(), 3);
    EXPECT_EQ(RelayStore::placesOf("TA", 0, 10).size(), 2);
}

TEST_F(Relays, RemovalTakesSettingsFaultsAndTheParametersOfTheType) {
    ASSERT_EQ(RelayStore::install({request(oddName, 1, 1), request(oddName, 1, 3), request("L1", 1, 1)}), 3);
    ASSERT_TRUE(exec("INSERT INTO RLY_RUDRM (RNo,RuleNo) VALUES (1,1101),(2,3101)"));
    ASSERT_TRUE(exec("INSERT INTO RLY_KLMPFAULT (ID_Name,I_Name,J_Name,Side,RuleNo) VALUES (?,?,?,1,1),(?,?,?,1,21)",
                     {oddName, "A", "B", oddName, "A", "B"}));
    ASSERT_TRUE(RelayStore::remove({1}));
    EXPECT_EQ(rows("SELECT RNo FROM RLY_RUD ORDER BY RNo"), (QStringList{"2", "3"}));
    EXPECT_EQ(count("RLY_RDZ", "RNo=1") + count("RLY_RUDRM", "RNo=1"), 0);
    EXPECT_EQ(rows("SELECT RuleNo FROM RLY_KLMPFAULT"), QStringList{"21"});
    EXPECT_EQ(count("RLY_FKLM", "ID_Name=?", {oddName}), 2);
    EXPECT_EQ(count("RLY_FKLM", "ID_Name='L1'"), 2);
}

class RelayCsv : public WorkflowFixture {
  protected:
    std::string file(const QByteArray& text) {
        QFile made(folder_.filePath("relays.csv"));
        EXPECT_TRUE(made.open(QIODevice::WriteOnly) && made.write(text) == text.size());
        return made.fileName().toStdString();
    }
    std::string refusalOf(const QByteArray& text) {
        try {
            readRelayCsv(file(text));
        } catch (const import::ImportError& error) {
            return error.what();
        }
        return "accepted";
    }

  private:
    QTemporaryDir folder_;
};

TEST_F(RelayCsv, NamesPlacesTypesAndRatios) {
    const auto requests = readRelayCsv(file("type,side,element,ct\n3,J,\"L'2\\ %d\",120\n线路相间距离保护,1,L1,\n"));
    ASSERT_EQ(requests.size(), 2);
    EXPECT_EQ(requests[0].at, (Location{oddName, "A", "B", 2}));
    EXPECT_EQ(requests[0].ctRatio, 120);
    EXPECT_EQ(requests[1].RTypeNo, 1);
    EXPECT_EQ(requests[1].ctRatio, 1);
}

TEST_F(RelayCsv, EveryRefusalNamesFileAndLine) {
    const QByteArray head = "element,side,type,ct\n";
    for (const char* row : {"L1,K,1,1", "L1,I,77,1", "L9,I,1,1", "L1,I,1,abc", "L1,I,1,0", "L1,I,1,nan", "L1,I,1"})
        EXPECT_THAT(refusalOf(head + "L1,I,1,1\n" + row + "\n"), HasSubstr("relays.csv:3: ")) << row;
    EXPECT_THAT(refusalOf("element,side,type,ctt\n"), HasSubstr("relays.csv:1: "));
    EXPECT_THAT(refusalOf("element,side\nL1,I\n"), HasSubstr("relays.csv:1: "));
}

class VirtualRelays : public WorkflowFixture {};

TEST_F(VirtualRelays, StandAtEveryLineEndOnATNodeOnce) {
    ASSERT_TRUE(exec("INSERT INTO RLY_DUMRLY (Valid,RTypeNo,ID_Name,I_Name,J_Name,Side) VALUES (0,0,'L3','B','T1',2)"));
    ASSERT_TRUE(SearchDumRelay());
    const QStringList once = {"L3,2,0", "L4,1,1", "L4,2,1", "L5,1,1", "L6,2,1"};
    const QString text = "SELECT ID_Name,Side,Valid FROM RLY_DUMRLY ORDER BY ID_Name,Side";
    EXPECT_EQ(rows(text), once);
    ASSERT_TRUE(SearchDumRelay());
    EXPECT_EQ(rows(text), once);
}
