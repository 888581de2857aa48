#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

#include "programs/frame/ui/PaintTable.h"
#include "programs/workflow/CaseSettings.h"
#include "programs/workflow/IntermediateResults.h"
#include "programs/workflow/PickerResults.h"
#include "programs/workflow/SensitivityModes.h"
#include "programs/workflow/WinDlgEditAndSelectPara.h"
#include "programs/workflow/WinDlgRlyCal.h"
#include "programs/workflow/ui/RunProgress.h"
#include "programs/workflow/ui/RunTables.h"
#include "programs/workflow/ui/SettingPictures.h"
#include "programs/workflow/ui/SettingTable.h"

using State = RunSession::State;

void WinDlgRlyCal::DspTable_RlyObj() {
    const int row = table_RlyObj->row(), column = table_RlyObj->column();
    const QSignalBlocker quiet(table_RlyObj);
    table_RlyObj->setRows(CaseSettings::rows(case_.RTypeNo, true));
    if (row >= 0) table_RlyObj->setCurrentCell(row, column);
}

void WinDlgRlyCal::DspKlmSys() {
    QString text;
    for (const QString& mode : SensitivityModes::names(case_.Case_No)) text += mode + ",   ";
    lineEdit_KlmSys->setText(text);
    lineEdit_KlmSys->setToolTip(text);
    lineEdit_KlmSys->setCursorPosition(0);
}

void WinDlgRlyCal::DspRDzTm(int rNo, int pNo, const QString& label) {
    QHash<int, QString> reasons;
    for (const RuleWithoutResult& rule : session_.withoutResult())
        if (rule.RNo == rNo && rule.PNo == pNo)
            reasons.insert(rule.RuleNo, RulesWithoutResult::reasonText(rule.reason));
    run_tables::showResults(*table_RDzTm, label, IntermediateResults::ofPart(case_.Case_No, type_, rNo, pNo), reasons,
                            [this](int row) { ChangPara(row); });
}

void WinDlgRlyCal::Table_RlyObj_Clicked() {
    Table_RlyObj_ValueChanged(table_RlyObj->row(), table_RlyObj->column(), Display);
}

void WinDlgRlyCal::refreshView() { showPart(shownAt(table_RlyObj->row(), table_RlyObj->column()), false); }

void WinDlgRlyCal::Table_RlyObj_ValueChanged(int row, int column) { Table_RlyObj_ValueChanged(row, column, Typed); }

WinDlgRlyCal::Shown WinDlgRlyCal::shownAt(int row, int column) const {
    const int part = table_RlyObj->settings().partOf(column);
    if (row < 0 || row >= table_RlyObj->rows().size() || part == 0) return {};
    const CaseSettingRow& setting = table_RlyObj->rows()[row];
    const double value = setting.newValue[size_t(part - 1)].toDouble();
    return {row, column, {setting.RNo, part, setting.Cdz, value}, setting.label, setting.DspCdz};
}

void WinDlgRlyCal::Table_RlyObj_ValueChanged(int row, int column, int how) {
    const Shown shown = shownAt(row, column);
    if (shown.row < 0) return;
    if (how != Display && !applyEdit(shown)) return;
    if (how == Display) return showPart(shown, true);
    shown_ = shown;
    showSensitivity(true);
    showPictures();
}

void WinDlgRlyCal::showPart(const Shown& shown, bool tells) {
    if (shown.row < 0) return;
    shown_ = shown;
    DspRDzTm(shown.setting.RNo, shown.setting.PNo, shown.label);
    showSensitivity(tells);
    showPictures();
}

bool WinDlgRlyCal::applyEdit(const Shown& shown) {
    const int part = shown.setting.PNo;
    QVector<RunSession::TypedSetting> values;
    for (const CaseSettingRow& row : table_RlyObj->rows())
        if (row.RNo == shown.setting.RNo) values.append({row.Cdz, row.newValue[size_t(part - 1)]});
    valueValid_ = session_.state() != State::Busy &&
                  session_.ApplySettingEdit(shown.setting.RNo, part, values, shown.setting.Cdz);
    if (valueValid_) takeBackRefused(shown);
    refused_ = valueValid_ ? Shown() : shown;
    showState();
    if (!valueValid_) progress_->say(tr("定值没有存入，请改正: ") + shown.label + " " + shown.name);
    return valueValid_;
}

/// The text that was refused gives way to what holds, unless it has just been replaced.
void WinDlgRlyCal::takeBackRefused(const Shown& taken) {
    if (refused_.row < 0 || (refused_.row == taken.row && refused_.column == taken.column)) return;
    for (const auto& values : IntermediateResults::workingValues({refused_.setting.RNo}))
        if (values.Cdz == refused_.setting.Cdz)
            table_RlyObj->setValue(refused_.row, refused_.setting.PNo,
                                   values.primary[size_t(refused_.setting.PNo - 1)]);
}

