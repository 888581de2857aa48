#include <QFileDialog>
#include <QMenu>
#include <QToolButton>

#include "platform/host/ui/Icons.h"
#include "platform/host/ui/WaitCursor.h"
#include "platform/sql/Sql.h"
#include "programs/reports/BookViewer.h"
#include "programs/reports/CBookWriter.h"
#include "programs/reports/ui/BookExport.h"
#include "programs/workflow/PickerResults.h"
#include "programs/workflow/SensitivityModes.h"
#include "programs/workflow/WinDlgRlyCal.h"
#include "programs/workflow/WinDlgselectSYS.h"
#include "programs/workflow/ui/RunProgress.h"

using State = RunSession::State;

// A choice that is called off leaves the modes of the case as they are.
void WinDlgRlyCal::PushButton_KlmSys_Clicked() {
    if (session_.state() != State::Idle) return;
    WinDlgselectSYS dialog(this);
    if (dialog.exec() != Accepted) return;
    QList<int> modes;
    for (const SelectedSys* mode = SelectedSysList; mode; mode = mode->previous) modes << mode->SysNo;
    SensitivityModes::store(case_.Case_No, modes);
    DspKlmSys();
}

QString WinDlgRlyCal::caseName() const {
    return sql::scalar({}, "SELECT Case_Name FROM RLY_CASE_RLY WHERE Case_No=?", {case_.Case_No}).toString();
}

void WinDlgRlyCal::PushButton_BuildCalBook_Clicked() {
    if (!acceptsWork() || session_.state() != State::Idle) return;
    CBookWriter writer(case_.Case_No, case_.RTypeNo, typeText_, caseName());
    if (writer.hasResults() && writer.WriteSettingBook(places_.workDir))
        showBook(places_.workDir + "CalRef.ROT", places_.programDir);
}

void WinDlgRlyCal::setUpBookMenu() {
    delete toolButton_Book->menu();
    auto* menu = new QMenu(toolButton_Book);
    menu->addAction(tr("生成计算书"), this, &WinDlgRlyCal::PushButton_BuildCalBook_Clicked);
    menu->addAction(tr("导出PDF…"), this, [this] { exportBook(tr("PDF文件 (*.pdf)"), ".pdf", exportBookPdf); });
    menu->addAction(tr("导出HTML…"), this, [this] { exportBook(tr("网页 (*.html)"), ".html", exportBookHtml); });
    toolButton_Book->setMenu(menu);
    toolButton_Book->setPopupMode(QToolButton::InstantPopup);
    toolButton_Book->setText(tr("导出计算书"));
    toolButton_Book->setIcon(host::icon("export"));
    toolButton_Book->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
}

void WinDlgRlyCal::exportBook(const QString& kind, const QString& ending,
                              bool (*write)(const BookRequest&, const QString&)) {
    if (!acceptsWork() || session_.state() != State::Idle) return;
    QString file = QFileDialog::getSaveFileName(this, tr("导出计算书"), caseName() + ending, kind, nullptr,
                                                QFileDialog::DontUseNativeDialog);
    if (file.isEmpty()) return;
    if (!file.endsWith(ending, Qt::CaseInsensitive)) file += ending;
    bool written = false;
    {
        const host::WaitCursor wait;
        written = write({case_.Case_No, case_.RTypeNo, typeText_, caseName(), false, places_.workDir}, file);
    }
    progress_->say(written ? tr("已写入 ") + file : tr("没有写入，原因见消息窗口: ") + file);
}
