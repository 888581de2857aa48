#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSettings>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QToolButton>

#include "platform/host/WinDockFeedback.h"
#include "platform/host/ui/TableHabits.h"
#include "programs/workflow/ui/SettingTable.h"
#include "programs/workflow/ui/SettingTableBar.h"
#include "tests/gui/Screenshot.h"
#include "tests/gui/workflow/WorkflowWindows.h"

namespace {

CaseSettingRow setting(int rNo, const QString& cdz, int vType, const QString& now, const QString& before,
                       const QString& station) {
    CaseSettingRow row;
    row.RNo = rNo;
    row.Cdz = cdz;
    row.DspCdz = vType == 4 ? "动作时间" : "整定电流";
    row.label = QString("线路%1线 甲侧 ").arg(rNo);
    row.station = station;
    row.VType = vType;
    row.newValue.fill("0");
    row.oldValue.fill("0");
    row.newValue[0] = now;
    row.oldValue[0] = before;
    return row;
}

/// Three relays at two stations, a current and a time each, with two parts.
class Settings : public testing::Test {
  protected:
    void SetUp() override {
        table.setColumns({.parts = 2, .editable = true});
        table.setRows(rows());
        table.resize(1100, 300);
        table.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&table));
    }
    static QVector<CaseSettingRow> rows() {
        return {setting(7, "Idz", 1, "1200", "1000", "青白站"), setting(7, "T", 4, "0.5", "0.5", "青白站"),
                setting(3, "Idz", 1, "300", "0", "龙泉站"),     setting(3, "T", 4, "0.8", "0.5", "龙泉站"),
                setting(9, "Idz", 1, "1300", "1000", "青白站"), setting(9, "T", 4, "1", "1", "青白站")};
    }
    [[nodiscard]] QString shown(int row, int column) const {
        return table.model()->index(row, column).data().toString();
    }
    /// A column as it stands, "|" between rows.
    [[nodiscard]] std::string shownColumn(int column) const {
        QStringList texts;
        for (int row = 0; row < table.model()->rowCount(); ++row) texts << shown(row, column);
        return texts.join('|').toStdString();
    }
    void clickHead(int column) {
        QHeaderView* header = table.horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          {header->sectionViewportPosition(column) + 15, header->height() / 2});
    }
    /// Types into a cell, given in rows of the model; Enter ends the edit.
    void type(int row, int column, const QString& text) {
        table.setCurrentCell(row, column);
        QTest::keyClick(&table, Qt::Key_Return);
        auto* editor = table.viewport()->findChild<QLineEdit*>();
        ASSERT_TRUE(editor);
        editor->selectAll();
        for (const QChar character : text) QTest::sendKeyEvent(QTest::Click, editor, Qt::Key_unknown, character, {});
        QTest::keyClick(editor, Qt::Key_Return);
        QTest::qWait(1);
    }
    SettingTable table{nullptr, "table_Settings"};
};

}  // namespace

TEST_F(Settings, SortingByAHeadKeepsRelaysReadableAndTheThirdClickGivesTheOrderOfCalculation) {
    EXPECT_EQ(shownColumn(0), "线路7线 甲侧 ||线路3线 甲侧 ||线路9线 甲侧 |");
    clickHead(2);
    EXPECT_EQ(shownColumn(2), "0.5|0.8|1|300|1200|1300") << "as numbers";
    EXPECT_EQ(shownColumn(0), "线路7线 甲侧 |线路3线 甲侧 |线路9线 甲侧 |线路3线 甲侧 |线路7线 甲侧 |线路9线 甲侧 ");
    clickHead(2);
    EXPECT_EQ(shownColumn(2), "1300|1200|300|1|0.8|0.5");
    EXPECT_EQ(table.rows()[0].newValue[0], "1200") << "what is stored keeps its order";
    EXPECT_EQ(table.text(0, 2), "1200") << "rows are those of the model";
    clickHead(2);
    EXPECT_EQ(shownColumn(2), "1200|0.5|300|0.8|1300|1");
    clickHead(0);
    EXPECT_EQ(shownColumn(2), "300|0.8|1200|0.5|1300|1") << "settings of a relay stay together";
}

