// The window and its widgets.
#include "programs/workflow/WinDlgRlyCalMain.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QTextEdit>
#include <QVBoxLayout>

#include "platform/host/ui/TableHabits.h"
#include "platform/host/ui/WaitCursor.h"
#include "programs/frame/ui/CBaseDialog.h"
#include "programs/frame/ui/CMorvaneObject.h"
#include "programs/frame/ui/DialogParts.h"
#include "programs/workflow/CaseSources.h"
#include "programs/workflow/ui/SettingTable.h"
#include "programs/workflow/ui/SettingTableBar.h"

namespace {

/// A button with its slot.
struct Button {
    const char* name;
    const char* text;
    const char* toolTip;
    void (WinDlgRlyCalMain::*clicked)();
};
using Window = WinDlgRlyCalMain;
constexpr Button kButtons[] = {
    {"pushButton_AddRly", QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "增加"),
     QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "选择要整定的保护"), &Window::PushButton_Add_Clicked},
    {"pushButton_DeleteRly", QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "删除"),
     QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "从作业中去掉当前行的保护"), &Window::PushButton_Delete_Clicked},
    {"pushButton_Rule", QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "整定原则"),
     QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "当前行的保护采用哪些整定原则和参数"), &Window::PushButton_Rule_Clicked},
    {"pushButton_Check", QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "检修元件"), "", &Window::PushButton_Check_Clicked},
    {"pushButton_Kf", QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "分支系数"), "", &Window::PushButton_Kf_Clicked},
    {"pushButton_BigSys", QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "选择运行方式"),
     QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "选择大运行方式"), &Window::PushButton_BigSys_Clicked},
    {"pushButton_SmallSys", QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "选择运行方式"),
     QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "选择小运行方式"), &Window::PushButton_SmallSys_Clicked},
    {"pushButton_HandCal", QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "手动计算"),
     QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "保存作业，逐个保护逐段计算"), &Window::PushButton_HandCal_Clicked},
    {"pushButton_AutoCal", QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "自动计算"),
     QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "保存作业，一次计算全部保护"), &Window::PushButton_AutoCal_Clicked},
    {"pushButton_SaveDz", QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "保存定值"),
     QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "把新定值存为保护的定值"), &Window::PushButton_SaveDz_Clicked},
    {"pushButton_SaveRlyCop", QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "保存配合"), "",
     &Window::PushButton_SaveRlyCop_Clicked},
};
/// The windows behind these do not exist.
constexpr const char* kWithoutWindow[] = {"pushButton_Check", "pushButton_Kf", "pushButton_SaveRlyCop"};

struct Caption {
    const char* name;
    const char* text;
};
constexpr Caption kLabels[] = {
    {"textLabel_CaseInf_Name", QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "作业名:")},
    {"textLabel_CaseInf_Note", QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "作业描述:")},
    {"textLabel_RType", QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "待整定保护类型:")},
    {"textLabel_BigSys", QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "大运行方式")},
    {"textLabel_SmallSys", QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "小运行方式")},
    {"textLabel_Part", QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "考虑整定的段")},
};
enum LabelPlace { NameLabel, NoteLabel, TypeLabel, BigLabel, SmallLabel, PartLabel };

constexpr const char* kParts[] = {
    QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "一段"), QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "二段"),
    QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "三段"), QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "四段"),
    QT_TRANSLATE_NOOP("WinDlgRlyCalMain", "五段")};

}  // namespace

WinDlgRlyCalMain::WinDlgRlyCalMain(const QString& rtdbName, const QString& rtdbPath, const QString& workDir, int caseNo,
                                   const QString& programDir, const QString& homeDir, dbDatabase* fdb,
                                   CMorvaneObject* owner, QWidget* parent)
    : QDialog(parent),
      owner_(owner),
      editing_(owner ? *owner->network() : ownNetwork_.emplace(*fdb)),
      places_{rtdbName, rtdbPath, workDir, programDir},
      homeDir_(homeDir) {
    setObjectName("WinDlgRlyCalMain");
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    makeParts();
    layOut();
    languageChange();
    connectAll();
    for (const auto& type : CaseSources::relayTypes()) comboBox_RType->addItem(type.code, type.number);
    const host::WaitCursor wait;
    if (editing_.open(caseNo)) {
        DspRecord();
        return;
    }
    // without the copies Cancel could not take anything back
    showNoCase();
    frame_->InsertRec->setEnabled(false);
    frame_->Button_OK->setEnabled(false);
    frame_->Button_OK->setToolTip(tr("不能编辑作业，原因见消息窗口"));
}

WinDlgRlyCalMain::~WinDlgRlyCalMain() = default;

