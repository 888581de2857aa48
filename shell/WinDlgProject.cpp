#include "shell/WinDlgProject.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "programs/frame/ProjectStore.h"
#include "shell/Appearance.h"
#include "shell/ImportReport.h"
#include "shell/Settings.h"

namespace shell {

using Kind = ProjectJob::Wish::Kind;
using Outcome = ProjectJob::Outcome;

WinDlgProject::WinDlgProject(const ProjectJob::Wish& wish, Settings& settings, std::function<void()> beforeStore,
                             QWidget* parent)
    : QDialog(parent), wish_(wish), settings_(settings), beforeStore_(std::move(beforeStore)) {
    setObjectName("WinDlgProject");
    setWindowTitle(captionOf(wish.kind));
    pages_ = new QStackedWidget(this);
    auto* buttons = new QDialogButtonBox(this);
    pushButton_Ensure = buttons->addButton(QString(), QDialogButtonBox::AcceptRole);
    pushButton_Ensure->setObjectName("pushButton_Ensure");
    pushButton_Ensure->setDefault(true);
    pushButton_Cancel = buttons->addButton(QString(), QDialogButtonBox::RejectRole);
    pushButton_Cancel->setObjectName("pushButton_Cancel");
    makeForm();
    makeProgress();
    pages_->addWidget(report_ = new ImportReportPage(this));
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(pages_);
    rows->addWidget(buttons);
    resize(fontMetrics().averageCharWidth() * 90, sizeHint().height());
    connect(pushButton_Ensure, &QPushButton::clicked, this, &WinDlgProject::accept);
    connect(pushButton_Cancel, &QPushButton::clicked, this, &WinDlgProject::reject);
    connect(&job_, &ProjectJob::networkRead, this, &WinDlgProject::networkRead);
    connect(&job_, &ProjectJob::stored, this, &WinDlgProject::stored);
    backToForm(Outcome::Done);
}

QString WinDlgProject::captionOf(Kind kind) const {
    if (kind == Kind::Create) return wish_.demonstration ? tr("示例工程") : tr("新建工程");
    return kind == Kind::Import ? tr("导入网络") : tr("工程另存为");
}

void WinDlgProject::makeForm() {
    auto* page = new QWidget(this);
    auto* form = new QFormLayout(page);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    lineEdit_Name = new QLineEdit(wish_.name, page);
    lineEdit_Name->setObjectName("lineEdit_Name");
    lineEdit_Name->setEnabled(wish_.kind != Kind::Import);
    textLabel_Name = new QLabel(page);
    textLabel_Name->setObjectName("textLabel_Name");
    textLabel_Name->setWordWrap(true);
    form->addRow(tr("工程名(&N):"), lineEdit_Name);
    form->addRow(QString(), textLabel_Name);
    if (wish_.kind != Kind::SaveAs) addSource(*form);
    textLabel_Reason = new QLabel(page);
    textLabel_Reason->setObjectName("textLabel_Reason");
    textLabel_Reason->setWordWrap(true);
    textLabel_Reason->setTextInteractionFlags(Qt::TextSelectableByMouse);
    form->addRow(textLabel_Reason);
    pages_->addWidget(page);
    connect(lineEdit_Name, &QLineEdit::textChanged, this, &WinDlgProject::check);
}

void WinDlgProject::addSource(QFormLayout& form) {
    QWidget* page = form.parentWidget();
    auto* row = new QHBoxLayout;
    lineEdit_Source = new QLineEdit(wish_.source, page);
    lineEdit_Source->setObjectName("lineEdit_Source");
    lineEdit_Source->setPlaceholderText(wish_.kind == Kind::Create ? tr("可以留空，以后再导入") : QString());
    auto* file = new QPushButton(tr("文件(&F)…"), page);
    auto* folder = new QPushButton(tr("文件夹(&D)…"), page);
    for (QPushButton* button : {file, folder}) button->setAutoDefault(false);
    row->addWidget(lineEdit_Source, 1);
    row->addWidget(file);
    row->addWidget(folder);
    auto* label = new QLabel(tr("网络(&S):"), page);
    label->setBuddy(lineEdit_Source);
    form.addRow(label, row);
    textLabel_Kind = new QLabel(page);
    textLabel_Kind->setObjectName("textLabel_Kind");
    textLabel_Kind->setWordWrap(true);
    form.addRow(QString(), textLabel_Kind);
    checkBox_Shorten = new QCheckBox(tr("过长或重复的名称按规则缩短（不选则拒绝）"), page);
    checkBox_Shorten->setChecked(true);
    checkBox_Defaults = new QCheckBox(tr("没有零序和电机数据时取缺省值"), page);
    checkBox_Defaults->setChecked(true);
    form.addRow(QString(), checkBox_Shorten);
    form.addRow(QString(), checkBox_Defaults);
    connect(file, &QPushButton::clicked, this, &WinDlgProject::chooseFile);
    connect(folder, &QPushButton::clicked, this, &WinDlgProject::chooseFolder);
    connect(lineEdit_Source, &QLineEdit::textChanged, this, &WinDlgProject::check);
}

void WinDlgProject::makeProgress() {
    auto* page = new QWidget(this);
    auto* rows = new QVBoxLayout(page);
    textLabel_Step = new QLabel(page);
    textLabel_Step->setObjectName("textLabel_Step");
    progressBar = new QProgressBar(page);
    progressBar->setObjectName("progressBar");
    rows->addStretch();
    rows->addWidget(textLabel_Step);
    rows->addWidget(progressBar);
    rows->addStretch();
    pages_->addWidget(page);
    connect(&job_, &ProjectJob::progress, this, [this](int percent, const QString& what) {
        progressBar->setValue(percent);
        textLabel_Step->setText(what);
    });
}

void WinDlgProject::chooseFile() {
    const QString file = QFileDialog::getOpenFileName(this, tr("网络文件"), settings_.folder(),
                                                      tr("网络文件 (*.xml *.zip *.m);;所有文件 (*)"));
    if (file.isEmpty()) return;
    settings_.setFolder(QFileInfo(file).path());
    lineEdit_Source->setText(file);
}

void WinDlgProject::chooseFolder() {
    const QString folder = QFileDialog::getExistingDirectory(this, tr("CSV 或 CGMES 文件夹"), settings_.folder());
    if (folder.isEmpty()) return;
    settings_.setFolder(QFileInfo(folder).path());
    lineEdit_Source->setText(folder);
}

QString WinDlgProject::whyNotName() const {
    if (wish_.kind == Kind::Import) return {};
    if (lineEdit_Name->text().isEmpty()) return tr("给工程起一个名字，例如电网名");
    const QString why = ProjectStore::whyNotName(projectName());
    if (!why.isEmpty()) return why;
    return ProjectStore().names().contains(projectName()) ? tr("已有这个名字的工程") : QString();
}

QString WinDlgProject::kindOfSource(bool* usable) const {
    *usable = true;
    if (!lineEdit_Source) return {};
    const QString source = lineEdit_Source->text().trimmed();
    if (source.isEmpty()) {
        *usable = wish_.kind == Kind::Create;
        return tr("CSV 文件夹、CGMES 模型（文件夹、zip 或 xml 文件）或 MATPOWER 算例");
    }
    try {
        const QString names[] = {tr("CSV 文件夹"), tr("CGMES 模型"), tr("MATPOWER 算例")};
        return names[int(import::kindOf(source.toStdString()))];
    } catch (const import::ImportError& error) {
        *usable = false;
        return QString::fromStdString(error.what());
    }
}

void WinDlgProject::check() {
    bool usable = true;
    const QString why = whyNotName();
    textLabel_Name->setText(why);
    const QString kind = kindOfSource(&usable);
    if (textLabel_Kind) textLabel_Kind->setText(kind);
    pushButton_Ensure->setEnabled(why.isEmpty() && usable);
    pushButton_Ensure->setToolTip(pushButton_Ensure->isEnabled() ? QString() : why.isEmpty() ? kind : why);
}

QString WinDlgProject::projectName() const { return lineEdit_Name->text(); }

void WinDlgProject::accept() {
    if (done_) return QDialog::accept();
    if (!job_.isRunning()) start();
}

void WinDlgProject::startAtOnce() {
    atOnce_ = true;
    start();
}

void WinDlgProject::start() {
    wish_.name = projectName();
    if (lineEdit_Source) {
        wish_.source = lineEdit_Source->text().trimmed();
        wish_.options.shortenNames = checkBox_Shorten->isChecked();
        wish_.options.defaultSequenceData = checkBox_Defaults->isChecked();
    }
    pages_->setCurrentIndex(1);
    progressBar->setValue(0);
    pushButton_Ensure->setVisible(false);
    pushButton_Cancel->setText(tr("停止"));
    job_.read(wish_);
}

void WinDlgProject::networkRead(Outcome outcome) {
    if (outcome != Outcome::Done) return backToForm(outcome);
    beforeStore_();
    job_.store();
}

void WinDlgProject::stored(Outcome outcome) {
    if (outcome != Outcome::Done) return backToForm(outcome);
    done_ = true;
    if (atOnce_ || wish_.source.isEmpty()) return QDialog::accept();
    report_->show(job_.report(), tr("工程 %1 的导入报告").arg(wish_.name));
    pages_->setCurrentIndex(2);
    pushButton_Ensure->setVisible(true);
    pushButton_Ensure->setText(tr("打开工程"));
    pushButton_Ensure->setFocus();
    pushButton_Cancel->setVisible(false);
    resize(size().expandedTo(fontMetrics().averageCharWidth() * QSize(110, 60)));
}

void WinDlgProject::backToForm(Outcome outcome) {
    pages_->setCurrentIndex(0);
    pushButton_Ensure->setVisible(true);
    pushButton_Ensure->setText(wish_.kind == Kind::Import ? tr("导入") : tr("建立"));
    pushButton_Cancel->setText(tr("取消"));
    pushButton_Cancel->setEnabled(true);
    const QString reason = job_.reason().isEmpty() ? tr("没有完成，原因见消息窗口") : job_.reason();
    textLabel_Reason->setText(outcome == Outcome::Failed ? reason : outcome == Outcome::Stopped ? tr("已停止") : "");
    check();
    if (atOnce_ && outcome != Outcome::Done) QDialog::reject();
}

void WinDlgProject::reject() {
    if (done_) return QDialog::accept();
    if (!job_.isRunning()) return QDialog::reject();
    job_.stop();
    textLabel_Step->setText(tr("正在停止…"));
    pushButton_Cancel->setEnabled(false);
}

}  // namespace shell