TEST_F(Settings, FiltersByStationAndByChangeHideRowsOnly) {
    EXPECT_THAT(table.stations(), testing::UnorderedElementsAre("青白站", "龙泉站"));
    table.setOnlyChanged(true);
    EXPECT_EQ(shownColumn(2), "1200|300|0.8|1300");
    table.setStation("青白站");
    EXPECT_EQ(shownColumn(2), "1200|1300");
    EXPECT_EQ(table.rows().size(), 6);
    EXPECT_EQ(table.find(9, "T"), 5);
    QSignalSpy current(&table, qOverload<int, int>(&SettingTable::currentChanged));
    table.setCurrentCell(4, 2);
    EXPECT_EQ(table.row(), 4);
    EXPECT_EQ(table.currentRelay(), 9);
    ASSERT_EQ(current.size(), 1);
    EXPECT_EQ(current[0][0].toInt(), 4);
    table.setCurrentCell(2, 2);
    EXPECT_EQ(table.row(), 4) << "a row that does not show cannot become the current one";
    table.setStation("无此站");
    EXPECT_EQ(table.row(), -1);
    EXPECT_EQ(table.currentRelay(), -1);
}

TEST_F(Settings, ChangesAreToldInFiguresOfUse) {
    table.setWarningShare(0.2);
    const int change = table.settings().changeColumn(1);
    EXPECT_EQ(shownColumn(change), "+200 (+20%)||新|+0.3 (+60%)|+300 (+30%)|");
    const auto marked = [&](int row) { return !table.model()->index(row, change).data(Qt::DecorationRole).isNull(); };
    EXPECT_FALSE(marked(0)) << "the share itself is no excess";
    EXPECT_FALSE(marked(2)) << "a new setting";
    EXPECT_TRUE(marked(3) && marked(4));
    table.setWarningShare(0.5);
    EXPECT_TRUE(marked(3) && !marked(4));
    clickHead(change);
    EXPECT_EQ(shownColumn(change), "||+200 (+20%)|+300 (+30%)|+0.3 (+60%)|新");
    const auto text = [](const char* now, const char* before) {
        const auto found = settingChange(settingNumber(now), settingNumber(before));
        return found ? found->text().toStdString() : "-";
    };
    EXPECT_EQ(text("0.80", "0.8"), "-");
    EXPECT_EQ(text("0.8000004", "0.8"), "-") << "below the last digit stored";
    EXPECT_EQ(text("12.5x", "1"), "-");
    EXPECT_EQ(text("0", "123.456789"), "-123.5 (-100%)");
    EXPECT_EQ(text("123.46", "123.456789"), "+0.003211 (+0.0026%)");
    EXPECT_EQ(text("1234567", "1"), "+1234566 (+123456600%)");
    EXPECT_EQ(text("5", "-10"), "+15 (+150%)");
}

TEST_F(Settings, APartThatWasNotCalculatedHasNotChangedUntilItsFirstValue) {
    QVector<CaseSettingRow> open = rows();
    open[0].newValue[0] = "0";
    open[1].newValue[0] = "";
    table.setRows(open);
    const int change = table.settings().changeColumn(1);
    const auto cell = [&](int row) { return table.model()->index(row, change); };
    const auto marked = [&](int row) { return !cell(row).data(Qt::DecorationRole).isNull(); };
    EXPECT_EQ(shownColumn(change), "||新|+0.3 (+60%)|+300 (+30%)|");
    EXPECT_EQ(cell(0).data(Qt::ToolTipRole), "未计算");
    EXPECT_EQ(cell(2).data(Qt::ToolTipRole), QVariant());
    EXPECT_FALSE(marked(0) || marked(1));
    table.setOnlyChanged(true);
    EXPECT_EQ(shownColumn(2), "300|0.8|1300");
    table.setOnlyChanged(false);

    type(1, 2, "0");
    EXPECT_EQ(shownColumn(change), "||新|+0.3 (+60%)|+300 (+30%)|");
    type(0, 2, "1000");
    EXPECT_EQ(shownColumn(change), "|-0.5 (-100%)|新|+0.3 (+60%)|+300 (+30%)|") << "a time of 0 s";
    EXPECT_TRUE(marked(1) && !marked(0));
    table.setRows(open);
    EXPECT_EQ(shownColumn(change), "||新|+0.3 (+60%)|+300 (+30%)|");
    table.settings().removeRelay(7);
    table.settings().append(open.mid(0, 2));
    EXPECT_EQ(shownColumn(change), "新|+0.3 (+60%)|+300 (+30%)|||");
    table.setColumns({.parts = 2, .zerosCount = true});
    table.setRows(open);
    EXPECT_EQ(shownColumn(change), "-1000 (-100%)||新|+0.3 (+60%)|+300 (+30%)|") << "0 is what would be stored";
    EXPECT_TRUE(marked(0));
}

