#include "programs/workflow/WinDlgRlyCal.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QTabWidget>
#include <QToolButton>

#include "programs/frame/ui/DialogParts.h"
#include "programs/frame/ui/PaintTable.h"
#include "programs/workflow/ui/RunProgress.h"
#include "programs/workflow/ui/SettingPictures.h"
#include "programs/workflow/ui/SettingTable.h"

namespace {

CaseNode nodeOf(int caseNo, const RelayTypeInfo& type) {
    CaseNode node;
    node.Case_No = caseNo;
    node.RTypeNo = type.RTypeNo;
    node.RTypeCode = type.RTypeCode;
    return node;
}

/// Enter in a table does what a double click or a click does.
template <class Slot>
void onEnter(QWidget* table, Slot slot) {
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter})
        QObject::connect(new QShortcut(key, table, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, slot);
}

}  // namespace

WinDlgRlyCal::WinDlgRlyCal(const QString& rtdbName, const QString& rtdbPath, const QString& workDir, int caseNo,
                           int rTypeNo, const QString& typeText, const QString& programDir, const QString&, int runMode,
                           QWidget* parent)
    : QDialog(parent),
      type_(readRelayTypes().value(rTypeNo)),
      case_(nodeOf(caseNo, type_)),
      places_{rtdbName, rtdbPath, workDir, programDir},
      typeText_(typeText),
      session_(case_, places_),
      wording_(rTypeNo),
      runMode_(runMode == 1 ? RunSession::Manual : RunSession::Automatic),
      table_RlyObj(new SettingTable(this, "table_RlyObj")),
      table_RDzTm(new RecordTable(this, "table_RDzTm")),
      table_Klm(new PaintTable(this, "table_Klm")),
      pictures_(new SettingPictures(caseNo, rTypeNo, this)),
      list_WithoutResult(named<QListWidget>("list_WithoutResult", this)),
      tabWidget_Right(named<QTabWidget>("tabWidget_Right", this)),
      progress_(new RunProgress(this)),
      label_RlyObj(new QLabel(this)),
      label_RDzTm(new QLabel(this)),
      label_Klm(new QLabel(this)),
      label_KlmReason(named<QLabel>("label_KlmReason", this)),
      label_KlmSys(new QLabel(this)),
      lineEdit_KlmSys(named<QLineEdit>("lineEdit_KlmSys", this)),
      pushButton_KlmSys(named<QPushButton>("pushButton_KlmSys", this)),
      pushButton_CalKlm(named<QPushButton>("pushButton_CalKlm", this)),
      pushButton_OtherPara(named<QPushButton>("pushButton_OtherPara", this)),
      pushButton_BuildCalBook(named<QPushButton>("pushButton_BuildCalBook", this)),
      pushButton_Next(named<QPushButton>("pushButton_Next", this)),
      pushButton_Ensure(named<QPushButton>("pushButton_Ensure", this)),
      pushButton_Cancel(named<QPushButton>("pushButton_Cancel", this)),
      toolButton_Book(named<QToolButton>("toolButton_Book", this)) {
    setObjectName("WinDlgRlyCal");
    layOut();
    languageChange();
    setUpTables();
    connectAll();
    connectSession();
    open();
}

WinDlgRlyCal::~WinDlgRlyCal() = default;

