#include "tests/gui/workflow/CaseEditor.h"

TEST_F(CaseEditor, ShowsTheCaseAskedForAndItsNeighbours) {
    store("零序", 3, {1, 2});
    store("距离", 1, {3});
    open(2);
    EXPECT_EQ(caseName(), "距离");
    takeScreenshot(*editor, "case-editor");
    tool("ToolButton_PrevRec");
    EXPECT_EQ(caseName(), "零序");
    EXPECT_EQ(relays(), "1,2");
    takeScreenshot(*editor, "case-editor-2");
}