TEST_F(Settings, TypedValuesReachTheirRowAndMoveNothing) {
    clickHead(2);
    table.setOnlyChanged(true);
    QSignalSpy changed(&table, &SettingTable::valueChanged);
    type(3, 2, "０．5");  // equal to the stored value from now on
    EXPECT_EQ(table.rows()[3].newValue[0], "0.5");
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0][0].toInt() * 10 + changed[0][1].toInt(), 32);
    EXPECT_EQ(shownColumn(2), "0.5|300|1200|1300") << "the row stays where it is while the user works on it";
    EXPECT_EQ(table.row(), 2) << "Enter goes to the row below as shown";
    table.setOnlyChanged(true);
    EXPECT_EQ(shownColumn(2), "300|1200|1300");
    table.setValue(0, 1, "1250");
    EXPECT_EQ(changed.size(), 1) << "the program's own changes are not told";
    EXPECT_FALSE(table.model()->index(0, 4).flags() & Qt::ItemIsEditable) << "stored values";
    EXPECT_FALSE(table.model()->index(0, 0).flags() & Qt::ItemIsEditable);
}

TEST_F(Settings, RefreshedValuesKeepSelectionAndRelaysComeAndGo) {
    table.setCurrentCell(3, 2);
    QVector<CaseSettingRow> fresh = rows();
    fresh[0].newValue[0] = "1600";
    table.setRows(fresh);
    EXPECT_EQ(table.row(), 3);
    EXPECT_EQ(shown(0, 2), "1600");
    table.settings().append({setting(11, "Idz", 1, "5", "5", "新站")});
    table.settings().removeRelay(7);
    EXPECT_EQ(shownColumn(2), "300|0.8|1300|1|5");
    EXPECT_EQ(table.row(), 1);
    table.setRows(table.rows().mid(0, 2));
    EXPECT_EQ(shownColumn(2), "300|0.8");
}

TEST_F(Settings, ColumnsStandAsTheWindowsWantThem) {
    const QHeaderView* header = table.horizontalHeader();
    QStringList heads;
    for (int at = 0; at < header->count(); ++at)
        if (const int column = header->logicalIndex(at); !header->isSectionHidden(column))
            heads << table.model()->headerData(column, Qt::Horizontal).toString();
    EXPECT_EQ(heads.join('|').toStdString(),
              "保护安装位置|定值名称|单位|一段新定值|二段新定值|一段原定值|二段原定值|一段变化|二段变化");
    EXPECT_TRUE(table.isColumnHidden(6) && table.isColumnHidden(7));
    EXPECT_EQ(table.text(2, 6), "3");
    EXPECT_EQ(table.text(2, 7), "Idz");
    EXPECT_EQ(table.text(0, table.settings().unitColumn()), "A");
    table.setColumns({.parts = 3, .values = SettingColumns::Values::Old, .changes = false});
    EXPECT_EQ(table.model()->headerData(2, Qt::Horizontal), "一段定值");
    EXPECT_TRUE(table.isColumnHidden(5) && table.isColumnHidden(6) && !table.isColumnHidden(7));
    EXPECT_EQ(header->visualIndex(table.settings().unitColumn()), 2);
    EXPECT_EQ(table.settings().newColumn(1), -1);
    EXPECT_GE(table.columnWidth(0), 100);
    EXPECT_GE(table.columnWidth(2), 80);
}

namespace {

struct Modal : WorkflowWindows {
    using WorkflowWindows::whenOpen;
};

class SettingsBar : public Settings {
  protected:
    void SetUp() override {
        host::tableSettings().remove("SettingTableBar");
        Settings::SetUp();
        WinDockFeedback::setReceiver([this](const char* text, int) { said << QString::fromUtf8(text); });
    }
    void TearDown() override { WinDockFeedback::setReceiver({}); }
    /// Chooses an entry of the export menu and a file in the dialog that opens.
    void exportTo(SettingTableBar& bar, int entry, const QString& file) {
        Modal::whenOpen([&](QDialog& dialog) {
            dialog.findChild<QLineEdit*>("fileNameEdit")->setText(file);
            dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();
        });
        part<QToolButton>(bar, "toolButton_Export").menu()->actions().at(entry)->trigger();
    }
    QTemporaryDir folder;
    QStringList said;
};

QByteArray content(const QString& file) {
    QFile in(file);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("absent");
}

}  // namespace

