#include <gtest/gtest.h>

#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "platform/host/ui/NumberCell.h"
#include "programs/frame/ui/CEditButton.h"
#include "programs/frame/ui/CTableCombobox.h"
#include "programs/frame/ui/EditButton.h"
#include "programs/frame/ui/PaintTable.h"
#include "tests/gui/Screenshot.h"

namespace {

class Tables : public testing::Test {
  protected:
    void SetUp() override {
        table.setHorizontalHeaderLabels({"支路名称", "切除", "R", "有效"});
        for (int row = 0; row < 3; ++row)
            for (int column = 0; column < 4; ++column) table.setText(row, column, QString("%1%2").arg(row).arg(column));
        table.setNumberColumn(2);
        table.resize(520, 200);
        table.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&table));
    }
    QPoint middle(int row, int column) { return table.visualRect(table.model()->index(row, column)).center(); }
    /// Puts the cell under the cursor and types into it; Enter ends the edit.
    void type(int row, int column, const QString& text, Qt::Key end = Qt::Key_Return) {
        table.setCurrentCell(row, column);
        QTest::keyClick(&table, Qt::Key_F2);
        auto* editor = table.viewport()->findChild<QLineEdit*>();
        ASSERT_TRUE(editor);
        editor->selectAll();
        for (const QChar character : text) QTest::sendKeyEvent(QTest::Click, editor, Qt::Key_unknown, character, {});
        QTest::keyClick(editor, end);
        QTest::qWait(1);
    }
    QColor colourAt(int row, int column) {
        const QRect cell = table.visualRect(table.model()->index(row, column));
        return table.viewport()->grab().toImage().pixelColor(cell.topLeft() + QPoint(2, 2));
    }
    PaintTable table{3, 4};
};

}  // namespace

TEST_F(Tables, FullWidthDigitsBecomeNumbers) {
    EXPECT_EQ(host::halfWidth("－１２．５Ｅ＋３"), "-12.5E+3");
    EXPECT_EQ(host::halfWidth("0.5甲"), "0.5甲");
    QSignalSpy changed(&table, &RecordTable::valueChanged);
    type(0, 2, "－１2。5");
    EXPECT_EQ(table.text(0, 2), "-12.5");
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0][0].toInt() * 10 + changed[0][1].toInt(), 2);
    EXPECT_EQ(table.currentRow(), 1) << "Enter goes to the next row";
    type(1, 2, "7", Qt::Key_Escape);
    EXPECT_EQ(table.text(1, 2), "12") << "Esc leaves the cell as it was";
    type(1, 0, "２号");
    EXPECT_EQ(table.text(1, 0), "２号") << "names are not touched";
    table.setText(2, 2, "8");
    EXPECT_EQ(changed.size(), 2) << "the program's own changes are not told";
}

TEST_F(Tables, CopyTakesTheShownCellsOfTheSelection) {
    table.setColumnHidden(1, true);
    table.setSelectionMode(QAbstractItemView::ExtendedSelection);
    table.setText(1, 0, "a\tb\"");
    table.setRangeSelected(QTableWidgetSelectionRange(0, 0, 1, 2), true);
    QTest::keyClick(&table, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "00\t02\n\"a\tb\"\"\"\t12");
}

TEST_F(Tables, MarksAreThoseOfTheArrayInTheMarkedColumn) {
    const QColor plain = colourAt(0, 1);
    EXPECT_EQ(table.paintRows.size(), 100000U);
    table.paintColumn = 1;
    EXPECT_EQ(colourAt(0, 1), plain) << "an empty array marks nothing";
    table.paintRows[0] = 2;
    table.paintRows[1] = 0;
    table.paintRows[3] = 1;  // behind the end
    table.viewport()->update();
    EXPECT_EQ(colourAt(0, 1), QColor(Qt::green));
    EXPECT_EQ(colourAt(2, 1), QColor(Qt::green));
    EXPECT_EQ(colourAt(1, 1), plain);
    EXPECT_EQ(colourAt(2, 0), plain);
    takeScreenshot(table, "paint_table");
}

TEST_F(Tables, ChecksAndCurrentCellsAreTold) {
    table.setCheck(1, 3, false, "是");
    QSignalSpy changed(&table, &RecordTable::valueChanged);
    QSignalSpy current(&table, qOverload<int, int>(&RecordTable::currentChanged));
    table.setCurrentCell(1, 3);
    QTest::keyClick(&table, Qt::Key_Space);
    EXPECT_TRUE(table.isChecked(1, 3));
    EXPECT_EQ(changed.size(), 1);
    ASSERT_EQ(current.size(), 1);
    EXPECT_EQ(current[0][0].toInt() * 10 + current[0][1].toInt(), 13);
    table.setCheck(1, 3, false);
    EXPECT_EQ(changed.size(), 1);
    table.setReadOnly(true);
    table.setCurrentCell(0, 0);
    QTest::keyClick(&table, Qt::Key_F2);
    EXPECT_FALSE(table.viewport()->findChild<QLineEdit*>());
}

