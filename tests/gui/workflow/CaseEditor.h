#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
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
    static QString counts(const QString& table) {
        return value("SELECT GROUP_CONCAT(DISTINCT Case_No ORDER BY Case_No) FROM " + table);
    }

    std::unique_ptr<WinDlgRlyCalMain> editor;
};