// While the engine runs a value may still change, and the working tables belong to its step.
void WinDlgRlyCal::showSensitivity(bool tells) {
    const auto checks = session_.state() == State::Busy
                            ? SensitivityChecks::look(case_.RTypeNo, shown_.setting)
                            : SensitivityChecks::check(case_.RTypeNo, shown_.setting, tells);
    run_tables::showSensitivities(*table_Klm, {shown_.label, shown_.name, shown_.setting.PNo}, checks);
    label_KlmReason->setText(checks.reason);
    label_KlmReason->setToolTip(checks.reason);
    pushButton_OtherPara->setVisible(checks.sensitivity < 0 && !checks.rows.isEmpty());
    pushButton_OtherPara->setEnabled(session_.state() != State::Busy);
}

void WinDlgRlyCal::Table_Klm_Clicked() {
    const int row = table_Klm->currentRow(), column = table_Klm->currentColumn();
    if (row < 0 || (column != run_tables::SFault1 && column != run_tables::SFault2)) return;
    const int flg = table_Klm->text(row, run_tables::SFlag).toInt();
    const int wanted = column == run_tables::SFault1 ? 1 : 2;
    if (SensitivityChecks::parameterInUse(flg) != wanted) chooseParameter(row);
}

void WinDlgRlyCal::chooseParameter(int row) {
    if (session_.state() == State::Busy || row >= table_Klm->rowCount()) return;
    const int id = table_Klm->text(row, run_tables::SId).toInt();
    const int flg = SensitivityChecks::otherParameter(table_Klm->text(row, run_tables::SFlag).toInt());
    if (!SensitivityChecks::storeFlag(id, flg)) return;
    const auto setting = SensitivityChecks::settingOf(id);
    const int at = table_RlyObj->find(setting.RNo, setting.Cdz);
    if (at < 0) return;
    shown_ = shownAt(at, table_RlyObj->settings().newColumn(setting.PNo));
    showSensitivity(true);
}

void WinDlgRlyCal::Table_RDzTm_DoubleClicked() {
    const int from = table_RDzTm->currentRow();
    if (from < 0 || table_RDzTm->currentColumn() != run_tables::RValue || session_.state() == State::Busy) return;
    const QString value = table_RDzTm->text(from, run_tables::RValue);
    const int part = table_RDzTm->text(from, run_tables::RPart).toInt();
    const int row = table_RlyObj->find(table_RDzTm->text(from, run_tables::RRelay).toInt(),
                                       table_RDzTm->text(from, run_tables::RCdz));
    bool isNumber = false;
    value.toDouble(&isNumber);
    if (row < 0 || !isNumber || table_RlyObj->rows()[row].newValue[size_t(part - 1)] == value) return;
    table_RlyObj->setValue(row, part, value);
    Table_RlyObj_ValueChanged(row, table_RlyObj->settings().newColumn(part), TakenOver);
}

void WinDlgRlyCal::ChangPara(int row) {
    if (session_.state() == State::Busy) return;
    IntermediateResults::Result rule;
    rule.RNo = table_RDzTm->text(row, run_tables::RRelay).toInt();
    rule.PNo = table_RDzTm->text(row, run_tables::RPart).toInt();
    rule.RuleNo = table_RDzTm->text(row, run_tables::RRule).toInt();
    const int group = IntermediateResults::parameterGroup(case_.Case_No, rule);
    WinDlgEditAndSelectPara dialog(case_.Case_No, rule.RNo, rule.RuleNo, group, this);
    if (dialog.exec() != Accepted) return;
    session_.changeParameters(rule.RNo, rule.PNo, rule.RuleNo, ChosenParNo);
    showState();
}

void WinDlgRlyCal::showPictures() {
    if (shown_.row >= 0 && pictures_->isVisibleTo(this) && tabWidget_Right->currentWidget() == pictures_)
        pictures_->showPart(shown_.setting.RNo, shown_.setting.PNo);
}

/// Makes the part of a relay the current one.
void WinDlgRlyCal::goTo(int rNo, int pNo) {
    const auto& rows = table_RlyObj->rows();
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const auto& row) { return row.RNo == rNo; });
    if (found == rows.end()) return;
    const int row = int(found - rows.begin()), column = table_RlyObj->settings().newColumn(pNo);
    {
        const QSignalBlocker quiet(table_RlyObj);
        table_RlyObj->setCurrentCell(row, column);
    }
    scrollTo(rNo, pNo);
    showPart(shownAt(row, column), false);  // also where the filter hides it
}