TEST_F(Tables, AnEditEndsWhenAnotherCellBecomesCurrentAndByEndEdit) {
    QSignalSpy changed(&table, &RecordTable::valueChanged);
    for (const bool move : {true, false}) {
        table.setCurrentCell(0, 0);
        QTest::keyClick(&table, Qt::Key_F2);
        auto* editor = table.viewport()->findChild<QLineEdit*>();
        ASSERT_TRUE(editor);
        editor->setText(move ? "moved" : "ended");
        move ? table.setCurrentCell(0, 1) : table.endEdit();
        QTest::qWait(1);
        EXPECT_EQ(table.text(0, 0), move ? "moved" : "ended");
    }
    EXPECT_EQ(changed.size(), 2);
}

TEST_F(Tables, ButtonCellsTellTheirRow) {
    auto* cell = new CEditButton(&table, TableEditorItem::Always);
    table.setItem(2, 0, cell);
    auto* editor = table.viewport()->findChild<EditButton*>();
    ASSERT_TRUE(editor && editor->lineEdit->isVisible());
    takeScreenshot(table, "edit_button_cell");
    EXPECT_EQ(editor->pushButton->text() + QString::number(editor->pushButton->width()), "...25");
    EXPECT_EQ(EditButton().size(), QSize(185, 20));
    QSignalSpy pressed(cell, &CEditButton::ButtonClickSingal), entered(cell, &CEditButton::LineEditEditSingal);
    QTest::mouseClick(editor->pushButton, Qt::LeftButton);
    ASSERT_EQ(pressed.size(), 1);
    EXPECT_EQ(pressed[0][0].toInt(), 2);
    table.removeRow(0);  // the cell moves up
    QString text;
    QObject::connect(cell, &CEditButton::LineEditEditSingal, &table, [&](int row) { text = table.text(row, 0); });
    editor->lineEdit->setText("线路甲");
    QTest::keyClick(editor->lineEdit, Qt::Key_Return);
    ASSERT_GE(entered.size(), 1);
    EXPECT_EQ(entered[0][0].toInt(), 1);
    EXPECT_EQ(text, "线路甲") << "the cell has the text when it is told";
    table.setText(1, 0, "线路乙");
    EXPECT_EQ(editor->lineEdit->text(), "线路乙") << "an open editor shows what the program sets";

    auto* button = new CTableButton(&table, TableEditorItem::WhenCurrent);
    table.setItem(0, 3, button);
    const auto editors = [&] { return table.viewport()->findChildren<EditButton*>(); };
    EXPECT_EQ(editors().size(), 1);
    table.setCurrentCell(0, 3);
    ASSERT_EQ(editors().size(), 2);
    EXPECT_TRUE(editors().last()->lineEdit->isHidden());
    QSignalSpy second(button, &CEditButton::ButtonClickSingal);
    QTest::mouseClick(editors().last()->pushButton, Qt::LeftButton);
    EXPECT_EQ(second.size(), 1);
    table.setCurrentCell(1, 3);
    QTest::qWait(1);
    EXPECT_EQ(editors().size(), 1);
}

TEST_F(Tables, ComboCellsTakeTheItemChosen) {
    auto* cell = new CTableCombobox(&table, TableEditorItem::Always);
    table.setItem(1, 1, cell);
    auto* combo = table.viewport()->findChild<QComboBox*>();
    ASSERT_TRUE(combo);
    EXPECT_EQ(combo->count(), 0);
    cell->insertStringList({"否", "是"});
    EXPECT_EQ(combo->count(), 2);
    EXPECT_EQ(table.text(1, 1) + combo->currentText(), "否否");
    QSignalSpy chosen(cell, &CTableCombobox::TableComboboxChanged), changed(&table, &RecordTable::valueChanged);
    QTest::keyClick(combo, Qt::Key_Down);
    ASSERT_EQ(chosen.size(), 1);
    EXPECT_EQ(chosen[0][0].toInt() * 10 + chosen[0][1].toInt(), 11);
    EXPECT_EQ(table.text(1, 1), "是");
    cell->setCurrentItem(0);
    EXPECT_EQ(combo->currentText(), "否");
    EXPECT_EQ(chosen.size(), 1) << "only the user's choice is told";
}

TEST(TableWidths, AreRememberedByTheNameOfTheTable) {
    for (const int pass : {1, 2}) {
        QWidget window;
        auto* table = new RecordTable(2, 2, &window, "table_Widths");
        table->setColumnWidth(0, 60);
        window.resize(400, 200);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        EXPECT_EQ(table->columnWidth(0) > 100, pass == 2);
        QHeaderView* header = table->horizontalHeader();
        const QPoint edge(header->sectionPosition(1) - 1, header->height() / 2);
        QTest::mousePress(header->viewport(), Qt::LeftButton, {}, edge);
        QMouseEvent drag(QEvent::MouseMove, edge + QPoint(70, 0), header->viewport()->mapToGlobal(edge + QPoint(70, 0)),
                         Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(header->viewport(), &drag);
        QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, edge + QPoint(70, 0));
        window.hide();
    }
}
