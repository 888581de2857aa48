#include "programs/workflow/ui/SettingTableBar.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QSettings>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>

#include "platform/host/ui/Icons.h"
#include "platform/host/ui/TableExport.h"
#include "platform/host/ui/TableHabits.h"
#include "programs/frame/Messages.h"
#include "programs/frame/ui/DialogParts.h"
#include "programs/workflow/ui/SettingTable.h"

namespace {

const QString kShareKey = QStringLiteral("SettingTableBar/warning_percent");
const QString kFolderKey = QStringLiteral("SettingTableBar/folder");
constexpr int kUsualPercent = 20, kGreatestPercent = 1000;

}  // namespace

SettingTableBar::SettingTableBar(SettingTable* table, QWidget* parent)
    : QWidget(parent),
      table_(table),
      comboBox_Station(named<QComboBox>("comboBox_Station", this)),
      checkBox_OnlyChanged(named<QCheckBox>("checkBox_OnlyChanged", this)),
      textLabel_Warning(named<QLabel>("textLabel_Warning", this)),
      spinBox_Warning(named<QSpinBox>("spinBox_Warning", this)),
      textLabel_Shown(named<QLabel>("textLabel_Shown", this)),
      toolButton_Export(named<QToolButton>("toolButton_Export", this)) {
    spinBox_Warning->setRange(0, kGreatestPercent);
    languageChange();
    layOut();
    showStations();
    spinBox_Warning->setValue(host::tableSettings().value(kShareKey, kUsualPercent).toInt());
    table_->setWarningShare(spinBox_Warning->value() / 100.0);
    connectAll();
}

void SettingTableBar::layOut() {
    auto* menu = new QMenu(toolButton_Export);
    connect(menu->addAction(tr("导出CSV…")), &QAction::triggered, this, [this] { exportTo("csv"); });
    connect(menu->addAction(tr("导出XLSX…")), &QAction::triggered, this, [this] { exportTo("xlsx"); });
    connect(menu->addAction(host::icon("copy"), tr("复制")), &QAction::triggered, this, &SettingTableBar::copyShown);
    toolButton_Export->setMenu(menu);
    toolButton_Export->setPopupMode(QToolButton::InstantPopup);
    toolButton_Export->setIcon(host::icon("export"));
    toolButton_Export->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    toolButton_Export->setFocusPolicy(Qt::TabFocus);
    comboBox_Station->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    textLabel_Warning->setBuddy(spinBox_Warning);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    for (QWidget* widget : {static_cast<QWidget*>(comboBox_Station), static_cast<QWidget*>(checkBox_OnlyChanged)})
        row->addWidget(widget);
    row->addSpacing(12);
    row->addWidget(textLabel_Warning);
    row->addWidget(spinBox_Warning);
    row->addStretch();
    row->addWidget(textLabel_Shown);
    row->addWidget(toolButton_Export);
    host::setTabChain({comboBox_Station, checkBox_OnlyChanged, spinBox_Warning, toolButton_Export});
}

void SettingTableBar::languageChange() {
    comboBox_Station->setToolTip(tr("只看一个厂站的保护"));
    checkBox_OnlyChanged->setText(tr("只看有变化的定值"));
    textLabel_Warning->setText(tr("变化超过此值时提示:"));
    spinBox_Warning->setSuffix("%");
    spinBox_Warning->setSpecialValueText(tr("不提示"));
    spinBox_Warning->setToolTip(tr("新定值与原定值相差超过这个百分比时加提示标记"));
    toolButton_Export->setText(tr("导出"));
}

void SettingTableBar::connectAll() {
    connect(comboBox_Station, &QComboBox::currentIndexChanged, this,
            [this] { table_->setStation(comboBox_Station->currentData().toString()); });
    connect(checkBox_OnlyChanged, &QCheckBox::toggled, table_, &SettingTable::setOnlyChanged);
    connect(spinBox_Warning, &QSpinBox::valueChanged, this, &SettingTableBar::setShare);
    const SettingModel* all = &table_->settings();
    connect(all, &QAbstractItemModel::modelReset, this, &SettingTableBar::showStations);
    connect(all, &QAbstractItemModel::rowsInserted, this, &SettingTableBar::showStations);
    connect(all, &QAbstractItemModel::rowsRemoved, this, &SettingTableBar::showStations);
    const SettingFilter* shown = &table_->shown();
    connect(shown, &QAbstractItemModel::layoutChanged, this, &SettingTableBar::showCount);
    connect(shown, &QAbstractItemModel::rowsInserted, this, &SettingTableBar::showCount);
    connect(shown, &QAbstractItemModel::rowsRemoved, this, &SettingTableBar::showCount);
}

void SettingTableBar::showStations() {
    const QStringList stations = table_->stations();
    const QString chosen = comboBox_Station->currentData().toString();
    {
        const QSignalBlocker quiet(comboBox_Station);
        comboBox_Station->clear();
        comboBox_Station->addItem(tr("全部厂站"), QString());
        for (const QString& station : stations) comboBox_Station->addItem(station, station);
        comboBox_Station->setCurrentIndex(int(stations.indexOf(chosen)) + 1);
    }
    if (comboBox_Station->currentData().toString() != chosen) table_->setStation({});
    showCount();
}

void SettingTableBar::showCount() {
    const int shown = table_->model()->rowCount(), all = table_->settings().rowCount();
    textLabel_Shown->setText(shown == all ? QString() : tr("显示 %1 / %2 行").arg(shown).arg(all));
    toolButton_Export->setEnabled(shown > 0);
    toolButton_Export->setToolTip(shown > 0 ? tr("导出或复制表中所示的定值") : tr("表中没有定值"));
}

void SettingTableBar::setShare(int percent) {
    host::tableSettings().setValue(kShareKey, percent);
    table_->setWarningShare(percent / 100.0);
}

void SettingTableBar::exportTo(const QString& suffix) {
    QFileDialog dialog(this, tr("导出定值"), host::tableSettings().value(kFolderKey).toString(),
                       suffix.toUpper() + " (*." + suffix + ")");
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix);
    if (dialog.exec() != QDialog::Accepted) return;
    const QString file = dialog.selectedFiles().value(0);
    host::tableSettings().setValue(kFolderKey, QFileInfo(file).absolutePath());
    QString error;
    const bool written =
        suffix == "csv" ? host::writeCsv(*table_, file, &error) : host::writeXlsx(*table_, tr("定值"), file, &error);
    written ? ReportSuccess(tr("定值已导出到%1").arg(file), 0) : ReportError(error, 0);
}

void SettingTableBar::copyShown() const { QGuiApplication::clipboard()->setText(host::shownText(*table_)); }