void WinDlgRlyCalMain::makeParts() {
    frame_ = new CBaseDialog(this, "CBaseDialog");
    lineEdit_CaseInf_Name = named<QLineEdit>("lineEdit_CaseInf_Name", frame_);
    checkBox_CaseInf_Flow = named<QCheckBox>("checkBox_CaseInf_Flow", frame_);
    textLabel_CaseInf_FlowNM = named<QLabel>("textLabel_CaseInf_FlowNM", frame_);
    comboBox_CaseInf_FlowNM = named<QComboBox>("comboBox_CaseInf_FlowNM", frame_);
    textEdit_CaseInf_Note = named<QTextEdit>("textEdit_CaseInf_Note", frame_);
    comboBox_RType = named<QComboBox>("comboBox_RType", frame_);
    table_ObjRly = new SettingTable(frame_, "table_ObjRly");
    bar_ = new SettingTableBar(table_ObjRly, frame_);
    buttonGroup_Dz = new QButtonGroup(this);
    buttonGroup_Dz->setObjectName("buttonGroup_Dz");
    radioButton_Yici = named<QRadioButton>("radioButton_Yici", frame_);
    radioButton_Erci = named<QRadioButton>("radioButton_Erci", frame_);
    lineEdit_BigSys = named<QLineEdit>("lineEdit_BigSys", frame_);
    lineEdit_SmallSys = named<QLineEdit>("lineEdit_SmallSys", frame_);
    for (QCheckBox*& box : partBoxes_) box = named<QCheckBox>("checkBox_Part1", frame_);
    for (const Caption& label : kLabels) labels_.append(named<QLabel>(label.name, frame_));
    for (const Button& button : kButtons) buttons_[button.name] = named<QPushButton>(button.name, frame_);
    for (const char* name : kWithoutWindow) buttons_[name]->hide();
    for (QToolButton* none : {frame_->Browse, frame_->Export}) none->hide();
    for (QPushButton* button : std::as_const(buttons_)) button->setAutoDefault(false);
    buttonGroup_Dz->addButton(radioButton_Yici, 0);
    buttonGroup_Dz->addButton(radioButton_Erci, 1);
    radioButton_Yici->setChecked(true);
    for (QLineEdit* line : {lineEdit_BigSys, lineEdit_SmallSys}) line->setReadOnly(true);
    textEdit_CaseInf_Note->setAcceptRichText(false);
    textEdit_CaseInf_Note->setTabChangesFocus(true);
}

void WinDlgRlyCalMain::connectAll() {
    for (const Button& button : kButtons) connect(buttons_[button.name], &QPushButton::clicked, this, button.clicked);
    void (WinDlgRlyCalMain::*const parts[])() = {&Window::CheckBox_Part1_Checked, &Window::CheckBox_Part2_Checked,
                                                 &Window::CheckBox_Part3_Checked, &Window::CheckBox_Part4_Checked,
                                                 &Window::CheckBox_Part5_Checked};
    for (size_t part = 0; part < kStages; ++part) connect(partBoxes_[part], &QCheckBox::clicked, this, parts[part]);
    connect(checkBox_CaseInf_Flow, &QCheckBox::clicked, this, &Window::CheckBox_CaseInfFlow_Checked);
    connect(comboBox_CaseInf_FlowNM, &QComboBox::activated, this, &Window::ComboBox_FlowNM_Changed);
    connect(comboBox_RType, &QComboBox::activated, this, &Window::ComboBox_RType_Changed);
    connect(buttonGroup_Dz, &QButtonGroup::idClicked, this, &Window::RadioButton_YiEr_Clicked);
    connect(table_ObjRly, qOverload<int, int>(&SettingTable::currentChanged), this, &Window::Paint_table_ObjRly);
}

void WinDlgRlyCalMain::layOut() {
    auto* relays = named<QGroupBox>("groupBox_ObjRly", frame_);
    relays->setLayout(layOutRelays());
    auto* inf = named<QGroupBox>("groupBox_CaseInf", frame_);
    inf->setLayout(layOutCase());
    frame_->body()->addWidget(inf);
    frame_->body()->addWidget(relays, 1);
    frame_->body()->addLayout(layOutModes());
    frame_->body()->addLayout(layOutFoot());
    host::setTabChain({lineEdit_CaseInf_Name, comboBox_RType, checkBox_CaseInf_Flow, comboBox_CaseInf_FlowNM,
                       textEdit_CaseInf_Note, bar_, radioButton_Yici, radioButton_Erci, table_ObjRly,
                       buttons_["pushButton_AddRly"], buttons_["pushButton_DeleteRly"], buttons_["pushButton_Rule"],
                       lineEdit_BigSys, buttons_["pushButton_BigSys"], lineEdit_SmallSys,
                       buttons_["pushButton_SmallSys"]});
    rememberPlace(this, {1360, 860});
}