void WinDlgRlyCal::connectAll() {
    connect(table_RlyObj, &SettingTable::cellClicked, this, &WinDlgRlyCal::Table_RlyObj_Clicked);
    // the mouse gives a click as well
    connect(table_RlyObj, qOverload<int, int>(&SettingTable::currentChanged), this, [this] {
        if (QGuiApplication::mouseButtons() == Qt::NoButton) refreshView();
    });
    connect(table_RlyObj, &SettingTable::valueChanged, this,
            qOverload<int, int>(&WinDlgRlyCal::Table_RlyObj_ValueChanged));
    connect(table_RDzTm, &RecordTable::cellDoubleClicked, this, &WinDlgRlyCal::Table_RDzTm_DoubleClicked);
    connect(table_Klm, &PaintTable::cellClicked, this, &WinDlgRlyCal::Table_Klm_Clicked);
    onEnter(table_RDzTm, [this] { Table_RDzTm_DoubleClicked(); });
    onEnter(table_Klm, [this] { Table_Klm_Clicked(); });
    connect(pushButton_KlmSys, &QPushButton::clicked, this, &WinDlgRlyCal::PushButton_KlmSys_Clicked);
    connect(pushButton_CalKlm, &QPushButton::clicked, this, &WinDlgRlyCal::PushButton_CalKlm_Clicked);
    connect(pushButton_OtherPara, &QPushButton::clicked, this, [this] { chooseParameter(0); });
    connect(pushButton_BuildCalBook, &QPushButton::clicked, this, &WinDlgRlyCal::PushButton_BuildCalBook_Clicked);
    connect(pushButton_Next, &QPushButton::clicked, this, &WinDlgRlyCal::PushButton_Next_Clicked);
    connect(pushButton_Ensure, &QPushButton::clicked, this, &WinDlgRlyCal::PushButton_Ensure_Clicked);
    connect(pushButton_Cancel, &QPushButton::clicked, this, &WinDlgRlyCal::PushButton_Cancel_Clicked);
    connect(tabWidget_Right, &QTabWidget::currentChanged, this, &WinDlgRlyCal::showPictures);
    connect(list_WithoutResult, &QListWidget::itemActivated, this, [this](const QListWidgetItem* item) {
        goTo(item->data(Qt::UserRole).toInt(), item->data(Qt::UserRole + 1).toInt());
    });
}

void WinDlgRlyCal::connectSession() {
    session_.setParametersToConfirm(true);
    connect(&session_, &RunSession::progress, progress_, &RunProgress::setSteps);
    connect(&session_, &RunSession::stepStarted, this, &WinDlgRlyCal::onStep);
    connect(&session_, &RunSession::message, this, &WinDlgRlyCal::onMessage);
    connect(&session_, &RunSession::partShown, this, &WinDlgRlyCal::HandCalSlot);
    connect(&session_, &RunSession::recalculated, this, &WinDlgRlyCal::onRecalculated);
    connect(&session_, &RunSession::finished, this, &WinDlgRlyCal::onFinished);
    connect(progress_, &RunProgress::beat, this, &WinDlgRlyCal::onBeat);
}

void WinDlgRlyCal::open() {
    opened_ = session_.open();
    DspTable_RlyObj();
    DspKlmSys();
    if (!opened_) progress_->say(tr("不能备份工作表，本窗口不能计算，原因见消息窗口"));
    table_RlyObj->setCurrentCell(0, SettingModel::FirstValue);
    refreshView();
    showState();
    table_RlyObj->setFocus();
}

bool WinDlgRlyCal::agrees(const QString& question) {
    return QMessageBox::question(this, windowTitle(), question, QMessageBox::Yes | QMessageBox::No, QMessageBox::No) ==
           QMessageBox::Yes;
}

// Enter in the table, which it leaves where there is nothing to edit, starts no run.
void WinDlgRlyCal::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool inTable = table_RlyObj == focusWidget() || table_RlyObj->isAncestorOf(focusWidget());
    if (!enter || !inTable) QDialog::keyPressEvent(event);
}

// Closing by the frame and Esc; what a run has cost is not lost by one key.
void WinDlgRlyCal::reject() {
    if (session_.state() != RunSession::State::Idle) {
        if (!agrees(tr("正在计算。中止计算，放弃结果，关闭窗口？"))) return;
        closing_ = session_.state() != RunSession::State::Idle;
        closing_ ? abort() : giveUp();
        return;
    }
    if (session_.hasChanged() && !agrees(tr("放弃本窗口中的计算结果和修改？"))) return;
    giveUp();
}

void WinDlgRlyCal::giveUp() {
    if (opened_ && !session_.cancel() &&
        !agrees(tr("工作表没有恢复，原因见消息窗口。关闭窗口，下次打开工程时再恢复？")))
        return;
    QDialog::reject();
}
