#include <signal.h>

#include <QFile>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <thread>

#include "platform/host/BaseTables.h"
#include "tests/host/HostFixture.h"
#include "tests/host/SampleNetwork.h"

namespace {

using host::NetworkModel;
using NetworkStore = HostFixture;

/// All fields of an element in one text, numbers exactly.
class Text {
  public:
    template <class... Value>
    explicit Text(const Value&... values) {
        (add(values), ...);
    }
    std::string text;

  private:
    void add(const std::string& value) { text += value + "|"; }
    void add(double value) {
        char digits[40];
        std::snprintf(digits, sizeof digits, "%a|", value);
        text += digits;
    }
};

std::string windingText(const host::Winding& w) {
    return Text(w.node, w.ratedKv, w.ratedMva, int(w.grounding), w.rn, w.xn).text;
}

std::vector<std::string> branchTexts(const NetworkModel& m) {
    std::vector<std::string> all;
    for (const auto& l : m.lines) {
        all.push_back(Text(l.name, l.i, l.j, l.r1, l.x1, l.b1, l.r0, l.x0, l.b0, l.lengthKm, l.ratedA, l.maxLoadA,
                           l.openAtI, l.openAtJ, l.inService, l.endTemperature)
                          .text);
    }
    for (const auto& t : m.transformers2) {
        all.push_back(Text(t.name, windingText(t.i), windingText(t.j), t.r1, t.x1, t.r0, t.x0, t.tapRatio, t.phaseShift,
                           t.tapChanger, t.phaseShifter, t.maxLoadA, t.inService, t.unit)
                          .text);
    }
    for (const auto& t : m.transformers3) {
        all.push_back(Text(t.name, t.star, t.tapChanger, t.inService).text);
        for (int k = 0; k < 3; ++k) {
            all.push_back(windingText(t.winding[k]) + Text(t.r1[k], t.x1[k], t.r0[k], t.x0[k]).text);
        }
    }
    for (const auto& u : m.mutuals) {
        all.push_back(
            Text(u.first, u.second, u.r0, u.x0, u.sense, u.firstFrom, u.firstTo, u.secondFrom, u.secondTo).text);
    }
    for (const auto& s : m.switches) all.push_back(Text(s.name, s.i, s.j, s.breaker, s.closed).text);
    return all;
}

std::vector<std::string> otherTexts(const NetworkModel& m) {
    std::vector<std::string> all;
    for (const auto& s : m.stations) all.push_back(Text(s.name, s.x, s.y, s.hasPosition).text);
    for (const auto& n : m.nodes) {
        all.push_back(
            Text(n.name, n.baseKv, n.nodeType, n.bus, n.physicalBus, n.station, n.x, n.y, n.hasPosition, n.vMinKv)
                .text);
    }
    for (const auto& g : m.generators) {
        all.push_back(Text(g.name, g.node, g.ratedMva, g.ratedKv, g.cosPhi, g.r1, g.x1, g.r0, g.x0, g.grounded, g.rn,
                           g.xn, g.pMw, g.qMvar, g.kind, g.inService, g.voltageRange, g.ikMaxKa, g.ikMinKa)
                          .text);
    }
    for (const auto& s : m.shunts) {
        all.push_back(Text(s.name, s.node, s.x1, s.r0, s.x0, s.grounded, s.ratedMvar, s.ratedKv, s.inService).text);
    }
    for (const auto& l : m.loads) all.push_back(Text(l.name, l.node, l.pMw, l.qMvar, l.inService).text);
    return all;
}

std::vector<std::string> caseTexts(const NetworkModel& m) {
    std::vector<std::string> all;
    for (const auto& s : m.schemes) {
        all.push_back(s.name);
        for (const auto& c : s.changes) all.push_back(Text(c.table, c.element, c.inService).text);
    }
    for (const auto& c : m.loadFlow) {
        all.push_back(Text(c.number, c.name, c.scheme).text);
        for (const auto& n : c.nodes) all.push_back(Text(n.node, n.vMag, n.vAngle).text);
        for (const auto& g : c.generators) all.push_back(Text(g.element, g.pMw, g.qMvar).text);
    }
    std::sort(all.begin(), all.end());
    return all;
}

void expectSame(const NetworkModel& stored, const NetworkModel& model) {
    EXPECT_EQ(branchTexts(stored), branchTexts(model));
    EXPECT_EQ(otherTexts(stored), otherTexts(model));
    EXPECT_EQ(caseTexts(stored), caseTexts(model));
}

QStringList column(const QString& text) {
    sql::Query query;
    EXPECT_TRUE(query.exec(text));
    QStringList values;
    while (query.next()) values << query.raw(0);
    return values;
}

TEST_F(NetworkStore, GivesBackEveryFieldOfEveryElementInTheDeliveredOrder) {
    NetworkModel model = sample::network();
    model.lines[1].r0 = model.lines[1].x0 = std::numeric_limits<double>::quiet_NaN();
    model.lines[1].openAtJ = true;
    ASSERT_TRUE(host::storeNetwork(model)) << messages.join('\n').toStdString();
    const auto stored = host::loadNetwork();
    ASSERT_TRUE(stored);
    expectSame(*stored, model);
}

TEST_F(NetworkStore, TablesOfAnEarlierVersionGetTheColumnsTheyLackAndKeepTheirRows) {
    NetworkModel model = sample::network();
    ASSERT_TRUE(host::storeNetwork(model));
    const std::pair<const char*, const char*> later[] = {{"CDB_ACLINEBAK", "DROP COLUMN End_Temp"},
                                                         {"CDB_TRANS_2WBAK", "DROP COLUMN Unit"},
                                                         {"CDB_GENERATBAK", "DROP COLUMN V_Range,DROP COLUMN Ik_Max"}};
    for (const auto& [table, columns] : later)
        ASSERT_TRUE(sql::Query().exec(QString("ALTER TABLE ") + table + " " + columns));
    ASSERT_TRUE(host::createBaseTables());
    const auto stored = host::loadNetwork();
    ASSERT_TRUE(stored) << messages.join('\n').toStdString();
    model.lines[0].endTemperature = 0;
    model.transformers2[1].unit = false;
    model.generators[0].voltageRange = model.generators[0].ikMaxKa = 0;
    expectSame(*stored, model);
    EXPECT_TRUE(host::storeNetwork(sample::network()));
    expectSame(*host::loadNetwork(), sample::network());
}

TEST_F(NetworkStore, ReplacesTheNetworkThatWasThereWithItsCases) {
    ASSERT_TRUE(host::storeNetwork(sample::network()));
    NetworkModel smaller = sample::network();
    smaller.lines.pop_back();
    smaller.mutuals.clear();
    smaller.loadFlow.pop_back();
    ASSERT_TRUE(host::storeNetwork(smaller)) << messages.join('\n').toStdString();
    expectSame(*host::loadNetwork(), smaller);
    EXPECT_EQ(column("SHOW TABLES LIKE 'L2%'").size(), 2);
    EXPECT_EQ(column("SELECT Case_No FROM LF_CASE ORDER BY Case_No"), (QStringList{"0", "1"}));
    EXPECT_EQ(column("SELECT Case_No FROM ST_CASE"), QStringList{"0"});
}

TEST_F(NetworkStore, KeepsTheOldNetworkWhenTheNewOneCannotBeStored) {
    const NetworkModel model = sample::network();
    ASSERT_TRUE(host::storeNetwork(model));
    NetworkModel twice = model, blank = model, foreign = model, lateFault = model, noScheme = model;
    twice.lines[1].name = twice.lines[0].name;
    blank.nodes[0].name = "尾空格 ";
    foreign.loads[0].name = "😀";
    lateFault.loadFlow[1].name = lateFault.loadFlow[0].name;
    noScheme.schemes.clear();
    for (const NetworkModel& bad : {twice, blank, foreign, lateFault, noScheme}) {
        messages.clear();
        EXPECT_FALSE(host::storeNetwork(bad));
        EXPECT_EQ(messages.size(), 1) << messages.join('\n').toStdString();
        expectSame(*host::loadNetwork(), model);
    }
}

TEST_F(NetworkStore, GivesEveryBranchANumberOfItsOwnThatIsTheSameInAllCases) {
    ASSERT_TRUE(host::storeNetwork(sample::network()));
    const QString all = "SELECT ID_No FROM L2_%1 UNION ALL SELECT ID_No FROM L3_%1 ORDER BY ID_No";
    EXPECT_EQ(column(all.arg(0)), (QStringList{"1", "2", "3", "4", "5", "6", "7", "8", "9"}));
    const QString named = "SELECT CONCAT(ID_No,ID_Name,I_Name,J_Name,NType) FROM %1_%2 ORDER BY ID_No";
    for (const char* table : {"L2", "L3"}) {
        EXPECT_EQ(column(named.arg(table).arg(0)), column(named.arg(table).arg(4)));
        EXPECT_EQ(column(named.arg(table).arg(0)), column(named.arg(table).arg(1)));
    }
    EXPECT_EQ(column("SELECT CONCAT(I_Name,'>',J_Name,NType) FROM L3_0 WHERE NType>30 ORDER BY ID_No"),
              (QStringList{QString::fromStdString(sample::kStar + ">" + sample::kBarA + "31"),
                           QString::fromStdString(sample::kStar + ">" + sample::kMiddleNode + "32"),
                           QString::fromStdString(sample::kStar + ">" + sample::kLowNode + "33")}));
    EXPECT_EQ(column("SELECT SIGN(X1) FROM L2_0 WHERE NType=3 AND I_Name=J_Name ORDER BY ID_No"),
              (QStringList{"-1", "1"}));
}

TEST_F(NetworkStore, AppliesTheSchemeOfEachCase) {
    ASSERT_TRUE(host::storeNetwork(sample::network()));
    const QString line = QString::fromStdString(sample::kLine1);
    const QString inService = "SELECT GROUP_CONCAT(Valid ORDER BY %2) FROM %1";
    EXPECT_EQ(column(inService.arg("L2_4", "ID_No")), QStringList{"1,1,1,1"});
    EXPECT_EQ(column(inService.arg("L2_1", "ID_No")), QStringList{"0,1,1,0"});
    EXPECT_EQ(column(inService.arg("L3_1", "ID_No")), QStringList{"1,1,0,0,0"});
    EXPECT_EQ(column(inService.arg("L5_1", "ID_Name")), QStringList{"0"});
    EXPECT_EQ(column("SELECT Closed FROM L7_1 ORDER BY Breaker"), (QStringList{"0", "0"}));
    EXPECT_EQ(column("SELECT Closed FROM L7_0 ORDER BY Breaker"), (QStringList{"0", "1"}));
}

TEST_F(NetworkStore, AServerKilledWhileStoringLeavesTheOldNetworkWhole) {
    const NetworkModel model = sample::network();
    ASSERT_TRUE(host::storeNetwork(model));
    NetworkModel large = model;
    for (int k = 0; k < 60000; ++k)
        large.loads.push_back({QString("L%1").arg(k).toStdString(), sample::kMiddleNode, 1.0 * k, 2, true});
    QFile pidFile(column("SELECT @@pid_file").value(0));
    ASSERT_TRUE(pidFile.open(QIODevice::ReadOnly)) << pidFile.fileName().toStdString();
    const pid_t pid = pidFile.readAll().trimmed().toInt();
    ASSERT_GT(pid, 1);
    std::thread killer([pid] {
        std::this_thread::sleep_for(std::chrono::milliseconds(250));
        kill(pid, SIGKILL);
    });
    const bool stored = host::storeNetwork(large);
    killer.join();
    EXPECT_EQ(messages.size(), stored ? 0 : 1) << messages.join('\n').toStdString();
    const auto after = host::loadNetwork();
    ASSERT_TRUE(after) << messages.join('\n').toStdString();
    expectSame(*after, stored ? large : model);
    EXPECT_TRUE(host::storeNetwork(model)) << messages.join('\n').toStdString();
}

struct Connection {
    host::Grounding i, j;
    int path;
    double x0;  ///< zero-sequence reactance with the neutrals of the path
};

TEST_F(NetworkStore, TakesTheZeroSequencePathFromTheGroundings) {
    using host::Grounding;
    // 12.1 ohm at 110 kV is 0.1 per unit, 1 ohm at 10 kV is 1 per unit, three times each; x0 of the transformer is 0.2.
    const Connection cases[] = {
        {Grounding::Grounded, Grounding::Grounded, 3, 3.5}, {Grounding::Grounded, Grounding::Delta, 1, 0.5},
        {Grounding::Delta, Grounding::Grounded, 2, 3.2},    {Grounding::Grounded, Grounding::Isolated, 0, 0.5},
        {Grounding::Isolated, Grounding::Grounded, 0, 3.2}, {Grounding::Delta, Grounding::Delta, 0, 0.2},
        {Grounding::Isolated, Grounding::Delta, 0, 0.2},
    };
    for (const Connection& c : cases) {
        NetworkModel model = sample::network();
        auto& t = model.transformers2[1];
        t.i.grounding = c.i, t.j.grounding = c.j;
        t.x0 = 0.2, t.i.xn = 12.1, t.j.xn = 1;
        ASSERT_TRUE(host::storeNetwork(model));
        sql::Query query;
        ASSERT_TRUE(query.exec("SELECT ZCtype,X0 FROM S3_0 WHERE ID_Name=?", {QString::fromStdString(t.name)}));
        ASSERT_TRUE(query.next());
        EXPECT_EQ(query.number(0), c.path) << int(c.i) << int(c.j);
        EXPECT_NEAR(query.real(1), c.x0, 1e-12) << int(c.i) << int(c.j);
    }
    EXPECT_EQ(column("SELECT ZCtype FROM S3_0 WHERE I_Name='主变\\'中性点' ORDER BY ID_No"),
              (QStringList{"3", "0", "1"}));
    EXPECT_EQ(column("SELECT CAST(ROUND(100*X0) AS INT) FROM S3_0 WHERE I_Name='主变\\'中性点' ORDER BY ID_No"),
              (QStringList{"33", "8", "-2"}));
    EXPECT_EQ(column("SELECT ROUND(X0,9) FROM S5_0"), QStringList{"1.7"});
}

}  // namespace
