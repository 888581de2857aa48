#include "programs/workflow/ui/SettingPictures.h"

#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/host/ui/Icons.h"
#include "programs/frame/RelayTypes.h"
#include "programs/frame/ui/DialogParts.h"
#include "programs/workflow/ImpedancePicture.h"
#include "programs/workflow/ResultTable.h"
#include "programs/workflow/StepPicture.h"
#include "programs/workflow/ui/PictureCanvas.h"
#include "programs/workflow/ui/PictureExport.h"

namespace {

constexpr qsizetype kFewNeighbours = 4;

bool hasImpedance(int rTypeNo) {
    const RelayTypeInfo type = readRelayTypes().value(rTypeNo);
    return std::any_of(type.settings.begin(), type.settings.end(),
                       [](const SettingKind& setting) { return setting.VType == kImpedance; });
}

/// A picture's title as the name of a file.
QString fileName(const QString& title) {
    return QString(title).replace(QRegularExpression("[\\\\/:*?\"<>|\\s]+"), "_") + ".svg";
}

bool hasFinding(const PictureData& data, int neighbour) {
    return std::any_of(data.findings.begin(), data.findings.end(),
                       [&](const PictureFinding& finding) { return finding.neighbour == neighbour; });
}

}  // namespace

SettingPictures::SettingPictures(int caseNo, int rTypeNo, QWidget* parent)
    : QWidget(parent),
      case_(caseNo),
      impedances_(hasImpedance(rTypeNo)),
      tabs_(named<QTabWidget>("tabWidget_Pictures", this)),
      plane_(new PictureCanvas("picture_Plane", tabs_)),
      steps_(new PictureCanvas("picture_Steps", tabs_)),
      neighbour_(named<QComboBox>("comboBox_Neighbour", this)),
      measure_(named<QComboBox>("comboBox_Measure", this)) {
    setObjectName("SettingPictures");
    tabs_->addTab(plane_, tr("阻抗平面"));
    tabs_->addTab(steps_, tr("时间配合"));
    tabs_->setTabEnabled(0, impedances_);
    if (!impedances_) tabs_->setTabToolTip(0, tr("该保护类型没有阻抗定值，没有阻抗平面图"));
    tabs_->setCurrentIndex(impedances_ ? 0 : 1);
    measure_->addItems({tr("一次值"), tr("二次值")});
    neighbour_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    neighbour_->setMinimumContentsLength(16);
    layOut();
    connect(neighbour_, &QComboBox::currentIndexChanged, this, &SettingPictures::draw);
    connect(measure_, &QComboBox::currentIndexChanged, this, &SettingPictures::draw);
}

QToolButton* SettingPictures::addButton(const char* name, const QString& text, const QString& tip, QHBoxLayout& row) {
    auto* button = named<QToolButton>(name, this);
    button->setText(text);
    button->setToolTip(tip);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    row.addWidget(button);
    return button;
}

void SettingPictures::layOut() {
    auto* row = new QHBoxLayout;
    auto* label = new QLabel(tr("相邻支路(&N)"), this);
    label->setBuddy(neighbour_);
    row->addWidget(label);
    row->addWidget(neighbour_);
    row->addWidget(measure_);
    row->addStretch();
    const auto act = [&](QToolButton* button, auto slot) { connect(button, &QToolButton::clicked, this, slot); };
    act(addButton("toolButton_ZoomIn", "+", tr("放大（滚轮或 +）"), *row), [this] { current()->zoomIn(); });
    act(addButton("toolButton_ZoomOut", "−", tr("缩小（滚轮或 -）"), *row), [this] { current()->zoomOut(); });
    act(addButton("toolButton_ShowAll", tr("全图"), tr("显示全图（双击或 0）"), *row),
        [this] { current()->showAll(); });
    auto* copy = addButton("toolButton_Copy", tr("复制"), tr("把图复制到剪贴板"), *row);
    copy->setIcon(host::icon("copy"));
    act(copy, &SettingPictures::copyPicture);
    auto* save = addButton("toolButton_Export", tr("导出..."), tr("把图存为 SVG 或 PNG 文件"), *row);
    save->setIcon(host::icon("export"));
    act(save, &SettingPictures::exportPicture);
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(row);
    rows->addWidget(tabs_, 1);
}

void SettingPictures::showPart(int rNo, int pNo) {
    relay_ = rNo;
    part_ = pNo;
    stale_ = true;
    if (isVisible()) refresh();
}

void SettingPictures::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (stale_) refresh();
}

void SettingPictures::refresh() {
    if (!network_) network_.emplace(case_);
    const bool sameRelay = data_.relay.RNo == relay_ && relay_ != 0;
    const int chosen = neighbour_->currentIndex();
    data_ = readPictureData(case_, relay_, *network_);
    stale_ = false;
    const QSignalBlocker quiet(neighbour_);
    fillNeighbours();
    neighbour_->setCurrentIndex(sameRelay && chosen < neighbour_->count() ? chosen : firstChoice());
    draw();
}

void SettingPictures::fillNeighbours() {
    neighbour_->clear();
    neighbour_->addItem(tr("全部（%1）").arg(data_.neighbours.size()));
    for (int at = 0; at < data_.neighbours.size(); ++at) {
        const QString name = data_.neighbours[at].name();
        neighbour_->addItem(hasFinding(data_, at) ? tr("%1（须检查）").arg(name) : name);
    }
    neighbour_->setEnabled(!data_.neighbours.isEmpty());
    neighbour_->setToolTip(data_.neighbours.isEmpty() ? tr("没有相邻支路") : tr("图中画哪条相邻支路"));
}

/// All of a few; of many the first with something to look at.
int SettingPictures::firstChoice() const {
    if (data_.neighbours.size() <= kFewNeighbours) return 0;
    for (int at = 0; at < data_.neighbours.size(); ++at)
        if (hasFinding(data_, at)) return at + 1;
    for (int at = 0; at < data_.neighbours.size(); ++at)
        if (!data_.neighbours[at].relay.stages.isEmpty()) return at + 1;
    return 0;
}

void SettingPictures::draw() {
    const PictureChoice choice{part_, neighbour_->currentIndex() - 1, measure_->currentIndex() == 1};
    if (impedances_) plane_->setScene(impedancePicture(data_, choice));
    steps_->setScene(stepPicture(data_, choice));
}

PictureCanvas* SettingPictures::current() const { return tabs_->currentIndex() == 0 ? plane_ : steps_; }

void SettingPictures::copyPicture() {
    QGuiApplication::clipboard()->setImage(PictureExport::image(current()->scene()));
}

void SettingPictures::exportPicture() {
    QString filter;
    QString file = QFileDialog::getSaveFileName(this, tr("导出图"), fileName(current()->scene().title),
                                                "SVG (*.svg);;PNG (*.png)", &filter);
    if (file.isEmpty()) return;
    const QString suffix = QFileInfo(file).suffix().toLower();
    if (suffix != "svg" && suffix != "png") file += filter.startsWith("PNG") ? ".png" : ".svg";
    QString error;
    if (!PictureExport::write(current()->scene(), file, &error)) QMessageBox::warning(this, tr("导出图"), error);
}
