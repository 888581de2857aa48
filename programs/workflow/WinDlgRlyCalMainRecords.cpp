// Walking through the cases, and the end of the window.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QTextEdit>

#include "platform/host/ui/WaitCursor.h"
#include "programs/frame/WinDLgSearch.h"
#include "programs/frame/ui/CBaseDialog.h"
#include "programs/frame/ui/CMorvaneObject.h"
#include "programs/workflow/WinDlgRlyCalMain.h"
#include "programs/workflow/ui/SettingTable.h"

namespace {

constexpr int kSearchCases = 6;

}  // namespace

CaseForm WinDlgRlyCalMain::formOf() const {
    CaseForm form;
    form.name = lineEdit_CaseInf_Name->text();
    form.note = textEdit_CaseInf_Note->toPlainText().replace('\n', ' ').trimmed();
    form.onLoadFlow = checkBox_CaseInf_Flow->isChecked();
    form.source = comboBox_CaseInf_FlowNM->currentText();
    form.primary = yiErFlag == 1;
    form.rows = table_ObjRly->rows();
    form.bigSys = bigSys;
    form.smallSys = smallSys;
    for (size_t part = 0; part < kStages; ++part) form.PartFlg[part] = partBoxes_[part]->isChecked() ? 1 : 0;
    return form;
}

bool WinDlgRlyCalMain::SaveRecord(int mode) {
    table_ObjRly->endEdit();
    return editing_.cases().SaveRecord(mode, formOf());
}

void WinDlgRlyCalMain::moveTo(int position) {
    const host::WaitCursor wait;
    table_ObjRly->endEdit();
    if (editing_.moveTo(position, formOf())) DspRecord();
}

void WinDlgRlyCalMain::ToolButton_PrevRec_clicked() { moveTo(editing_.cases().position() - 1); }
void WinDlgRlyCalMain::ToolButton_NextRec_clicked() { moveTo(editing_.cases().position() + 1); }
void WinDlgRlyCalMain::ToolButton_FirstRec_clicked() { moveTo(0); }
void WinDlgRlyCalMain::ToolButton_LastRec_clicked() { moveTo(int(editing_.cases().chain().size()) - 1); }

void WinDlgRlyCalMain::ToolButton_InsertRec_clicked() {
    table_ObjRly->endEdit();
    const bool first = editing_.cases().current() == nullptr;
    if (!editing_.insert(formOf())) return;
    DspRecord();
    if (first) {
        checkBox_CaseInf_Flow->setChecked(false);
        CheckBox_CaseInfFlow_Checked();
    }
    lineEdit_CaseInf_Name->setFocus();
    lineEdit_CaseInf_Name->selectAll();
}

void WinDlgRlyCalMain::ToolButton_DeleteRec_clicked() {
    const host::WaitCursor wait;
    if (editing_.remove()) DspRecord();
}

void WinDlgRlyCalMain::ToolButton_CopyRec_clicked() {
    table_ObjRly->endEdit();
    editing_.copy(formOf());
    frame_->PasteRec->setEnabled(editing_.canPaste());
}

void WinDlgRlyCalMain::ToolButton_PasteRec_clicked() {
    const host::WaitCursor wait;
    if (editing_.paste()) DspRecord();
}

void WinDlgRlyCalMain::ToolButton_SearchRec_clicked() {
    if (!editing_.cases().current() || !SaveRecord(1)) return;
    QStringList names;
    for (const CaseNode& node : editing_.cases().chain()) names.append(node.Case_Name);
    WinDLgSearch(names, kSearchCases, this).exec();
    if (WinDLgSearch::iSearchResult >= 0) moveTo(WinDLgSearch::iSearchResult);
}

void WinDlgRlyCalMain::ToolButton_RecoverAll_clicked() {
    if (editing_.cases().recoverAll()) DspRecord();
}

void WinDlgRlyCalMain::DspRecord() {
    paintedRNo = -1;
    CaseStore& cases = editing_.cases();
    const int last = int(cases.chain().size()) - 1;
    if (!cases.current()) return showNoCase();
    for (QToolButton* button : frame_->all()) button->setEnabled(true);
    for (QToolButton* button : {frame_->PrevRec, frame_->FirstRec}) button->setEnabled(cases.position() > 0);
    for (QToolButton* button : {frame_->NextRec, frame_->LastRec}) button->setEnabled(cases.position() < last);
    frame_->PasteRec->setEnabled(editing_.canPaste());
    for (QWidget* widget : dataWidgets()) widget->setEnabled(true);
    const CaseForm form = cases.form(yiErFlag == 1);
    DspCaseInf(form);
    DspTable_ObjRly(form);
    DspSysmode(form);
    shown_ = formOf();
}

void WinDlgRlyCalMain::showNoCase() {
    for (QToolButton* button : frame_->all()) button->setEnabled(button == frame_->InsertRec);
    for (QWidget* widget : dataWidgets()) widget->setEnabled(false);
    for (QLineEdit* line : {lineEdit_CaseInf_Name, lineEdit_BigSys, lineEdit_SmallSys}) line->clear();
    textEdit_CaseInf_Note->clear();
    comboBox_CaseInf_FlowNM->clear();
    comboBox_RType->setCurrentIndex(-1);
    comboBox_RType->setEnabled(false);
    for (QCheckBox* box : partBoxes_) box->setChecked(false);
    table_ObjRly->setColumns({});
    bigSys.clear();
    smallSys.clear();
    shown_ = formOf();
    updateButtons();
}

void WinDlgRlyCalMain::Button_OK_clicked() {
    if (start_ || !SaveRecord(1) || !editing_.keep()) return;
    const CaseNode* node = editing_.cases().current();
    if (owner_) owner_->takeCase(node ? node->Case_No : -1, node ? node->Case_Name : QString());
    if (editing_.cases().missingRelay() &&
        QMessageBox::question(this, tr("注意"), tr("从当前作业中删除已经不存在的保护吗？")) == QMessageBox::Yes)
        editing_.cases().dropMissingRelays();
    accept();
}

void WinDlgRlyCalMain::Button_Cancel_clicked() {
    if (!start_) cancel();
}

void WinDlgRlyCalMain::cancel() {
    const host::WaitCursor wait;
    if (editing_.isOpen()) editing_.cancel();
    QDialog::reject();
}

// Cancel takes back calculations as well: a key or a click beside the window must not do that unasked.
bool WinDlgRlyCalMain::mayLeave() {
    table_ObjRly->endEdit();
    if (!editing_.isOpen() || (formOf() == shown_ && !editing_.hasChanged())) return true;
    return QMessageBox::question(this, tr("注意"), tr("放弃打开窗口以来的全部修改和计算结果吗？")) == QMessageBox::Yes;
}

void WinDlgRlyCalMain::reject() {
    if (start_)
        start_->abort();
    else if (mayLeave())
        cancel();
}
