// What a case consists of: its network, its relays, its modes and its parts.
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QTextEdit>

#include "platform/host/ui/WaitCursor.h"
#include "programs/frame/Messages.h"
#include "programs/frame/RelayTypes.h"
#include "programs/study/ModeStore.h"
#include "programs/workflow/CaseSources.h"
#include "programs/workflow/PickerResults.h"
#include "programs/workflow/WinDlgRlyCalMain.h"
#include "programs/workflow/WinDlgSaveDZ.h"
#include "programs/workflow/WinDlgSelectRly.h"
#include "programs/workflow/WinDlgSelectRule.h"
#include "programs/workflow/WinDlgselectSYS.h"
#include "programs/workflow/ui/SettingTable.h"
#include "programs/workflow/ui/SettingTableBar.h"

namespace {

QString namesOf(const QList<int>& modes) {
    QHash<int, QString> names;
    for (const OperatingModeRecord& mode : ModeStore::list()) names[mode.SysNo] = mode.SysName;
    QString text;
    for (const int mode : modes)
        if (names.contains(mode)) text += names[mode] + ",   ";
    return text;
}

}  // namespace

QList<QWidget*> WinDlgRlyCalMain::dataWidgets() const {
    return {lineEdit_CaseInf_Name, checkBox_CaseInf_Flow, comboBox_CaseInf_FlowNM,
            textEdit_CaseInf_Note, table_ObjRly,          bar_,
            radioButton_Yici,      radioButton_Erci,      lineEdit_BigSys,
            lineEdit_SmallSys,     partBoxes_[0],         partBoxes_[1],
            partBoxes_[2],         partBoxes_[3],         partBoxes_[4]};
}

void WinDlgRlyCalMain::DspCaseInf(const CaseForm& form) {
    const bool isNew = !editing_.cases().isStored();
    lineEdit_CaseInf_Name->setText(form.name.isEmpty() && isNew ? CaseStore::defaultName() : form.name);
    textEdit_CaseInf_Note->setPlainText(form.note);
    checkBox_CaseInf_Flow->setChecked(form.onLoadFlow);
    if (form.onLoadFlow) {
        const QStringList names = CaseSources::namesOf(CaseSources::loadFlows());
        if (!names.contains(form.source)) ReportError(tr("作业的潮流作业已不存在，请重新选择"), 1);
        showSources(tr("潮流作业:"), names, names.contains(form.source) ? form.source : names.value(0));
    } else {
        showSources(tr("基础方案:"), CaseSources::schemes(), form.source);
    }
    const CaseNode& node = *editing_.cases().current();
    comboBox_RType->setPlaceholderText(node.RTypeCode);  // shown for a type that is not offered
    comboBox_RType->setCurrentIndex(comboBox_RType->findData(node.RTypeNo));
    comboBox_RType->setEnabled(isNew && form.rows.isEmpty());
    showParts();
    for (size_t part = 0; part < kStages; ++part) {
        partBoxes_[part]->setChecked(form.PartFlg[part] == 1);
        PartFlg[part] = form.PartFlg[part];
    }
}

void WinDlgRlyCalMain::showSources(const QString& label, const QStringList& names, const QString& shown) {
    textLabel_CaseInf_FlowNM->setText(label);
    comboBox_CaseInf_FlowNM->clear();
    comboBox_CaseInf_FlowNM->addItems(names);
    comboBox_CaseInf_FlowNM->setCurrentIndex(comboBox_CaseInf_FlowNM->findText(shown.trimmed()));
}

void WinDlgRlyCalMain::showParts() {
    const RelayTypeInfo type = readRelayTypes().value(editing_.cases().current()->RTypeNo);
    for (int part = 0; part < kStages; ++part) {
        // its flag stays with the case
        partBoxes_[size_t(part)]->setEnabled(part < type.NPart);
        partBoxes_[size_t(part)]->setVisible(part < type.NPart);
    }
}

void WinDlgRlyCalMain::DspTable_ObjRly(const CaseForm& form) {
    const int type = editing_.cases().current()->RTypeNo;
    table_ObjRly->setColumns({readRelayTypes().value(type).NPart, SettingColumns::Values::NewAndOld, true, true});
    table_ObjRly->setRows(form.rows);
    markFirst();
}

void WinDlgRlyCalMain::markFirst() {
    paintedRNo = -1;
    if (!table_ObjRly->rows().isEmpty()) {
        table_ObjRly->setCurrentCell(0, table_ObjRly->settings().newColumn(1));
        Paint_table_ObjRly(0, 0);
    }
    updateButtons();
}

void WinDlgRlyCalMain::DspSysmode(const CaseForm& form) {
    bigSys = form.bigSys;
    smallSys = form.smallSys;
    lineEdit_BigSys->setText(namesOf(bigSys));
    lineEdit_SmallSys->setText(namesOf(smallSys));
}

