#include <QRegularExpression>

#include "tests/gui/workflow/RunWindow.h"

namespace {

/// Zero-sequence relays at both ends of the 110 kV lines of a public network, parts 1 and 2.
class RunWindowOnMiniGrid : public RunWindow {
  protected:
    void SetUp() override {
        const QString networks = qEnvironmentVariable("MORVANE_SHARED_NETWORKS", MORVANE_SHARED_NETWORKS);
        const QString found = networks + "/cgmes_minigrid/BusBranch/BaseCase_v3";
        if (!QDir(found).exists()) GTEST_SKIP() << "no public networks at " << networks.toStdString();
        WorkflowWindows::SetUp();
        for (const OperatingModeRecord& mode : ModeStore::list()) ASSERT_TRUE(ModeStore::remove(mode.SysNo));
        import::Report report;
        const host::NetworkModel model = import::read(found.toStdString(), {}, report);
        ASSERT_TRUE(host::storeNetwork(model) && ModeStore::saveImported(model.modes));
        ASSERT_TRUE(SearchDumRelay());
        QVector<RelayRequest> requests;
        for (const Location& place : RelayStore::lineEnds(110)) requests.append({place, 3, 240, 1100, {}});
        ASSERT_GE(requests.size(), 12);
        ASSERT_EQ(RelayStore::install(requests), requests.size());
        makeGridCase(QString::fromStdString(model.schemes.front().name), int(requests.size()));
        ASSERT_EQ(start(), "ready") << said();
        said();
    }
    void makeGridCase(const QString& scheme, int count) {
        CaseForm form;
        form.name = "MiniGrid";
        form.source = scheme;
        for (const OperatingModeRecord& mode : ModeStore::list()) form.bigSys.append(mode.SysNo);
        form.smallSys = form.bigSys;
        form.PartFlg = {1, 1, 0, 0, 0};
        QVector<int> relays(count);
        std::iota(relays.begin(), relays.end(), 1);
        cases.insert(3, 0, -1, form.source);
        ASSERT_TRUE(cases.addRelays(form, relays) && cases.SaveRecord(1, form));
    }
};

}  // namespace

TEST_F(RunWindowOnMiniGrid, RelaysInTheNetworkHaveAFirstStageAndTheOthersAReason) {
    QString expected;
    {
        RunSession session(*cases.current(), places);
        ASSERT_TRUE(session.open());
        ASSERT_EQ(run(session, RunSession::Automatic), "complete") << said();
        expected = contents("RLY_RLYOBJ_TEM");
        ASSERT_TRUE(session.cancel());
    }
    ASSERT_EQ(start(), "ready");
    const auto shown = window();
    ASSERT_EQ(runThrough(*shown), "计算完成");
    EXPECT_EQ(contents("RLY_RLYOBJ_TEM"), expected);
    const SettingTable& table = settings(*shown);
    ASSERT_GE(table.rows().size(), 24);
    int without = 0;
    for (int relay = 1; relay <= int(table.rows().size()) / 2; ++relay) {
        const int row = table.find(relay, "Idz");
        const QString line = table.rows()[row].label;
        const double current = table.text(row, column(1)).toDouble();
        EXPECT_EQ(current, working(relay, "Idz").toDouble());
        EXPECT_EQ(current == 0, line.startsWith("XQ2-N5")) << line.toStdString();
        without += current == 0;
    }
    // The line to a network that is switched off: its relays are told, not set to anything.
    EXPECT_EQ(without, 2);
    EXPECT_EQ(messages.filter(QRegularExpression("^XQ2-N5线.*保护没有参加计算")).isEmpty(), false);
    takeScreenshot(*shown, "run-minigrid");
}
