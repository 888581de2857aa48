#include "tests/flow/DemoStudy.h"

namespace {

/// What the programs are given for the demonstration network, held byte for byte. The case has two relays of one type
/// on 220 kV lines, part 2 only, so that both steps of the run have the same kind of rules and the second one is given
/// the branch coefficients of the first. The programs are scripts with fixed answers; the files are those of the second
/// step. With MORVANE_WRITE_GOLDEN=1 in the environment the kept files are written anew.
class GoldenFiles : public DemoStudy {
  protected:
    void SetUp() override {
        DemoStudy::SetUp();
        places.rtdbName = "演示工程";
        places.rtdbPath = "../演示工程";
        program("VASKEL.EXE", "exit 0");
        program("QORDEN.EXE", "printf '0, 2,\\r\\n1,\\r\\n2,\\r\\n' > RELAY.R8");
        program("HALDERN.EXE",
                "step=step$(ls -d step* 2>/dev/null | wc -l); mkdir $step\n"
                "cp RELAY.R[0-7] RRULE.DAT RTDB.INC $step\n"
                "printf '1,1,2,%s,1234.5678,0.3,\\r\\n1,1,2,%s,987.6,0.6,\\r\\n' $(cat rules) > RELAY.RP1\n"
                "printf '0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,\\r\\n1,2,3,4,1,5,6,7,8,0.512345,9,21,1,1.25,9,0,2,\\r\\n"
                "2, 2, 3, 4, 1, 5, 6, 7, 8, 1e-05, 9, 21, 1, 0.75, 9, 0, 2, \\r\\n' > RELAY.RP3\n"
                ": > RELAY.RP2; : > RELAY.RP5");
    }

    /// Relays 1 and 2 of the case, and one at every other end of a 220 kV line.
    void installRelays(int type) {
        installAt({"青白I", "青龙"}, type);
        QVector<RelayRequest> requests;
        for (const Location& at : RelayStore::lineEnds(220)) requests.append({at, type, 240, 2200, {}});
        ASSERT_EQ(RelayStore::install(requests), 12);
        exec("UPDATE RLY_RDZ SET NRdz21=RNo*1000+0.125,NRdz31=0.000001,NRdz41=123456.789012 WHERE RNo>2");
    }

    /// The rules of part 2 that coordinate with neighbours; the first one also takes faults, in both kinds of modes.
    void chooseRules(int type, int first, int second) {
        sql::Query rules(tables::ruleConnection);
        ASSERT_TRUE(rules.exec("UPDATE RULEINF SET SFlg=3 WHERE RuleNo=?", {first}));
        ASSERT_TRUE(rules.exec("INSERT INTO RMU VALUES (?,1,8),(?,2,7)", {first, first}));
        makeCase(type, {1, 2}, 2);
        ASSERT_TRUE(cases.setOutages({2}, {"龙石", "龙泉1号主变"}));
        exec("UPDATE RLY_CASEINF SET RValid=0 WHERE RuleNo NOT IN (?,?)", {first, second});
        QFile numbers(places.workDir + "rules");
        ASSERT_TRUE(numbers.open(QIODevice::WriteOnly));
        numbers.write(QByteArray::number(first) + " " + QByteArray::number(second));
    }

    void defineFaults(int ruleNo) {
        const Location fault = place("龙平", 1), main = place("龙石", 1), outage = place("龙平", 1);
        exec(
            "INSERT INTO RLY_RUDRM (RNo,PNo,RuleNo,RMode,MType,ID_Name,I_Name,J_Name,K_Loc,FType,R,X,Valid,Flg) VALUES "
            "(2,2,?,1,3,?,?,?,35,4,0.05,0.125,1,1)",
            {ruleNo, fault.ID_Name, fault.I_Name, fault.J_Name});
        exec("INSERT INTO RLY_FZXS (FzNo,ID_Name,I_Name,J_Name,Side,Valid,Flg) VALUES (4,?,?,?,1,1,1)",
             {main.ID_Name, main.I_Name, main.J_Name});
        exec("INSERT INTO RLY_FZXSRM (FzNo,MType,ID_Name,FIName,FJName,K_Loc,FType,R,X) VALUES (4,2,?,?,?,90,2,0,0.01)",
             {main.ID_Name, main.I_Name, main.J_Name});
        exec("INSERT INTO RLY_FZXSSYS (Case_No,ZID_Name,ZI_Name,ZJ_Name,Side,SysName,SysNo) VALUES (1,?,?,?,1,?,?)",
             {main.ID_Name, main.I_Name, main.J_Name, "最小方式", ModeStore::numberOf("最小方式")});
        exec(
            "INSERT INTO RLY_CKFCHK (Case_No,ZID_Name,ZI_Name,ZJ_Name,Side,ID_Name,I_Name,J_Name) VALUES "
            "(1,?,?,?,1,?,?,?)",
            {main.ID_Name, main.I_Name, main.J_Name, outage.ID_Name, outage.I_Name, outage.J_Name});
    }

    void calculate() {
        ASSERT_EQ(start(), "ready") << errors.join('|').toStdString();
        RunSession session(*cases.current(), places);
        ASSERT_TRUE(session.open());
        ASSERT_EQ(run(session, RunSession::Automatic), "complete") << errors.join('|').toStdString();
        ASSERT_EQ(session.failedSteps(), 0);
        ASSERT_TRUE(session.ensure());
        ASSERT_EQ(QDir(places.workDir).entryList({"step*"}).size(), 2);
    }

    static QByteArray bytes(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll();
    }
    /// The first line that differs is shown.
    void compare(const QString& name, const QString& keptAs) const {
        const QString kept = MORVANE_SOURCE_DIR "/tests/flow/golden/" + keptAs;
        const QString written = places.workDir + "step1/" + name;
        if (qEnvironmentVariableIntValue("MORVANE_WRITE_GOLDEN") == 1) {
            QFile::remove(kept);
            EXPECT_TRUE(QFile::copy(written, kept)) << kept.toStdString();
        }
        const QList<QByteArray> is = bytes(written).split('\n'), should = bytes(kept).split('\n');
        EXPECT_EQ(is.size(), should.size()) << name.toStdString();
        for (qsizetype k = 0; k < std::min(is.size(), should.size()); ++k)
            ASSERT_EQ(is[k].toPercentEncoding(" ,'\"").toStdString(),
                      should[k].toPercentEncoding(" ,'\"").toStdString())
                << name.toStdString() << ", line " << k + 1 << ": " << sql::fromGbk(is[k]).toStdString();
    }
};

TEST_F(GoldenFiles, OfZeroSequenceRelays) {
    installRelays(3);
    chooseRules(3, 3201, 3202);
    defineFaults(3201);
    calculate();
    for (const char* name :
         {"RELAY.R0", "RELAY.R1", "RELAY.R2", "RELAY.R3", "RELAY.R4", "RELAY.R6", "RELAY.R7", "RRULE.DAT", "RTDB.INC"})
        compare(name, name);
}

TEST_F(GoldenFiles, OfDistanceRelaysWhereTheyDiffer) {
    installRelays(1);
    chooseRules(1, 1201, 1202);
    calculate();
    for (const char* name : {"RELAY.R1", "RELAY.R2", "RRULE.DAT"}) compare(name, QString("distance.") + name);
}

}  // namespace
