#include "platform/recordform/CSqlDialogBtns.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QSaveFile>
#include <QVBoxLayout>

#include "platform/host/WinDockFeedback.h"
#include "platform/recordform/CDataForm.h"
#include "platform/recordform/CSqlDialog.h"
#include "platform/recordform/RecordList.h"

namespace sql_dlg {

CSqlDialogBtns::CSqlDialogBtns(CSqlDialog* owner, const char* name, uint flags)
    : QWidget(owner, Qt::WindowFlags(int(flags))), owner_(owner) {
    setObjectName(name ? name : "CSqlDialogBtns");
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(1);
    build(row, this, this);
    row->addStretch();
    owner->whole_->insertWidget(0, this);
    owner->buttons_ = this;
}

bool CSqlDialogBtns::leave(Before before) {
    if (!form_) return false;
    if (!form_->HasRecord()) return (owner_->*before)();
    return owner_->CheckDataValid() && (owner_->*before)() && owner_->CheckPrimaryKey() && form_->Update();
}

void CSqlDialogBtns::arrive(After after) {
    owner_->StoreRecover();
    owner_->SetCtrlBtns();
    (owner_->*after)();
}

void CSqlDialogBtns::move(Before before, bool (CDataForm::*step)(), After after) {
    if (form_ && form_->HasRecord() && leave(before) && (form_->*step)()) arrive(after);
}

void CSqlDialogBtns::ToolButton_PrevRec_clicked() {
    move(&CSqlDialog::BeforePrev, &CDataForm::Prev, &CSqlDialog::AfterPrev);
}

void CSqlDialogBtns::ToolButton_NextRec_clicked() {
    move(&CSqlDialog::BeforeNext, &CDataForm::Next, &CSqlDialog::AfterNext);
}

void CSqlDialogBtns::ToolButton_FirstRec_clicked() {
    move(&CSqlDialog::BeforeFirst, &CDataForm::First, &CSqlDialog::AfterFirst);
}

void CSqlDialogBtns::ToolButton_LastRec_clicked() {
    move(&CSqlDialog::BeforeLast, &CDataForm::Last, &CSqlDialog::AfterLast);
}

void CSqlDialogBtns::ToolButton_InsertRec_clicked() {
    if (leave(&CSqlDialog::BeforeInsert) && form_->Insert()) arrive(&CSqlDialog::AfterInsert);
}

void CSqlDialogBtns::ToolButton_DeleteRec_clicked() {
    if (form_ && form_->HasRecord() && owner_->BeforeDelete() && form_->Delete()) arrive(&CSqlDialog::AfterDelete);
}

void CSqlDialogBtns::ToolButton_CopyRec_clicked() {
    if (!form_ || !form_->HasRecord()) return;
    copied_ = form_->Values();
    owner_->CopyRecord();
}

void CSqlDialogBtns::ToolButton_PasteRec_clicked() {
    if (!form_ || !form_->HasRecord() || copied_.isEmpty()) return;
    form_->SetValues(copied_, false);
    owner_->PasteRecord();
}

void CSqlDialogBtns::ToolButton_RecoverAll_clicked() {
    if (!form_ || !form_->HasRecord()) return;
    form_->SetValues(owner_->recover_, true);
    owner_->RecoverRecord();
}

// A list is a move to any record; the hooks are those of a move behind.
void CSqlDialogBtns::goTo(int row) {
    if (row >= 0 && leave(&CSqlDialog::BeforeNext) && form_->Go(row)) arrive(&CSqlDialog::AfterNext);
}

void CSqlDialogBtns::ToolButton_SearchRec_clicked() { ToolButton_Browse_clicked(); }

void CSqlDialogBtns::ToolButton_Browse_clicked() {
    if (form_ && form_->HasRecord()) goTo(RecordList(form_, owner_).choose());
}

void CSqlDialogBtns::ToolButton_Export_clicked() {
    if (!form_) return;
    const QString file =
        QFileDialog::getSaveFileName(owner_, tr("输出记录信息"), form_->Table() + ".csv", "CSV (*.csv)");
    if (file.isEmpty()) return;
    QSaveFile out(file);
    if (out.open(QIODevice::WriteOnly) && out.write(csvOf(*form_)) >= 0 && out.commit()) return;
    WinDockFeedback::ShowMessage((tr("不能写文件%1：%2").arg(file, out.errorString())).toUtf8().constData(), "", "", "",
                                 WinDockFeedback::Error);
}

}  // namespace sql_dlg
