#include "programs/workflow/CaseEditing.h"

#include <algorithm>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/frame/Messages.h"
#include "programs/frame/RelayTypes.h"
#include "programs/frame/TableDefinitions.h"
#include "programs/workflow/CaseSources.h"
#include "programs/workflow/RunShadows.h"

namespace {

const QString kSuffix = QStringLiteral("_TEM");

const QStringList& editedTables() {
    static const QStringList names = {"RLY_CASE_RLY",   "RLY_RUDSYS", "RLY_CASEINF", "RLY_CASERDZ", "RLY_CELECHK",
                                      "RLY_CASERLYCOP", "RLY_CKFCHK", "RLY_KLMFSYS", "RLY_FZXSSYS", "RLY_RDZTEM",
                                      "RLY_FAULTINF",   "RLY_KFINF",  "RLY_RRVIN",   "RLY_RRNPH",   "RLY_CFZXS",
                                      "RLY_CFZXSRM",    "RLY_CRUDRM"};
    return names;
}

QVector<EditSession::Table> sessionTables() {
    QVector<EditSession::Table> all;
    for (const QString& name : editedTables()) all.append({name, tables::ofName(name)->code});
    return all;
}

bool refuse(const QString& text) {
    ReportError(text, 0);
    return false;
}

bool emptyWorkingTable() { return sql::Query().exec("DELETE FROM RLY_RLYOBJ_TEM"); }

}  // namespace

CaseEditing::CaseEditing(NetworkSource& network)
    : network_(network), session_("WinDlgRlyCalMain", sessionTables(), kSuffix) {}

bool CaseEditing::open(int caseNo) {
    claimRuns();
    if (!session_.open(Text::tr("不能编辑作业")) || !cases_.UpdateCaseChain(1)) return false;
    if (caseNo > 0) cases_.select(caseNo);
    if (!cases_.current()) return emptyWorkingTable();
    cases_.LoadCaseRelays();
    switchNetwork();
    return true;
}

bool CaseEditing::hasChanged() const {
    QStringList names;
    for (const QString& name : editedTables()) names << name << name + kSuffix;
    sql::Query query;
    query.exec("CHECKSUM TABLE " + names.join(','));
    while (query.next()) {
        const QString base = query.raw(1);
        if (!query.next() || query.raw(1) != base) return true;
    }
    return false;
}

bool CaseEditing::moveTo(int position, const CaseForm& form) {
    if (position < 0 || position >= cases_.chain().size() || !cases_.SaveRecord(1, form)) return false;
    cases_.select(cases_.chain()[position].Case_No);
    cases_.LoadCaseRelays();
    switchNetwork();
    return true;
}

bool CaseEditing::insert(const CaseForm& form) {
    const auto types = CaseSources::relayTypes();
    if (types.isEmpty()) return refuse(Text::tr("规则库中没有可整定的保护类型"));
    if (!cases_.SaveRecord(1, form)) return false;
    cases_.insert(types.first().number, std::max(network_.mlf(), 0), network_.lfCase(), network_.scheme());
    return emptyWorkingTable();
}

bool CaseEditing::copy(const CaseForm& form) {
    if (!cases_.current() || !cases_.SaveRecord(1, form)) return false;
    copied_ = cases_.current()->Case_No;
    return true;
}

bool CaseEditing::remove() {
    const int removed = cases_.current() ? cases_.current()->Case_No : -1;
    cases_.remove();
    if (cases_.current() && cases_.current()->Case_No == removed) return false;
    // the next new case may get the number of this one
    if (copied_ == removed) copied_ = -1;
    if (!cases_.current()) return emptyWorkingTable();
    switchNetwork();
    return true;
}

bool CaseEditing::paste() {
    if (!canPaste() || !cases_.current() || !cases_.pasteFrom(copied_)) return false;
    if (cases_.current()->Case_No != copied_) ReportError(Text::tr("作业名与被拷贝的作业相同，请更改作业名"), 1);
    switchNetwork();
    return true;
}

void CaseEditing::setType(CaseForm& form, int rTypeNo) {
    cases_.removeAllRelays(form);
    cases_.current()->RTypeNo = rTypeNo;
    cases_.current()->RTypeCode = readRelayTypes().value(rTypeNo).RTypeCode;
}

QStringList CaseEditing::standOnLoadFlow() {
    const auto flows = CaseSources::calculatedLoadFlows();
    cases_.current()->Mlf = 1;
    cases_.current()->Case_lf = flows.isEmpty() ? -1 : flows.first().number;
    cases_.current()->Scheme = " ";
    return CaseSources::namesOf(flows);
}

QStringList CaseEditing::standOnScheme() {
    const QStringList names = CaseSources::schemes();
    cases_.current()->Mlf = 0;
    cases_.current()->Case_lf = -1;
    cases_.current()->Scheme = names.value(0);
    return names;
}

bool CaseEditing::chooseNetwork(bool onLoadFlow, const QString& name) {
    const int number = onLoadFlow ? CaseSources::loadFlowNumber(name) : -1;
    if (onLoadFlow && number < 0) return refuse(Text::tr("潮流作业名没有对应的作业号"));
    cases_.current()->Mlf = onLoadFlow ? 1 : 0;
    cases_.current()->Case_lf = number;
    cases_.current()->Scheme = onLoadFlow ? QString(" ") : name.trimmed();
    switchNetwork();
    return true;
}

void CaseEditing::switchNetwork() {
    const CaseNode* node = cases_.current();
    if (!node) return;
    const bool built = network_.SwitchNetwork(node->Mlf, node->Case_lf, node->Scheme);
    if (built && !network_.isWhole()) ReportError(Text::tr("切换网络失败，实时库中的网络不完整，不能计算"), 0);
}

bool CaseEditing::claimRuns() {
    if (!RunShadows::claim()) return refuse(Text::tr("另一个程序正在该工程中计算，请稍后再试"));
    const RunShadows::Leftover found = RunShadows::recover();
    if (found == RunShadows::Leftover::Restored) ReportError(Text::tr("上一次计算没有正常结束，已恢复计算前的数据"), 1);
    return found != RunShadows::Leftover::Failed || refuse(Text::tr("不能恢复上一次计算前的数据"));
}

bool CaseEditing::keep() { return emptyWorkingTable() && session_.commit(); }

bool CaseEditing::cancel() { return emptyWorkingTable() && session_.restore(); }
