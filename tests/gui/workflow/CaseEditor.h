#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QTextEdit>
#include <QToolButton>

#include "programs/workflow/WinDlgRlyCalMain.h"
#include "programs/workflow/ui/SettingTable.h"
#include "tests/gui/workflow/WorkflowWindows.h"

/// The case editor on the demonstration network with zero-sequence relays 1 and 2 and a distance relay 3.
class CaseEditor : public WorkflowWindows {
  protected:
    void SetUp() override {
        WorkflowWindows::SetUp();
        installAt({"青白I", "青龙"}, 3);
        installAt({"青白I"}, 1);
    }
    void TearDown() override {
        editor.reset();
        WorkflowWindows::TearDown();
    }

    /// Stores a case of its own.
    void store(const QString& name, int type, const QVector<int>& relays) {
        CaseForm form;
        form.name = name;
        form.source = "基础方案";
        form.bigSys = {ModeStore::numberOf("最大方式")};
        cases.insert(type, 0, -1, form.source);
        ASSERT_TRUE(cases.addRelays(form, relays) && cases.SaveRecord(1, form)) << said();
    }
    WinDlgRlyCalMain& open(int caseNo = -1, CMorvaneObject* owner = nullptr) {
        editor = std::make_unique<WinDlgRlyCalMain>(places.rtdbName, places.rtdbPath, places.workDir, caseNo,
                                                    places.programDir, places.programDir, &realTime, owner);
        editor->show();
        return *editor;
    }
    void tool(const char* name) { part<QToolButton>(*editor, name).click(); }
    void pressed(const char* name) { press(*editor, name); }
    [[nodiscard]] QString caseName() const { return part<QLineEdit>(*editor, "lineEdit_CaseInf_Name").text(); }
    void rename(const QString& name) { part<QLineEdit>(*editor, "lineEdit_CaseInf_Name").setText(name); }
    [[nodiscard]] SettingTable& table() const { return part<SettingTable>(*editor, "table_ObjRly"); }
    /// Relays in the table, in its order.
    [[nodiscard]] QString relays() const {
        QStringList numbers;
        for (const CaseSettingRow& row : table().rows())
            if (numbers.isEmpty() || numbers.back() != QString::number(row.RNo)) numbers << QString::number(row.RNo);
        return numbers.join(',');
    }
    /// The cases that have rows in a table.
    static QString casesIn(const QString& table) {
        return value("SELECT COALESCE(GROUP_CONCAT(DISTINCT Case_No ORDER BY Case_No),'') FROM " + table);
    }
    /// Picks relays in the dialog behind "增加".
    void add(const QVector<int>& relays) {
        whenOpen([&](QDialog& picker) {
            auto& all = part<QListWidget>(picker, "listBox_AllRly");
            for (int row = 0; row < all.count(); ++row)
                if (relays.contains(listed().value(row))) {
                    all.setCurrentRow(row);
                    press(picker, "pushButton_Add");
                }
            press(picker, "pushButton_Ensure");
        });
        pressed("pushButton_AddRly");
    }
    void choose(const char* combo, int index) {
        auto& box = part<QComboBox>(*editor, combo);
        box.setCurrentIndex(index);
        emit box.activated(index);
    }
    /// Answers the next question.
    static void answer(QMessageBox::StandardButton button, QString* asked = nullptr) {
        whenOpen([=](QDialog& dialog) {
            auto* box = qobject_cast<QMessageBox*>(&dialog);
            ASSERT_TRUE(box) << dialog.objectName().toStdString();
            if (asked) *asked = box->text();
            box->button(button)->click();
        });
    }
    /// Does something with the next window of that name, which is closed afterwards if it still stands; counts it in
    /// windowsSeen when it is gone.
    template <class Act>
    void whenWindow(const QString& name, Act act, int tries = 400) {
        QTimer::singleShot(20, qApp, [=, this] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if ((!dialog || dialog->objectName() != name) && tries > 0) return whenWindow(name, act, tries - 1);
            ASSERT_TRUE(dialog && dialog->objectName() == name) << "no " << name.toStdString();
            act(*dialog);
            if (dialog->isVisible()) dialog->reject();
            ++windowsSeen;
        });
    }
    /// Everything that an editing may change.
    static QStringList everything() {
        QStringList all;
        for (const char* table :
             {"RLY_CASE_RLY", "RLY_RUDSYS", "RLY_CASEINF", "RLY_CASERDZ", "RLY_CELECHK", "RLY_CASERLYCOP", "RLY_CKFCHK",
              "RLY_KLMFSYS", "RLY_FZXSSYS", "RLY_RDZTEM", "RLY_FAULTINF", "RLY_KFINF", "RLY_RRVIN", "RLY_RRNPH",
              "RLY_CFZXS", "RLY_CFZXSRM", "RLY_CRUDRM"})
            all << table + (":\n" + contents(table));
        return all;
    }
    static int copies() {
        return value(
                   "SELECT COUNT(*) FROM information_schema.TABLES WHERE TABLE_SCHEMA=DATABASE() AND"
                   " TABLE_NAME LIKE 'RLY\\_%\\_TEM\\_TM' OR TABLE_NAME='RLY_CASE_RLY_TEM'")
            .toInt();
    }
    /// Relay numbers in the order in which the picker lists them.
    [[nodiscard]] QVector<int> listed() const {
        QVector<int> all;
        sql::Query query;
        query.exec("SELECT RNo FROM RLY_RUD WHERE RTypeNo=? AND Valid<=>1 ORDER BY ID_Name,Side",
                   {editor->findChild<QComboBox*>("comboBox_RType")->currentData()});
        while (query.next()) all << query.number(0);
        return all;
    }

    std::unique_ptr<WinDlgRlyCalMain> editor;
    int windowsSeen = 0;
};
