#include <gtest/gtest.h>

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include "programs/frame/WinDLgSearch.h"
#include "programs/frame/ui/CBaseDialog.h"
#include "programs/frame/ui/CBrowseBaseDialog.h"
#include "programs/frame/ui/PaintTable.h"
#include "tests/gui/Screenshot.h"

namespace {

/// Writes down which of its slots were called.
class Recorder : public QDialog {
    Q_OBJECT
  public:
    QStringList calls;
    CBaseDialog* frame = nullptr;

  public slots:
    void ToolButton_PrevRec_clicked() { calls << "PrevRec"; }
    void ToolButton_NextRec_clicked() { calls << "NextRec"; }
    void ToolButton_FirstRec_clicked() { calls << "FirstRec"; }
    void ToolButton_LastRec_clicked() { calls << "LastRec"; }
    void ToolButton_InsertRec_clicked() { calls << "InsertRec"; }
    void ToolButton_DeleteRec_clicked() { calls << "DeleteRec"; }
    void ToolButton_CopyRec_clicked() { calls << "CopyRec"; }
    void ToolButton_PasteRec_clicked() { calls << "PasteRec"; }
    void ToolButton_SearchRec_clicked() { calls << "SearchRec"; }
    void ToolButton_RecoverAll_clicked() { calls << "RecoverAll"; }
    void ToolButton_Browse_clicked() { calls << "Browse"; }
    void ToolButton_Export_clicked() { calls << "Export"; }
    void Button_OK_clicked() { calls << "OK"; }
    void Button_Cancel_clicked() { calls << "Cancel"; }
};

/// Has three of the slots only.
class Half : public QDialog {
    Q_OBJECT
  public slots:
    void ToolButton_NextRec_clicked() {}
    void ToolButton_SortRec_clicked() {}
    void Button_OK_clicked() {}
};

/// Shortcuts work in the active window alone.
bool becomesActive(QWidget& window) {
    window.activateWindow();
    return QTest::qWaitForWindowActive(&window);
}

int search(const QStringList& items, const std::function<void(WinDLgSearch&)>& act) {
    WinDLgSearch dialog(items, 5);
    QTimer::singleShot(0, [&] { act(dialog); });
    dialog.exec();
    return WinDLgSearch::iSearchResult;
}

const QStringList kItems{"L1线 A侧 ", " l1线 B侧 ", "L2线 A侧 ", "L1线 C侧 "};

}  // namespace

TEST(RecordFrame, EveryButtonCallsTheSlotOfItsName) {
    Recorder window;
    CBaseDialog frame(&window, "frame");
    const QStringList tips{"前移一条记录", "后移一条记录", "到第一条记录", "到最后一条记录",
                           "增加一条记录", "删除一条记录", "拷贝当前记录", "粘贴到当前记录",
                           "查找一条记录", "取消本次修改", "浏览所有记录", "输出记录信息"};
    window.resize(640, 300);
    takeScreenshot(window, "record_frame");
    window.show();
    ASSERT_FALSE(frame.PasteRec->isEnabled());
    QStringList expected;
    int place = 0;
    for (QToolButton* button : frame.all()) {
        EXPECT_EQ(button->toolTip(), tips[place++]);
        EXPECT_EQ(button->size(), QSize(24, 24));
        EXPECT_FALSE(button->icon().pixmap(24, 24).toImage().allGray() && button->icon().isNull());
        QTest::mouseClick(button, Qt::LeftButton);
        expected << button->objectName().section('_', 1);
    }
    EXPECT_EQ(window.calls.size(), 12);
    EXPECT_EQ(window.calls, expected);
    EXPECT_TRUE(frame.PasteRec->isEnabled()) << "a copy enables it";
    window.calls.clear();
    QTest::mouseClick(frame.Button_OK, Qt::LeftButton);
    QTest::mouseClick(frame.Button_Cancel, Qt::LeftButton);
    ASSERT_TRUE(becomesActive(window));
    QTest::keyClick(&window, Qt::Key_PageDown, Qt::ControlModifier);  // presses the button for a moment
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.calls.size() > 2; }, 2000));
    EXPECT_EQ(window.calls, (QStringList{"OK", "Cancel", "NextRec"}));
}

TEST(RecordFrame, AButtonWithoutItsSlotIsHidden) {
    Half window;
    CBaseDialog frame(&window);
    window.show();
    EXPECT_TRUE(frame.NextRec->isVisible() && frame.Button_OK->isVisible());
    EXPECT_FALSE(frame.PrevRec->isVisible() || frame.Export->isVisible() || frame.Button_Cancel->isVisible());
    Half browser;
    CBrowseBaseDialog browse(&browser);
    browser.show();
    EXPECT_TRUE(browse.SortRec->isVisible());
    EXPECT_FALSE(browse.WinConfig->isVisible());
    EXPECT_EQ(browse.SearchRec->toolTip(), "查找记录 Ctrl+F");
}

TEST(Search, FindsTheFirstByCaseAndGivesTheCurrentRow) {
    EXPECT_EQ(search(kItems,
                     [](WinDLgSearch& dialog) {
                         takeScreenshot(dialog, "search");
                         EXPECT_EQ(dialog.table_Key->horizontalHeaderItem(0)->text(), "主干支路");
                         dialog.lineEdit_Search->setText("  l1线 ");
                         dialog.lineEdit_Search->setFocus();
                         QTest::keyClick(dialog.lineEdit_Search, Qt::Key_Return);
                         EXPECT_TRUE(dialog.isVisible()) << "Enter in the line only searches";
                         EXPECT_EQ(dialog.table_Key->currentRow(), 1);
                         EXPECT_TRUE(dialog.table_Key->item(1, 0)->isSelected());
                         QTest::mouseClick(dialog.pushButton_Ensure, Qt::LeftButton);
                     }),
              1);
    EXPECT_EQ(search(kItems,
                     [](WinDLgSearch& dialog) {
                         dialog.lineEdit_Search->setText("L1");
                         for (int i = 0; i < 2; ++i) QTest::mouseClick(dialog.pushButton_Select, Qt::LeftButton);
                         EXPECT_EQ(dialog.table_Key->currentRow(), 0) << "the button looks from the first row";
                         EXPECT_TRUE(becomesActive(dialog));
                         QTest::keyClick(&dialog, Qt::Key_F3);
                         EXPECT_EQ(dialog.table_Key->currentRow(), 3);
                         dialog.table_Key->setFocus();
                         QTest::keyClick(dialog.table_Key, Qt::Key_Return);
                     }),
              3);
}

TEST(Search, CancelAndAnEmptyListGiveNothing) {
    const auto chooseAndLeave = [](WinDLgSearch& dialog) {
        dialog.Table_Key_Selected(2);
        dialog.reject();
    };
    EXPECT_EQ(search(kItems, chooseAndLeave), -1);
    EXPECT_EQ(search(kItems, [](WinDLgSearch& dialog) { dialog.close(); }), -1);
    EXPECT_EQ(search({}, [](WinDLgSearch& dialog) { dialog.PushButton_Ensure_Clicked(); }), -1);
}

#include "widgets_frames.moc"