void WinDlgRlyCalMain::CheckBox_CaseInfFlow_Checked() {
    const bool flow = checkBox_CaseInf_Flow->isChecked();
    const QStringList names = flow ? editing_.standOnLoadFlow() : editing_.standOnScheme();
    showSources(flow ? tr("潮流作业:") : tr("基础方案:"), QStringList(" ") + names, {});
    comboBox_CaseInf_FlowNM->setCurrentIndex(0);
}

void WinDlgRlyCalMain::ComboBox_FlowNM_Changed(int index) {
    const QString name = comboBox_CaseInf_FlowNM->itemText(index);
    if (name.trimmed().isEmpty()) return;
    const host::WaitCursor wait;
    editing_.chooseNetwork(checkBox_CaseInf_Flow->isChecked(), name);
}

void WinDlgRlyCalMain::ComboBox_RType_Changed(int index) {
    const int type = comboBox_RType->itemData(index).toInt();
    if (type == editing_.cases().current()->RTypeNo) return;
    CaseForm form = formOf();
    editing_.setType(form, type);
    table_ObjRly->setColumns({readRelayTypes().value(type).NPart, SettingColumns::Values::NewAndOld, true, true});
    paintedRNo = -1;
    showParts();
    updateButtons();
}

void WinDlgRlyCalMain::PushButton_Add_Clicked() {
    const CaseNode& node = *editing_.cases().current();
    table_ObjRly->endEdit();
    WinDlgSelectRly(node.RTypeCode, node.RTypeNo, readRelayTypes().value(node.RTypeNo).RType, 0, this).exec();
    QVector<int> relays;
    for (const SelectedRly* relay = SelectedRlyList; relay && SelectRlyAccepted != 0; relay = relay->next)
        relays.append(relay->RNo);
    if (relays.isEmpty()) return;
    const host::WaitCursor wait;
    CaseForm form = formOf();
    const qsizetype before = form.rows.size();
    if (!editing_.cases().addRelays(form, relays)) return;
    comboBox_RType->setEnabled(false);
    table_ObjRly->settings().append(form.rows.mid(before));
    if (table_ObjRly->row() < 0) markFirst();
    updateButtons();
}

void WinDlgRlyCalMain::PushButton_Delete_Clicked() {
    const int relay = table_ObjRly->currentRelay();
    if (relay < 0) return;
    table_ObjRly->endEdit();
    CaseForm form = formOf();
    editing_.cases().removeRelay(form, relay);
    table_ObjRly->settings().removeRelay(relay);
    markFirst();
}

void WinDlgRlyCalMain::Paint_table_ObjRly(int row, int) {
    if (row < 0 || row >= table_ObjRly->rows().size() || table_ObjRly->rows()[row].RNo == paintedRNo) return;
    paintedRNo = table_ObjRly->rows()[row].RNo;
    table_ObjRly->paintRelay(paintedRNo, 0, false);
}

void WinDlgRlyCalMain::RadioButton_YiEr_Clicked(int id) {
    if (id == yiErFlag - 1) return;
    if (!SaveRecord(2)) return buttonGroup_Dz->button(yiErFlag - 1)->setChecked(true);
    yiErFlag = id + 1;
    if (!table_ObjRly->rows().isEmpty()) DspTable_ObjRly(editing_.cases().form(yiErFlag == 1));
}

void WinDlgRlyCalMain::chooseModes(QList<int>& modes, QLineEdit* line) {
    WinDlgselectSYS(this).exec();
    modes.clear();
    for (const SelectedSys* mode = SelectedSysList; mode; mode = mode->previous) modes.prepend(mode->SysNo);
    line->setText(namesOf(modes));
}

void WinDlgRlyCalMain::PushButton_BigSys_Clicked() { chooseModes(bigSys, lineEdit_BigSys); }
void WinDlgRlyCalMain::PushButton_SmallSys_Clicked() { chooseModes(smallSys, lineEdit_SmallSys); }

void WinDlgRlyCalMain::PushButton_Rule_Clicked() {
    const int row = table_ObjRly->row();
    if (row < 0) return;
    const CaseNode& node = *editing_.cases().current();
    const CaseSettingRow setting = table_ObjRly->rows()[row];
    WinDlgSelectRule(node.Case_No, setting.RNo, node.RTypeNo, node.RTypeCode, setting.label, this).exec();
}

void WinDlgRlyCalMain::takePart(int part) {
    const auto at = size_t(part - 1);
    PartFlg[at] = editing_.cases().current()->PartFlg[at] = partBoxes_[at]->isChecked() ? 1 : 0;
}

void WinDlgRlyCalMain::PushButton_SaveDz_Clicked() {
    if (SaveRecord(2)) WinDlgSaveDZ(editing_.cases().current()->RTypeNo, this).exec();
}
