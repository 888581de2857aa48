#include "programs/frame/ui/CBrowseBaseDialog.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "platform/host/ui/RecordButtons.h"
#include "programs/frame/ui/FrameLayout.h"

namespace {

struct Place {
    QToolButton* CBrowseBaseDialog::*member;
    host::ToolButtonForm form;
};

constexpr Place kPlaces[] = {
    {&CBrowseBaseDialog::SearchRec,
     {"search", QT_TRANSLATE_NOOP("RecordButtons", "查找记录 Ctrl+F"), "ToolButton_SearchRec_clicked", "Ctrl+F"}},
    {&CBrowseBaseDialog::SortRec,
     {"sort", QT_TRANSLATE_NOOP("RecordButtons", "记录排序"), "ToolButton_SortRec_clicked", "Ctrl+Shift+S"}},
    {&CBrowseBaseDialog::WinConfig,
     {"window", QT_TRANSLATE_NOOP("RecordButtons", "窗口设置 Ctrl+W"), "ToolButton_WinConfig_clicked", "Ctrl+W"}},
    {&CBrowseBaseDialog::FilterRec,
     {"filter", QT_TRANSLATE_NOOP("RecordButtons", "记录过滤"), "ToolButton_FilterRec_clicked", "Ctrl+Shift+F"}},
    {&CBrowseBaseDialog::DisplayConf,
     {"display", QT_TRANSLATE_NOOP("RecordButtons", "显示设置 Ctrl+S"), "ToolButton_DisplayConf_clicked", "Ctrl+S"}},
};

}  // namespace

CBrowseBaseDialog::CBrowseBaseDialog(QWidget* parent, const char* name, uint flags)
    : QWidget(parent, Qt::WindowFlags(int(flags))) {
    setObjectName(name ? name : "CBrowseBaseDialog");
    const FrameLayout frame = fillWithFrame(parent, this);
    for (const Place& place : kPlaces) {
        QToolButton* button = host::makeToolButton(place.form, this);
        this->*place.member = button;
        frame.tools->addWidget(button);
        host::connectByName(button, parent, place.form.slot);
    }
    frame.tools->addStretch();
    body_ = frame.body;
}
