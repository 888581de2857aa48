#include "programs/frame/ui/CMorvaneObject.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>

#include "platform/host/ui/HostEvents.h"
#include "platform/host/ui/WaitCursor.h"
#include "platform/rtdb/dbDatabase.h"
#include "platform/sql/Sql.h"
#include "programs/frame/CRDatabase.h"
#include "programs/frame/LocationLabel.h"
#include "programs/frame/Messages.h"
#include "programs/frame/RuleConnection.h"
#include "programs/frame/WinDlgSetUser.h"
#include "programs/netview/DiagramLabels.h"
#include "programs/netview/VirtualRelays.h"
#include "programs/netview/WinDlgDefineDspDz.h"
#include "programs/netview/WinDlgDspRly.h"
#include "programs/netview/WinDlgSetDsp.h"
#include "programs/netview/ui/CMorvaneHandleGraph.h"
#include "programs/workflow/NetworkSource.h"
#include "programs/workflow/WinDlgRlyCalMain.h"

int CMorvaneObject::iRlyDspFlg = 0;
int CMorvaneObject::iRlyDspAss = 0;
int CMorvaneObject::iRlyDspLoc = 0;

namespace {

constexpr int kLabelsConfiguration = 17;

enum class Use { Always, Editing, Calculating };
struct MenuAction {
    const char* name;
    Use use;  ///< working mode in which the action is enabled
};
constexpr MenuAction kMenu[] = {
    {"RlyDspSetAction", Use::Always},         {"RlySetCopRlyAction", Use::Always},
    {"RlyEditEditSysAction", Use::Editing},   {"RlyEditSetRlyAction", Use::Editing},
    {"RlyEditEditFzxsAction", Use::Editing},  {"RlyEditSelectRTypeAction", Use::Editing},
    {"RlyEditSetDzNameAction", Use::Editing}, {"RlyEditSetDumRlyAction", Use::Editing},
    {"RlyCalCalAction", Use::Calculating},    {"RlyCalBuildDzdAction", Use::Calculating},
    {"RlyEditSetAllRlyAction", Use::Editing}, {"RlySetUserAction", Use::Always},
};

void sendToHost(int flags) {
    CUpdateLabelsCustomEvent event(host::updateLabelsEvent, flags);
    if (QWidget* window = host::mainWidget()) QApplication::sendEvent(window, &event);
}

}  // namespace

struct CMorvaneObject::MenuRow {
    const char* action;
    bool (*run)(CMorvaneObject& module, bool& handled);
};

// The actions that the module can run.
const CMorvaneObject::MenuRow* CMorvaneObject::rowOf(const QString& name) {
    static const MenuRow rows[] = {
        {"RlyDspSetAction", [](auto& module, bool&) { return module.redrawAfter(WinDlgSetDsp()); }},
        {"RlyEditSelectRTypeAction", [](auto& module, bool& handled) { return module.run(WinDlgDspRly(), handled); }},
        {"RlyEditSetDzNameAction",
         [](auto& module, bool& handled) { return module.run(WinDlgDefineDspDz(), handled); }},
        {"RlyCalCalAction", [](auto& module, bool& handled) { return module.editCases(handled); }},
        {"RlyEditSetDumRlyAction",
         [](auto&, bool&) {
             SearchDumRelay();
             return true;
         }},
        {"RlySetUserAction",
         [](auto&, bool&) {
             WinDlgSetUser().exec();
             return true;
         }},
    };
    for (const MenuRow& row : rows)
        if (name == tr(row.action)) return &row;
    return nullptr;
}

CMorvaneObject::CMorvaneObject(CComboBoxCaseNo* caseCombo, QComboBox* modeCombo, dbDatabase* fdb, QAction* moduleAction)
    : CMorvaneObject(fdb) {
    caseCombo_ = caseCombo;
    modeCombo_ = modeCombo;
    moduleAction_ = moduleAction;
    modeCombo->clear();
    modeCombo->addItems({tr("保护编辑"), tr("保护整定")});
    modeCombo->setCurrentIndex(0);
    moduleAction->setEnabled(true);
    connect(modeCombo, &QComboBox::activated, this, &CMorvaneObject::SubStation);
    CRDatabase databases("QMYSQL3", "", "", "");
    connectRules(databases);
    databases.BuildNewTable("");
}

CMorvaneObject::CMorvaneObject(dbDatabase* fdb) : fdb_(fdb) {
    handler = new CMorvaneHandleGraph(this);
    if (fdb_) network_ = std::make_unique<NetworkSource>(*fdb_);
}

