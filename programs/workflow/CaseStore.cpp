#include "programs/workflow/CaseStore.h"

#include <QSet>
#include <algorithm>
#include <cmath>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/frame/Messages.h"
#include "programs/frame/RelayTypes.h"
#include "programs/frame/TableDefinitions.h"
#include "programs/frame/TableNames.h"
#include "programs/workflow/CaseSettings.h"
#include "programs/workflow/CaseSources.h"
#include "programs/workflow/ModeSelection.h"

namespace {

constexpr char kCaseColumns[] =
    "Case_No,Case_Name,RTypeNo,RTypeCode,Mlf,Case_lf,Scheme,NPara,LGup,Note,PartFlg1,PartFlg2,PartFlg3,PartFlg4,"
    "PartFlg5";

bool refuse(const QString& text) {
    ReportError(text, 0);
    return false;
}

CaseNode nodeOf(const sql::Query& row) {
    CaseNode node;
    node.Case_No = row.number(0);
    node.Case_Name = row.text(1);
    node.RTypeNo = row.number(2);
    node.RTypeCode = row.text(3);
    node.Mlf = row.number(4);
    node.Case_lf = row.number(5);
    node.Scheme = node.Mlf == 1 ? QString(" ") : row.text(6);
    node.NPara = row.number(7);
    node.LGup = row.number(8);
    node.Note = row.text(9);
    for (int part = 0; part < kStages; ++part) node.PartFlg[size_t(part)] = row.number(10 + part);
    return node;
}

bool isSetting(const QString& text) {
    bool ok = false;
    const double value = text.toDouble(&ok);
    return ok && std::isfinite(value) && value >= 0;
}

QString sourceName(const CaseNode& node) {
    if (node.Mlf != 1) return node.Scheme.trimmed();
    return sql::scalar({}, "SELECT Case_Name FROM LF_CASE WHERE Case_No=?", {node.Case_lf}).toString();
}

QList<int> modesOf(int caseNo, int sFlg) {
    QList<int> modes;
    sql::Query query;
    query.exec("SELECT DISTINCT SysNo FROM RLY_RUDSYS WHERE Case_No=? AND SFlg=? ORDER BY SysNo", {caseNo, sFlg});
    while (query.next()) modes.append(query.number(0));
    return modes;
}

QHash<int, QString> modeNames() {
    QHash<int, QString> names;
    for (const OfferedMode& mode : offeredModes()) names[mode.SysNo] = mode.SysName;
    return names;
}

/// Puts the rows of one case in the place of those of another.
bool copyRows(int from, int to) {
    sql::Transaction transaction;
    sql::Query query;
    for (const char* table : {"RLY_RUDSYS", "RLY_CASEINF", "RLY_CASERDZ", "RLY_CELECHK", "RLY_CKFCHK", "RLY_KLMFSYS",
                              "RLY_FZXSSYS", "RLY_CASE_RLY"}) {
        QStringList columns = tables::ofName(table)->layout.columnNames();
        columns.removeOne("Case_No");
        const QString names = columns.join(',');
        if (!query.exec(QString("DELETE FROM ") + table + " WHERE Case_No=?", {to}) ||
            !query.exec(QString("INSERT INTO ") + table + " (Case_No," + names + ") SELECT ?," + names + " FROM " +
                            table + " WHERE Case_No=?",
                        {to, from}))
            return false;
    }
    return transaction.commit();
}

}  // namespace

bool CaseStore::UpdateCaseChain(int mode) {
    if (mode == 2) {
        if (!current()) return true;
        const bool wasLast = position_ == chain_.size() - 1;
        chain_.removeAt(position_);
        if (wasLast) --position_;
        return true;
    }
    if (mode != 1 && mode != 3) return refuse(Text::tr("链表更新错误"));
    sql::Query query;
    if (mode == 3 && current()) {
        const QString text = QString("SELECT DISTINCT ") + kCaseColumns + " FROM RLY_CASE_RLY WHERE Case_No=?";
        if (query.exec(text, {current()->Case_No}) && query.next()) *current() = nodeOf(query);
    } else if (mode == 1) {
        chain_.clear();
        if (!query.exec(QString("SELECT DISTINCT ") + kCaseColumns + " FROM RLY_CASE_RLY ORDER BY Case_No ASC"))
            return false;
        while (query.next()) chain_.append(nodeOf(query));
        position_ = chain_.isEmpty() ? -1 : 0;
    }
    return true;
}

CaseNode* CaseStore::current() { return position_ < 0 ? nullptr : &chain_[position_]; }

bool CaseStore::isStored() {
    return current() &&
           sql::scalar({}, "SELECT COUNT(*) FROM RLY_CASE_RLY WHERE Case_No=?", {current()->Case_No}).toInt() > 0;
}