TEST_F(SettingsBar, FiltersWarnsAndRemembersTheShare) {
    SettingTableBar bar(&table, nullptr);
    auto& stations = part<QComboBox>(bar, "comboBox_Station");
    EXPECT_EQ(stations.itemText(0), "全部厂站");
    EXPECT_EQ(stations.count(), 3);
    stations.setCurrentText("龙泉站");
    EXPECT_EQ(shownColumn(2), "300|0.8");
    EXPECT_EQ(part<QLabel>(bar, "textLabel_Shown").text(), "显示 2 / 6 行");
    part<QCheckBox>(bar, "checkBox_OnlyChanged").click();
    table.settings().removeRelay(3);
    EXPECT_EQ(stations.currentIndex(), 0) << "the station went with its relays";
    EXPECT_EQ(shownColumn(2), "1200|1300");
    const int change = table.settings().changeColumn(1);
    const auto marks = [&] {
        int count = 0;
        for (int row = 0; row < table.model()->rowCount(); ++row)
            count += !table.model()->index(row, change).data(Qt::DecorationRole).isNull();
        return count;
    };
    EXPECT_EQ(marks(), 1) << "20 % unless something else was chosen";
    part<QSpinBox>(bar, "spinBox_Warning").setValue(10);
    EXPECT_EQ(marks(), 2);
    SettingTable other(nullptr, "table_Other");
    SettingTableBar again(&other, nullptr);
    EXPECT_EQ(part<QSpinBox>(again, "spinBox_Warning").value(), 10);
    EXPECT_FALSE(part<QToolButton>(again, "toolButton_Export").isEnabled());
    EXPECT_EQ(part<QToolButton>(again, "toolButton_Export").toolTip(), "表中没有定值");
}

TEST_F(SettingsBar, ExportsAndCopiesWhatIsShown) {
    SettingTableBar bar(&table, nullptr);
    table.setStation("龙泉站");
    const QByteArray csv =
        "\xEF\xBB\xBF保护安装位置,定值名称,单位,一段新定值,二段新定值,一段原定值,二段原定值,一段变化,二段变化\r\n"
        "线路3线 甲侧 ,整定电流,A,300,0,0,0,新,\r\n线路3线 甲侧 ,动作时间,s,0.8,0,0.5,0,+0.3 (+60%),\r\n";
    exportTo(bar, 0, folder.filePath("表"));
    EXPECT_EQ(content(folder.filePath("表.csv")), csv) << "every row with its place, columns as they are shown";
    EXPECT_EQ(host::tableSettings().value("SettingTableBar/folder").toString(), folder.path());
    exportTo(bar, 1, folder.filePath("表.xlsx"));
    EXPECT_TRUE(content(folder.filePath("表.xlsx")).startsWith("PK"));
    EXPECT_EQ(said.join('|').toStdString(),
              QString("定值已导出到%1/表.csv|定值已导出到%1/表.xlsx").arg(folder.path()).toStdString());
    part<QToolButton>(bar, "toolButton_Export").menu()->actions().at(2)->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text().section('\n', 2),
              "线路3线 甲侧 \t动作时间\ts\t0.8\t0\t0.5\t0\t+0.3 (+60%)\t");
    table.selectRow(1);
    QTest::keyClick(&table, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "\t动作时间\ts\t0.8\t0\t0.5\t0\t+0.3 (+60%)\t");
}

TEST_F(Settings, MarksFollowTheFirstVisibleRowOfTheirRelay) {
    const auto green = [this](int row, int column) {
        const QRect cell = table.visualRect(table.model()->index(row, column));
        return table.viewport()->grab().toImage().pixelColor(cell.topLeft() + QPoint(2, 2)) == QColor(Qt::green);
    };
    table.paintRelay(3, 0, false);
    EXPECT_TRUE(green(2, 0) && !green(3, 0) && !green(0, 0));
    clickHead(2);
    EXPECT_TRUE(green(1, 0) && !green(3, 0)) << "its time now stands above its current";
    clickHead(2);
    clickHead(2);
    table.paintRelay(9, 2, true);
    EXPECT_TRUE(green(4, 2) && green(5, 2) && !green(2, 0) && !green(4, 3));
    table.settings().removeRelay(7);
    EXPECT_TRUE(green(2, 2) && green(3, 2) && !green(1, 2));
    takeScreenshot(table, "settings_marked");
    table.clearPaint();
    EXPECT_FALSE(green(2, 2));
}