CMorvaneObject::~CMorvaneObject() {
    if (!homeDir_.isEmpty()) QDir::setCurrent(homeDir_);
    delete handler;
    handler = nullptr;
}

bool CMorvaneObject::InitCalcModule(QSqlDatabase*, const QString& dataDir, const QString& homeDir, CDatabase* ofHost) {
    hostDatabase = ofHost;
    dataDir_ = dataDir;
    homeDir_ = homeDir + "/";
    InitComboBox_Case();
    for (QComboBox* combo : {static_cast<QComboBox*>(caseCombo_), modeCombo_.data()}) {
        if (!combo) continue;
        combo->show();
        combo->setEnabled(true);
    }
    sql::Query query;
    const bool configured = query.exec("SELECT RlyAss,RlyLoc FROM RLY_RLYDSP") && query.next();
    iRlyDspAss = configured ? query.number(0) : 0;
    iRlyDspLoc = configured ? query.number(1) : 0;
    RefreshSLG();
    return true;
}

bool CMorvaneObject::CloseCalcModule() {
    for (QComboBox* combo : {static_cast<QComboBox*>(caseCombo_), modeCombo_.data()}) {
        if (!combo) continue;
        combo->hide();
        combo->setEnabled(false);
    }
    if (moduleAction_) moduleAction_->setEnabled(false);
    return true;
}

void CMorvaneObject::SetDynMenuActions(QMap<QString, QAction*>* map) {
    actions = map;
    menu_.clear();
    for (const MenuAction& entry : kMenu) {
        QAction* action = GetDynMenuAction(tr(entry.name));
        menu_.insert(entry.name, action);
        if (action) action->setVisible(rowOf(tr(entry.name)) != nullptr);
    }
}

QAction* CMorvaneObject::GetDynMenuAction(const QString& name) const {
    return actions ? actions->value(name) : nullptr;
}

void CMorvaneObject::InitDynMenuStatus() { SubStation(0); }

bool CMorvaneObject::ProcessDynMenuInterface(const QString& name, bool& handled) {
    const MenuRow* row = rowOf(name);
    return row && row->run(*this, handled);
}

bool CMorvaneObject::redrawAfter(QDialog&& dialog) { return dialog.exec() != QDialog::Accepted || RedrawLabels(); }

bool CMorvaneObject::run(QDialog&& dialog, bool& handled) {
    dialog.exec();
    handled = true;
    return true;
}

bool CMorvaneObject::PrepareRTLabelsData(int, bool) { return true; }

bool CMorvaneObject::isEditing() const { return modeCombo_ && modeCombo_->currentIndex() == 0; }

void CMorvaneObject::SubStation(int mode) {
    const auto enable = [this](Use use, bool on) {
        for (const MenuAction& entry : kMenu)
            if (QAction* action = menu_.value(entry.name); action && entry.use == use) action->setEnabled(on);
    };
    enable(Use::Always, true);
    if (mode < 0 || mode > 2) return;
    if (modeCombo_ && mode < 2) modeCombo_->setCurrentIndex(mode);
    enable(Use::Editing, mode == 0);
    enable(Use::Calculating, mode == 1);
    SetSubModuleOrderNum(mode);
    SetEleLabelsConfNum(kLabelsConfiguration);
    PostCustomEvent2MainWidget(host::subModuleEvent, new int(GetSubModuleOrderNum()));
    sendToHost(0x02);
}

void CMorvaneObject::RlyPopupMenuSetDsp() {
    WinDlgSetDsp().exec();
    RedrawLabels();
}

int CMorvaneObject::GetCase_No() const { return currentCase_; }

void CMorvaneObject::SetCase_No(int) {
    if (caseCombo_) Refreshfdb(caseCombo_->currentText());
}

QString CMorvaneObject::GetCase_Name(int no) {
    return sql::scalar({}, "SELECT Case_Name FROM RLY_CASE_RLY WHERE Case_No=?", {no}, QString()).toString();
}

int CMorvaneObject::GetCase_NoByCase_Name(const QString& name) {
    return sql::scalar({}, "SELECT Case_No FROM RLY_CASE_RLY WHERE Case_Name=?", {name}, 0).toInt();
}

void CMorvaneObject::InitComboBox_Case() {
    if (!caseCombo_) return;
    const QString shown = caseCombo_->currentText();
    caseCombo_->clear();
    sql::Query query;
    query.exec("SELECT DISTINCT Case_Name FROM RLY_CASE_RLY");
    while (query.next()) caseCombo_->addItem(query.text(0));
    if (const int at = caseCombo_->findText(shown); at >= 0) caseCombo_->setCurrentIndex(at);
}