bool CaseStore::select(int caseNo) {
    const auto it = std::find_if(chain_.begin(), chain_.end(), [&](const auto& n) { return n.Case_No == caseNo; });
    if (it == chain_.end()) return false;
    position_ = int(it - chain_.begin());
    missingRelay_ = false;
    return true;
}

bool CaseStore::select(const QString& caseName) {
    const auto it = std::find_if(chain_.begin(), chain_.end(), [&](const auto& n) { return n.Case_Name == caseName; });
    return it != chain_.end() && select(it->Case_No);
}

CaseNode& CaseStore::insert(int rTypeNo, int mlf, int lfCase, const QString& scheme) {
    CaseNode node;
    node.Case_No = chain_.isEmpty() ? 1 : chain_.back().Case_No + 1;
    node.RTypeNo = rTypeNo;
    node.RTypeCode = readRelayTypes().value(rTypeNo).RTypeCode;
    node.Mlf = mlf;
    node.Case_lf = lfCase;
    node.Scheme = scheme;
    chain_.append(node);
    position_ = int(chain_.size()) - 1;
    return chain_.back();
}

QString CaseStore::defaultName() {
    return "作业" + QString::number(sql::scalar({}, "SELECT COUNT(*) FROM RLY_CASE_RLY").toInt() + 1);
}

bool CaseStore::remove() {
    if (!current()) return true;
    sql::Transaction transaction;
    sql::Query query;
    for (const char* table : {"RLY_CASE_RLY", "RLY_RUDSYS", "RLY_CASEINF", "RLY_CASERDZ", "RLY_CELECHK", "RLY_KLMFSYS",
                              "RLY_FZXSSYS", "RLY_CASERLYCOP"})
        if (!query.exec(QString("DELETE FROM ") + table + " WHERE Case_No=?", {current()->Case_No})) return false;
    if (!transaction.commit()) return false;
    deletedRelays_.clear();
    addedRelays_.clear();
    UpdateCaseChain(2);
    missingRelay_ = false;
    return !current() || LoadCaseRelays();
}

bool CaseStore::pasteFrom(int caseNo) {
    if (!current()) return true;
    if (sql::scalar({}, "SELECT COUNT(*) FROM RLY_CASE_RLY WHERE Case_No=?", {caseNo}).toInt() == 0)
        return refuse(Text::tr("被拷贝的作业已经不存在"));
    if (current()->Case_No != caseNo && !copyRows(caseNo, current()->Case_No)) return false;
    deletedRelays_.clear();
    addedRelays_.clear();
    missingRelay_ = false;
    return UpdateCaseChain(3) && LoadCaseRelays();
}

CaseForm CaseStore::form(bool primary) {
    CaseForm form;
    if (!current()) return form;
    form.name = current()->Case_Name;
    form.note = current()->Note;
    form.onLoadFlow = current()->Mlf == 1;
    form.source = sourceName(*current());
    form.primary = primary;
    form.PartFlg = current()->PartFlg;
    form.rows = CaseSettings::rows(current()->RTypeNo, primary);
    form.bigSys = modesOf(current()->Case_No, 1);
    form.smallSys = modesOf(current()->Case_No, 2);
    return form;
}

void CaseStore::removeRelay(CaseForm& form, int relay) {
    form.rows.removeIf([&](const CaseSettingRow& row) { return row.RNo == relay; });
    deletedRelays_.append(relay);
}

void CaseStore::removeAllRelays(CaseForm& form) {
    QSet<int> relays;
    for (const CaseSettingRow& row : std::as_const(form.rows)) relays.insert(row.RNo);
    form.rows.clear();
    deletedRelays_.append(QList<int>(relays.begin(), relays.end()));
}

bool CaseStore::LoadCaseRelays() {
    if (!current() || current()->Case_No < 0) return true;
    const int caseNo = current()->Case_No;
    const bool any = sql::scalar({}, "SELECT 1 FROM RLY_CASEINF WHERE Case_No=? LIMIT 1", {caseNo}).toInt() > 0;
    // the settings of the case before must not pass for those of this one
    if (!any && !sql::Query().exec("DELETE FROM RLY_RLYOBJ_TEM")) return false;
    if (!any) return refuse(Text::tr("没有内部作业号为") + QString::number(caseNo) + Text::tr("的作业的信息"));
    return CaseSettings::load(caseNo, current()->RTypeNo, &missingRelay_);
}

bool CaseStore::hasSource(const CaseForm& form) {
    const QString text = form.onLoadFlow ? "SELECT COUNT(*) FROM LF_CASE WHERE Case_No!=0 AND Case_Name=?"
                                         : "SELECT COUNT(*) FROM CDB_SCHEMEINFBAK WHERE SchName=?";
    const QString name = form.source.trimmed();
    return !name.isEmpty() && sql::scalar({}, text, {name}).toInt() > 0;
}

int CaseStore::loadFlowNumber(const CaseForm& form) {
    if (!form.onLoadFlow) return -1;
    return CaseSources::loadFlowNumber(form.source);
}