QLayout* WinDlgRlyCalMain::layOutCase() {
    auto* grid = new QGridLayout;
    grid->addWidget(labels_[NameLabel], 0, 0);
    grid->addWidget(lineEdit_CaseInf_Name, 0, 1);
    grid->addWidget(labels_[TypeLabel], 1, 0);
    grid->addWidget(comboBox_RType, 1, 1);
    grid->addWidget(checkBox_CaseInf_Flow, 0, 3);
    grid->addWidget(textLabel_CaseInf_FlowNM, 1, 2);
    grid->addWidget(comboBox_CaseInf_FlowNM, 1, 3);
    grid->addWidget(labels_[NoteLabel], 0, 4, Qt::AlignTop);
    grid->addWidget(textEdit_CaseInf_Note, 0, 5, 2, 1);
    for (const int column : {1, 3}) grid->setColumnStretch(column, 3);
    grid->setColumnStretch(5, 4);
    grid->setHorizontalSpacing(fontMetrics().height() / 2);
    textEdit_CaseInf_Note->setMaximumHeight(fontMetrics().height() * 4);
    labels_[NameLabel]->setBuddy(lineEdit_CaseInf_Name);
    labels_[TypeLabel]->setBuddy(comboBox_RType);
    labels_[NoteLabel]->setBuddy(textEdit_CaseInf_Note);
    textLabel_CaseInf_FlowNM->setBuddy(comboBox_CaseInf_FlowNM);
    return grid;
}

QLayout* WinDlgRlyCalMain::layOutRelays() {
    auto* above = new QHBoxLayout;
    above->addWidget(bar_, 1);
    above->addWidget(radioButton_Yici);
    above->addWidget(radioButton_Erci);
    auto* side = new QVBoxLayout;
    for (const char* name :
         {"pushButton_AddRly", "pushButton_DeleteRly", "pushButton_Rule", "pushButton_Check", "pushButton_Kf"})
        side->addWidget(buttons_[name]);
    side->addStretch();
    auto* row = new QHBoxLayout;
    row->addWidget(table_ObjRly, 1);
    row->addLayout(side);
    auto* whole = new QVBoxLayout;
    whole->addLayout(above);
    whole->addLayout(row, 1);
    return whole;
}

QLayout* WinDlgRlyCalMain::layOutModes() {
    auto* row = new QHBoxLayout;
    const auto add = [&](LabelPlace label, QLineEdit* line, const char* button) {
        row->addWidget(labels_[label]);
        row->addWidget(line, 1);
        row->addWidget(buttons_[button]);
        labels_[label]->setBuddy(buttons_[button]);
    };
    add(BigLabel, lineEdit_BigSys, "pushButton_BigSys");
    row->addSpacing(fontMetrics().height());
    add(SmallLabel, lineEdit_SmallSys, "pushButton_SmallSys");
    return row;
}

QLayout* WinDlgRlyCalMain::layOutFoot() {
    auto* row = new QHBoxLayout;
    row->addWidget(labels_[PartLabel]);
    for (QCheckBox* box : partBoxes_) row->addWidget(box);
    row->addStretch();
    for (const char* name : {"pushButton_HandCal", "pushButton_AutoCal", "pushButton_SaveDz", "pushButton_SaveRlyCop"})
        row->addWidget(buttons_[name]);
    return row;
}

void WinDlgRlyCalMain::languageChange() {
    setWindowTitle(tr("整定计算主界面"));
    findChild<QGroupBox*>("groupBox_CaseInf")->setTitle(tr("作业信息"));
    findChild<QGroupBox*>("groupBox_ObjRly")->setTitle(tr("待整定保护"));
    checkBox_CaseInf_Flow->setText(tr("基于潮流"));
    radioButton_Yici->setText(tr("一次值"));
    radioButton_Erci->setText(tr("二次值"));
    for (qsizetype i = 0; i < labels_.size(); ++i) labels_[i]->setText(tr(kLabels[i].text));
    for (size_t part = 0; part < kStages; ++part) partBoxes_[part]->setText(tr(kParts[part]));
    for (const Button& button : kButtons) buttons_[button.name]->setText(tr(button.text));
    updateButtons();
}

void WinDlgRlyCalMain::updateButtons() {
    const bool any = editing_.cases().position() >= 0;
    const bool relay = table_ObjRly->settings().rowCount() > 0;
    const QString noCase = tr("没有作业，请先增加一条记录");
    for (const Button& button : kButtons) {
        const bool needsRelay =
            button.clicked == &Window::PushButton_Delete_Clicked || button.clicked == &Window::PushButton_Rule_Clicked;
        buttons_[button.name]->setEnabled(any && (relay || !needsRelay));
        const QString toolTip = *button.toolTip ? tr(button.toolTip) : QString();
        buttons_[button.name]->setToolTip(!any ? noCase : needsRelay && !relay ? tr("作业中还没有保护") : toolTip);
    }
}
