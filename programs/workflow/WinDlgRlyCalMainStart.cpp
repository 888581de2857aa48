// The start of a calculation.
#include <QCheckBox>
#include <QComboBox>
#include <QProgressDialog>

#include "programs/frame/ui/CBaseDialog.h"
#include "programs/workflow/WinDlgRlyCal.h"
#include "programs/workflow/WinDlgRlyCalMain.h"

void WinDlgRlyCalMain::PushButton_HandCal_Clicked() { start(1); }
void WinDlgRlyCalMain::PushButton_AutoCal_Clicked() { start(2); }

void WinDlgRlyCalMain::start(int mode) {
    if (start_ || !editing_.cases().current() || !SaveRecord(1) || !CaseEditing::claimRuns()) return;
    calMode = mode;
    frame_->setEnabled(false);
    box_ = std::make_unique<QProgressDialog>(tr("初始化计算数据..."), QString(), 0, 100, this);
    box_->setObjectName("progressDialog_Start");
    box_->setWindowTitle(windowTitle());
    box_->setWindowModality(Qt::WindowModal);
    box_->setMinimumDuration(0);
    box_->setAutoReset(false);
    start_ = std::make_unique<CalculationStart>(editing_.cases(), editing_.network(), places_, mode);
    connect(start_.get(), &CalculationStart::progress, box_.get(), [this](int percent) { box_->setValue(percent); });
    connect(start_.get(), &CalculationStart::converted, this, &WinDlgRlyCalMain::VASKELSlot);
    connect(start_.get(), &CalculationStart::failed, this, &WinDlgRlyCalMain::endStart, Qt::QueuedConnection);
    connect(start_.get(), &CalculationStart::ready, this, &WinDlgRlyCalMain::QORDENSlot, Qt::QueuedConnection);
    connect(box_.get(), &QProgressDialog::canceled, start_.get(), &CalculationStart::abort);
    if (!start_->start()) return endStart();
    // from here on other programs work: one that hangs must not keep the window
    box_->setCancelButtonText(tr("中止"));
}

void WinDlgRlyCalMain::VASKELSlot() { box_->setLabelText(tr("确定计算顺序...")); }

void WinDlgRlyCalMain::QORDENSlot() {
    if (!start_) return;
    endStart();
    const CaseNode& node = *editing_.cases().current();
    WinDlgRlyCal(places_.rtdbName, places_.rtdbPath, places_.workDir, node.Case_No, node.RTypeNo, node.RTypeCode,
                 places_.programDir, homeDir_, calMode == 1 ? 1 : 2, this)
        .exec();
    DspTable_ObjRly(editing_.cases().form(yiErFlag == 1));
}

void WinDlgRlyCalMain::endStart() {
    box_.reset();
    start_.reset();
    frame_->setEnabled(true);
}
