#include "platform/recordform/CSqlDialog.h"

#include <QPushButton>
#include <QToolTip>
#include <QVBoxLayout>

#include "platform/host/Text.h"
#include "platform/host/WinDockFeedback.h"
#include "platform/recordform/CDataForm.h"
#include "platform/recordform/CSqlDialogBtns.h"
#include "platform/recordform/CSqlWidget.h"

namespace sql_dlg {

namespace {

void tell(const QString& text) {
    WinDockFeedback::ShowMessage(text.toUtf8().constData(), "", "", "", WinDockFeedback::Error);
}

}  // namespace

CSqlDialog::CSqlDialog(QSqlDatabase* database, QWidget* parent, const char* name, bool modal, uint flags)
    : QDialog(parent, Qt::WindowFlags(int(flags))),
      pushButton_OK(new QPushButton(tr("确定"), this)),
      pushButton_Cancel(new QPushButton(tr("取消"), this)),
      database_(database),
      whole_(new QVBoxLayout(this)),
      body_(new QVBoxLayout) {
    setObjectName(name);
    setModal(modal);
    pushButton_OK->setObjectName("pushButton_OK");
    pushButton_Cancel->setObjectName("pushButton_Cancel");
    pushButton_OK->setDefault(true);
    auto* ends = new QHBoxLayout;
    ends->addStretch();
    ends->addWidget(pushButton_OK);
    ends->addWidget(pushButton_Cancel);
    whole_->setContentsMargins(10, 5, 10, 8);
    whole_->addLayout(body_, 1);
    whole_->addLayout(ends);
    connect(pushButton_OK, &QPushButton::clicked, this, [this] { ToolButton_OK_clicked(); });
    connect(pushButton_Cancel, &QPushButton::clicked, this, [this] { ToolButton_Cancel_clicked(); });
}

CSqlDialog::~CSqlDialog() = default;

CDataForm* CSqlDialog::form() const { return buttons_ ? buttons_->GetDataForm() : nullptr; }

void CSqlDialog::InitDlg() {
    if (!form()) return;
    const bool recoverable = ProvideTmpTable();
    if (!recoverable) form()->Clear();
    form()->Show();
    buttons_->setEnabled(recoverable);
    pushButton_OK->setEnabled(recoverable);
    StoreRecover();
    SetCtrlBtns();
}

void CSqlDialog::SetCtrlBtns() {
    const CDataForm* records = form();
    if (!records) return;
    const bool any = records->HasRecord();
    const bool before = records->At() > 0, behind = any && records->At() + 1 < records->Count();
    buttons_->PrevRec->setEnabled(before);
    buttons_->FirstRec->setEnabled(before);
    buttons_->NextRec->setEnabled(behind);
    buttons_->LastRec->setEnabled(behind);
    for (QToolButton* button : {buttons_->DeleteRec, buttons_->CopyRec, buttons_->SearchRec, buttons_->RecoverAll,
                                buttons_->Browse, buttons_->Export})
        button->setEnabled(any);
    if (!any) buttons_->PasteRec->setEnabled(false);
}

void CSqlDialog::StoreRecover() { recover_ = form() && form()->HasRecord() ? form()->Values() : QStringList(); }

bool CSqlDialog::refuse(const QString& why, QWidget* where) {
    tell(why);
    if (where) {
        where->setFocus();
        QToolTip::showText(where->mapToGlobal(QPoint(0, where->height())), why, where);
    }
    return false;
}

bool CSqlDialog::CheckDataValid() {
    CSqlWidget* where = nullptr;
    const QString why = form()->WhyNotStorable(&where);
    return why.isEmpty() || refuse(why, where->Widget());
}

bool CSqlDialog::CheckPrimaryKey() {
    const QString why = form()->WhyNoKey();
    return why.isEmpty() || refuse(why, nullptr);
}

bool CSqlDialog::SaveCurrent() {
    if (!form() || !form()->HasRecord()) return true;
    return CheckDataValid() && CheckPrimaryKey() && form()->Update();
}

void CSqlDialog::ToolButton_OK_clicked() {
    if (!SaveCurrent()) return;
    SaveTmpTable();
    accept();
}

void CSqlDialog::ToolButton_Cancel_clicked() {
    DropTmpTable();
    QDialog::reject();
}

// Esc and the window's frame come here, also for what a derived dialog does on Cancel.
void CSqlDialog::reject() { ToolButton_Cancel_clicked(); }

bool CSqlDialog::ProvideTmpTable() {
    const sql::TableCopy copy{form()->Connection(), form()->Table(), form()->Table() + "_TEM"};
    table_ = std::make_unique<sql::CopySession>(metaObject()->className(), "_TEM", QVector<sql::TableCopy>{copy});
    QString failed;
    if (table_->open(sql::makeCopy, &failed)) return true;
    tell(Text::tr("建立") + failed + Text::tr("表失败"));
    return false;
}

bool CSqlDialog::SaveTmpTable() { return table_ && table_->commit(); }

bool CSqlDialog::DropTmpTable() {
    if (!table_ || !table_->isOpen() || table_->restore()) return true;
    tell(Text::tr("不能恢复打开窗口前的数据，数据库中的数据未改变"));
    return false;
}

}  // namespace sql_dlg