void CMorvaneObject::RefreshNetWork(int mlf) { sendToHost(mlf != 0 ? 0x1A : 0x2A); }

bool CMorvaneObject::RefreshSLG() { return writeLabels(false); }

bool CMorvaneObject::RedrawLabels() { return writeLabels(true); }

bool CMorvaneObject::writeLabels(bool anew) {
    const LabelOptions options{iRlyDspLoc != 0, source_.Scheme != " " && source_.Case_lf != -1, anew};
    if (!fdb_ || !fdb_->isOpen() || refreshLabels(*fdb_, options)) sendToHost(4);
    return true;
}

QString CMorvaneObject::RlyDsp(const QString& id, const QString& iName, const QString& jName, int rType, int side) {
    return knownLocationLabel(rType, id, iName, jName, side);
}

bool CMorvaneObject::Source::differsFrom(const Source& other) const {
    if (Mlf != other.Mlf) return true;
    return Mlf == 1 ? Case_lf != other.Case_lf : Scheme != other.Scheme;
}

// Nothing when the database cannot be asked, which is not the same as no such case.
std::optional<CMorvaneObject::SelectedCase> CMorvaneObject::caseOf(const QString& column, const QVariant& value) {
    sql::Query query;
    if (!query.exec("SELECT DISTINCT Case_No,Mlf,Case_lf,Scheme FROM RLY_CASE_RLY WHERE " + column + "=?", {value}))
        return {};
    if (!query.next()) return SelectedCase{};
    return SelectedCase{query.number(0), {query.number(1), query.number(2), query.text(3)}};
}

std::optional<QString> CMorvaneObject::realTimeName() const {
    if (QFile file(dataDir_ + "RTDB.nm"); file.open(QIODevice::ReadOnly))
        return QString::fromLocal8Bit(file.readLine()).trimmed();
    ReportError(tr("读 RTDB.nm 失败"), 0);
    return {};
}

void CMorvaneObject::keepNumber(int no) { caseNo = currentCase_ = no; }

void CMorvaneObject::keepCase(const SelectedCase& chosen) {
    keepNumber(chosen.Case_No);
    source_ = chosen.source;
}

void CMorvaneObject::forgetCase() { keepCase({}); }

void CMorvaneObject::Refreshfdb(const QString& caseName) {
    if (!realTimeName()) return;
    const std::optional<SelectedCase> chosen = caseOf("Case_Name", caseName);
    if (!chosen) return;
    if (chosen->Case_No == -1) return forgetCase();
    if (!chosen->source.differsFrom(source_)) return keepNumber(chosen->Case_No);
    bringIn(chosen->source) ? keepCase(*chosen) : forgetCase();
    RefreshNetWork(chosen->source.Mlf);
    RefreshSLG();
}

bool CMorvaneObject::bringIn(const Source& source) {
    if (!network_) return true;
    const host::WaitCursor wait;
    network_->SwitchNetwork(source.Mlf, source.Case_lf, source.Scheme);
    if (!network_->isWhole()) ReportError(tr("切换网络失败，实时库中的网络不完整，请重新选择作业"), 0);
    return network_->isWhole();
}

bool CMorvaneObject::editCases(bool& handled) {
    const std::optional<QString> name = realTimeName();
    if (!name || !network_) return false;
    const Source before = loaded();
    iRlyDspFlg = 0;
    WinDlgRlyCalMain(*name, "../" + *name, dataDir_ + "Temp/", currentCase_, homeDir_, homeDir_, fdb_, this).exec();
    followCase();
    if (before.differsFrom(loaded())) RefreshNetWork(loaded().Mlf);
    if (iRlyDspFlg == 1) RedrawLabels();
    handled = true;
    return true;
}

CMorvaneObject::Source CMorvaneObject::loaded() const {
    return {network_->mlf(), network_->lfCase(), network_->scheme()};
}

// The editor may have left the network of another case behind, or the case in hand with another network.
void CMorvaneObject::followCase() {
    const std::optional<SelectedCase> chosen = caseOf("Case_No", currentCase_);
    if (!chosen) return;
    if (chosen->Case_No == -1 || !bringIn(chosen->source)) return forgetCase();
    if (chosen->source.differsFrom(source_)) RefreshSLG();
    keepCase(*chosen);
}

void CMorvaneObject::takeCase(int no, const QString& name) {
    keepNumber(no);
    if (!caseCombo_) return;
    caseCombo_->EmitcurrentTextChanged(name);
    caseCombo_->EmititemsChanged();
    InitComboBox_Case();
    caseCombo_->setCurrentIndex(caseCombo_->findText(name));
}