bool CaseStore::checkName(const CaseForm& form) {
    const QString name = form.name.trimmed();
    if (name.isEmpty()) return refuse(Text::tr("作业名不能为空"));
    if (!hasSource(form)) return refuse(Text::tr("请选择一个方案或潮流作业"));
    QString why = sql::whyNotStorable(name, 20);
    if (why.isEmpty()) why = sql::whyNotStorable(form.note, 100);
    if (why.isEmpty()) why = sql::whyNotStorable(form.source, form.onLoadFlow ? 20 : 10);
    if (!why.isEmpty()) return refuse(Text::tr("作业") + name + ": " + why);
    if (name == current()->Case_Name) return true;
    const auto same = sql::scalar({}, "SELECT COUNT(*) FROM RLY_CASE_RLY WHERE Case_Name=? AND Case_No!=?",
                                  {name, current()->Case_No});
    return same.toInt() == 0 || refuse(Text::tr("作业名已经定义，请更换作业号"));
}

bool CaseStore::checkValues(const CaseForm& form) {
    const int parts = readRelayTypes().value(current()->RTypeNo).NPart;
    const auto good = [&](const auto& texts) { return std::all_of(texts.begin(), texts.begin() + parts, isSetting); };
    for (const CaseSettingRow& row : form.rows)
        if (!good(row.newValue) || !good(row.oldValue))
            return refuse(row.label + Text::tr("保护   定值 ") + row.DspCdz + Text::tr(" 的数据有错误，请检查"));
    return true;
}

bool CaseStore::check(const CaseForm& form) {
    if (!checkName(form)) return false;
    if (form.rows.isEmpty()) return refuse(Text::tr("作业内必须要有待整定保护"));
    return checkValues(form);
}

bool CaseStore::takeOut(const QList<int>& relays) {
    for (const char* table : {"RLY_CASEINF", "RLY_CELECHK"})
        if (!sql::Query().exec(
                QString("DELETE FROM ") + table + " WHERE Case_No=? AND RNo IN (" + sql::numberList(relays) + ")",
                {current()->Case_No}))
            return false;
    return true;
}

bool CaseStore::SaveRecord_Case(const CaseForm& form, CaseNode& saved) {
    saved.Case_Name = form.name.trimmed();
    saved.Note = form.note;
    saved.NPara = saved.LGup = 0;
    saved.PartFlg = form.PartFlg;
    saved.Mlf = form.onLoadFlow ? 1 : 0;
    saved.Scheme = form.onLoadFlow ? QString(" ") : form.source.trimmed();
    saved.Case_lf = loadFlowNumber(form);
    if (form.onLoadFlow && saved.Case_lf < 0) return refuse(Text::tr("潮流作业名没有对应的作业号"));
    sql::Query query;
    QVariantList values = {saved.Case_No, saved.Case_Name, saved.RTypeNo, saved.RTypeCode, saved.Mlf,
                           saved.Case_lf, saved.Scheme,    saved.NPara,   saved.LGup,      saved.Note};
    for (const int flag : saved.PartFlg) values.append(flag);
    return query.exec("DELETE FROM RLY_CASE_RLY WHERE Case_No=?", {saved.Case_No}) &&
           query.exec(QString("INSERT INTO RLY_CASE_RLY (") + kCaseColumns + ") VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)",
                      values);
}

bool CaseStore::SaveRecord_Sysmode(const CaseForm& form) {
    static const QStringList columns = {"Case_No", "SysName", "SysNo", "SFlg"};
    const auto names = modeNames();
    QVector<QVariantList> rows;
    for (const int mode : form.bigSys) rows.append({current()->Case_No, names.value(mode), mode, 1});
    for (const int mode : form.smallSys) rows.append({current()->Case_No, names.value(mode), mode, 2});
    sql::Query query;
    return query.exec("DELETE FROM RLY_RUDSYS WHERE Case_No=?", {current()->Case_No}) &&
           sql::insertRows({}, "RLY_RUDSYS", columns, rows);
}

bool CaseStore::SaveRecord(int mode, const CaseForm& form) {
    if (!current()) return true;
    if (!check(form)) return false;
    CaseNode saved = *current();
    bool missing = false;
    sql::Transaction transaction;
    bool ok = deletedRelays_.isEmpty() || takeOut(deletedRelays_);
    if (mode == 1)
        ok = ok && SaveRecord_Case(form, saved) &&
             CaseSettings::storeCase(saved.Case_No, saved.RTypeNo, form, &missing) && SaveRecord_Sysmode(form);
    else
        ok = ok && CaseSettings::storeWorking(saved.RTypeNo, form, &missing);
    if (!ok || !transaction.commit()) return false;
    *current() = saved;
    missingRelay_ = missingRelay_ || missing;
    deletedRelays_.clear();
    addedRelays_.clear();
    return true;
}
