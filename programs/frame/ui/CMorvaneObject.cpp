#include "programs/frame/ui/CMorvaneObject.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>

#include "platform/host/ui/HostEvents.h"
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

struct WaitCursor {
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
};

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

CMorvaneObject::CMorvaneObject(dbDatabase* fdb) : fdb_(fdb) { handler = new CMorvaneHandleGraph(this); }

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
std::optional<CMorvaneObject::SelectedCase> CMorvaneObject::caseOf(const QString& name) {
    sql::Query query;
    if (!query.exec("SELECT DISTINCT Case_No,Mlf,Case_lf,Scheme FROM RLY_CASE_RLY WHERE Case_Name=?", {name}))
        return {};
    if (!query.next()) return SelectedCase{};
    return SelectedCase{query.number(0), {query.number(1), query.number(2), query.text(3)}};
}

bool CMorvaneObject::canReadRealTimeName() const {
    if (QFile file(dataDir_ + "RTDB.nm"); file.open(QIODevice::ReadOnly)) return true;
    ReportError(tr("读 RTDB.nm 失败"), 0);
    return false;
}

void CMorvaneObject::keepNumber(int no) { caseNo = currentCase_ = no; }

void CMorvaneObject::keepCase(const SelectedCase& chosen) {
    keepNumber(chosen.Case_No);
    source_ = chosen.source;
}

void CMorvaneObject::forgetCase() { keepCase({}); }

void CMorvaneObject::Refreshfdb(const QString& caseName) {
    if (!canReadRealTimeName()) return;
    const std::optional<SelectedCase> chosen = caseOf(caseName);
    if (!chosen) return;
    if (chosen->Case_No == -1) return forgetCase();
    if (!chosen->source.differsFrom(source_)) return keepNumber(chosen->Case_No);
    if (chosen->Case_No == currentCase_ || bringIn(chosen->source)) {
        keepCase(*chosen);
    } else {
        ReportError(tr("切换网络失败，实时库中的网络不完整，请重新选择作业"), 0);
        forgetCase();
    }
    RefreshNetWork(chosen->source.Mlf);
    RefreshSLG();
}

bool CMorvaneObject::bringIn(const Source& source) {
    if (!fdb_) return true;
    const WaitCursor wait;
    NetworkSource network(*fdb_);
    network.setLoaded(source_.Mlf, source_.Case_lf, source_.Scheme);
    network.SwitchNetwork(source.Mlf, source.Case_lf, source.Scheme);
    return network.isWhole();
}
