#include "programs/workflow/WinDlgSelectRly.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSqlDatabase>
#include <algorithm>

#include "platform/host/ui/WinDlgCalBranchChoose.h"
#include "platform/host/ui/WinDlgCalBusChoose.h"
#include "platform/host/ui/WinDlgCalEleTerm1Choose.h"
#include "programs/frame/LocationKey.h"
#include "programs/frame/LocationLabel.h"
#include "programs/frame/ui/DialogParts.h"
#include "programs/workflow/RelaySelection.h"

WinDlgSelectRly::WinDlgSelectRly(const QString& rTypeCode, int rTypeNo, int rType, int, QWidget* parent)
    : ChoiceDialog("listBox_AllRly", "listBox_RlySelected", parent),
      groupBox_Selection(named<QGroupBox>("groupBox_Selection", this)),
      radioButton_gBSelection_Appoint(named<QRadioButton>("radioButton_gBSelection_Appoint", groupBox_Selection)),
      radioButton_gBSelection_V(named<QRadioButton>("radioButton_gBSelection_V", groupBox_Selection)),
      radioButton_gBSelection_Net(named<QRadioButton>("radioButton_gBSelection_Net", groupBox_Selection)),
      comboBox_gBSelection_V(named<QComboBox>("comboBox_gBSelection_V", groupBox_Selection)),
      groupBox_Rly1(named<QGroupBox>("groupBox_Rly1", this)),
      textLabel_gBRly1_Position(named<QLabel>("textLabel_gBRly1_Position", groupBox_Rly1)),
      lineEdit_gBRly1_Position(named<QLineEdit>("lineEdit_gBRly1_Position", groupBox_Rly1)),
      pushButton_gBRly1_Position(named<QPushButton>("pushButton_gBRly1_Position", groupBox_Rly1)),
      groupBox_Rly2(named<QGroupBox>("groupBox_Rly2", this)),
      ways_(new QButtonGroup(this)),
      typeName_(rTypeCode),
      rTypeNo_(rTypeNo),
      rType_(rType) {
    setObjectName("WinDlgSelectRly");
    SelectRlyAccepted = 0;
    layOut();
    languageChange();
    comboBox_gBSelection_V->addItems(RelaySelection::voltageLevels());
    offerRelays();
    connectAll();
    radioButton_gBSelection_Appoint->setChecked(true);
    RadioButton_Changed(Appoint);
    lineEdit_Filter->setFocus();
}

void WinDlgSelectRly::layOut() {
    auto* way = new QHBoxLayout(groupBox_Selection);
    way->addWidget(radioButton_gBSelection_Appoint);
    way->addSpacing(24);
    way->addWidget(radioButton_gBSelection_V);
    way->addWidget(comboBox_gBSelection_V);
    way->addWidget(new QLabel("kV", groupBox_Selection));
    way->addSpacing(24);
    way->addWidget(radioButton_gBSelection_Net);
    way->addStretch();
    ways_->addButton(radioButton_gBSelection_Appoint, Appoint);
    ways_->addButton(radioButton_gBSelection_V, Level);
    ways_->addButton(radioButton_gBSelection_Net, Net);
    auto* position = new QHBoxLayout;
    position->addWidget(textLabel_gBRly1_Position);
    position->addWidget(lineEdit_gBRly1_Position, 1);
    position->addWidget(pushButton_gBRly1_Position);
    (new QVBoxLayout(groupBox_Rly1))->addLayout(position);
    pushButton_gBRly1_Position->setAutoDefault(false);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(groupBox_Selection);
    rows->addLayout(lists(groupBox_Rly1, groupBox_Rly2), 1);
    rows->addWidget(buttonRow(pushButton_Ensure, pushButton_Cancel));
    resize(860, 560);
}

void WinDlgSelectRly::languageChange() {
    setWindowTitle(tr("选择保护"));
    groupBox_Selection->setTitle(tr("选择方式"));
    radioButton_gBSelection_Appoint->setText(tr("指定"));
    radioButton_gBSelection_V->setText(tr("电压等级"));
    radioButton_gBSelection_Net->setText(tr("全网"));
    groupBox_Rly1->setTitle(tr("待选择保护"));
    groupBox_Rly1->setToolTip(typeName_);
    groupBox_Rly2->setTitle(tr("选择的保护"));
    textLabel_gBRly1_Position->setText(tr("安装位置"));
    lineEdit_gBRly1_Position->setPlaceholderText(tr("元件名"));
    pushButton_gBRly1_Position->setText(tr("选择"));
    nameParts();
}

