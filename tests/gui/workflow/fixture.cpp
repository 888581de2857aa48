#include "tests/gui/workflow/WorkflowWindows.h"

TEST_F(WorkflowWindows, ARunWithTheRealProgramsGivesSettings) {
    installAt({"青白I", "青龙"}, 3);
    makeCase(3, {1, 2}, 1);
    ASSERT_EQ(start(), "ready") << said();
    RunSession session(*cases.current(), places);
    ASSERT_TRUE(session.open());
    EXPECT_EQ(run(session, RunSession::Automatic), "complete") << said();
    EXPECT_GT(value("SELECT MIN(NDz11) FROM RLY_RLYOBJ_TEM WHERE Cdz='Idz'").toDouble(), 100);
    EXPECT_TRUE(session.cancel());
}