void WinDlgSelectRly::connectAll() {
    connect(ways_, &QButtonGroup::idClicked, this, &WinDlgSelectRly::RadioButton_Changed);
    connect(listBox_All, &QListWidget::doubleClicked, this,
            [this](const QModelIndex& index) { listBox_AllRly_DoubleClicked(index.row()); });
    connect(listBox_Chosen, &QListWidget::doubleClicked, this,
            [this](const QModelIndex& index) { listBox_RlySelected_DoubleClicked(index.row()); });
    connect(pushButton_Add, &QPushButton::clicked, this, &WinDlgSelectRly::PushButton_Add_Clicked);
    connect(pushButton_Delete, &QPushButton::clicked, this, &WinDlgSelectRly::PushButton_Delete_Clicked);
    connect(pushButton_DelAll, &QPushButton::clicked, this, &WinDlgSelectRly::PushButton_DelAll_Clicked);
    connect(lineEdit_gBRly1_Position, &QLineEdit::textChanged, this, &WinDlgSelectRly::LineEdit_Position_Changed);
    connect(pushButton_gBRly1_Position, &QPushButton::clicked, this, &WinDlgSelectRly::PushButton_Position_Clicked);
    connect(pushButton_Ensure, &QPushButton::clicked, this, &WinDlgSelectRly::PushButton_OK_Clicked);
    connect(pushButton_Cancel, &QPushButton::clicked, this, &WinDlgSelectRly::PushButton_Cancel_Clicked);
}

void WinDlgSelectRly::offerRelays() {
    offered_ = RelaySelection::inService(rTypeNo_);
    QVector<Entry> entries;
    for (const SelectedRly& relay : std::as_const(offered_))
        entries.append({locationLabel(rType_, relay.ID_Name, relay.I_Name, relay.J_Name, relay.Side).trimmed(),
                        locationKey(relay.ID_Name, relay.I_Name, relay.J_Name, relay.Side)});
    offer(entries);
}

void WinDlgSelectRly::RadioButton_Changed(int id) {
    const QString elsewhere = id == Appoint ? QString() : tr("选“指定”后可用");
    for (QWidget* part : {static_cast<QWidget*>(groupBox_Rly1), static_cast<QWidget*>(groupBox_Rly2),
                          static_cast<QWidget*>(pushButton_Add), static_cast<QWidget*>(pushButton_Delete),
                          static_cast<QWidget*>(pushButton_DelAll)}) {
        part->setEnabled(id == Appoint);
        part->setToolTip(elsewhere);
    }
    comboBox_gBSelection_V->setEnabled(id == Level);
    comboBox_gBSelection_V->setToolTip(id == Level ? QString() : tr("选“电压等级”后可用"));
}

void WinDlgSelectRly::listBox_AllRly_DoubleClicked(int index) { take(index); }
void WinDlgSelectRly::listBox_RlySelected_DoubleClicked(int index) { putBack(index); }
void WinDlgSelectRly::PushButton_Add_Clicked() { takeSelected(); }
void WinDlgSelectRly::PushButton_Delete_Clicked() { putBackSelected(); }
void WinDlgSelectRly::PushButton_DelAll_Clicked() { putBackAll(); }

void WinDlgSelectRly::PushButton_Position_Clicked() {
    const QString name = pickElement();
    if (!name.isEmpty()) lineEdit_gBRly1_Position->setText(name);
}

QString WinDlgSelectRly::pickElement() {
    QSqlDatabase database = QSqlDatabase::database();
    const QString before = lineEdit_gBRly1_Position->text();
    if (rType_ == 0) {
        WinDlgCalBusChoose picker(0, 0, &database, before, false, this);
        picker.exec();
        return picker.GetName();
    }
    if (rType_ == 1 || rType_ == 4 || rType_ == 5) {
        WinDlgCalEleTerm1Choose picker(&database, rType_ == 1 ? "CDB_GENERATBAK" : "CDB_PCAPREABAK", "ID_Name", before,
                                       this);
        picker.exec();
        return picker.GetName();
    }
    QList<QString> tables = {"CDB_ACLINEBAK"};
    if (rType_ == 10) tables = {"CDB_TRANS_2WBAK", "CDB_TRANS_3WBAK", "CDB_SHIFTBAK"};
    if (rType_ == 13) tables = {"CDB_BREAKERBAK"};
    WinDlgCalBranchChoose picker(1, &database, tables, this);
    picker.SetLFCase_No(0);
    return picker.ChooseBranch("", "", "") == 0 ? picker.ElementName : QString();
}

void WinDlgSelectRly::LineEdit_Position_Changed(const QString& text) {
    const auto found =
        std::find_if(offered_.begin(), offered_.end(), [&](const SelectedRly& relay) { return relay.ID_Name == text; });
    if (found != offered_.end()) showRow(int(found - offered_.begin()));
}

bool WinDlgSelectRly::relaysOfWay(QVector<SelectedRly>* relays) const {
    if (ways_->checkedId() == Net) *relays = RelaySelection::ofNetwork(rTypeNo_);
    if (ways_->checkedId() == Level) {
        bool isNumber = false;
        const double level = comboBox_gBSelection_V->currentText().toDouble(&isNumber);
        return RelaySelection::ofLevel(rTypeNo_, isNumber ? level : -1, relays);
    }
    if (ways_->checkedId() == Appoint)
        for (const int row : chosen()) relays->append(offered_[row]);
    return true;
}

void WinDlgSelectRly::PushButton_OK_Clicked() {
    QVector<SelectedRly> relays;
    if (!relaysOfWay(&relays)) return;
    replaceSelectedRlys(relays);
    SelectRlyAccepted = 1;
    accept();
}

void WinDlgSelectRly::PushButton_Cancel_Clicked() { reject(); }

void WinDlgSelectRly::reject() {
    SelectRlyAccepted = 0;
    ChoiceDialog::reject();
}
