#include "programs/engine/RunInputs.h"

#include <algorithm>

#include "platform/sql/Sql.h"
#include "programs/engine/BranchTable.h"
#include "programs/engine/WorkFiles.h"
#include "programs/frame/LocationKey.h"

namespace {

template <class Value, class Key>
Value valueOf(const std::map<Key, Value>& all, const Key& key) {
    const auto it = all.find(key);
    return it == all.end() ? Value() : it->second;
}

ElementName nameAt(const sql::Query& q, int column) { return {q.text(column), q.text(column + 1), q.text(column + 2)}; }

QString keyOf(const ElementName& element, int side) {
    return locationKey(element.idName, element.iName, element.jName, side);
}

/// Finds the relay's numbers by its element code. \return false when it is not in the network
bool placeBlock(exchange::RelayBlock& block, int rType, const ElementName& at) {
    static const QSet<int> kBranchTypes{1, 4, 5, 6, 10, 12};
    const auto branches = BranchTable::current();
    if (rType == 0) {
        const std::optional<int> node = branches->nodeNumber(at.iName);
        block.iNo = block.jNo = node.value_or(0);
        return node.has_value();
    }
    const BranchRow* branch = kBranchTypes.contains(rType) ? branches->find(at.idName, at.iName, at.jName) : nullptr;
    if (!branch) return false;
    block.iNo = branch->iNo;
    block.jNo = branch->jNo;
    block.idNo = branch->idNo;
    return true;
}

SettingsByRelay settingsBy(const QString& query, const QVariantList& values) {
    SettingsByRelay settings;
    sql::Query q;
    q.exec(query, values);
    while (q.next()) {
        SettingValues row;
        for (int part = 0; part < 5; ++part) row[part] = q.raw(part + 1).toStdString();
        settings[q.number(0)].push_back(row);
    }
    return settings;
}

/// Rows that end in PNo, RMode, MType, the element's names, K_Loc, FType, R, X, Flg, from `column` on.
UserFault userFaultAt(const sql::Query& q, int column) {
    return {q.number(column),      q.number(column + 1), q.number(column + 2),
            nameAt(q, column + 3), q.number(column + 6), q.number(column + 7),
            q.real(column + 8),    q.real(column + 9),   q.number(column + 10)};
}

QString ruleKey(int rno, int ruleNo) { return QString::number(rno) + '/' + QString::number(ruleNo); }
QString ruleKey(const QString& place, int ruleNo) { return place + '/' + QString::number(ruleNo); }

QHash<QString, QVector<UserFault>> readUserFaults() {
    QHash<QString, QVector<UserFault>> faults;
    sql::Query r;
    r.exec("SELECT RNo,RuleNo,PNo,RMode,MType,ID_Name,I_Name,J_Name,K_Loc,FType,R,X,Flg FROM RLY_RUDRM WHERE Valid=1");
    while (r.next()) faults[ruleKey(r.number(0), r.number(1))].push_back(userFaultAt(r, 2));
    sql::Query k;
    k.exec(
        "SELECT ID_Name,I_Name,J_Name,Side,RuleNo,1,RMode,MType,FID_Name,FIName,FJName,K_Loc,FType,R,X,Flg "
        "FROM RLY_KLMPFAULT WHERE Valid=1");
    while (k.next()) faults[ruleKey(keyOf(nameAt(k, 0), k.number(3)), k.number(4))].push_back(userFaultAt(k, 5));
    return faults;
}

}  // namespace

SettingsByRelay readWorkingSettings(int rno) {
    const QString columns = "SELECT RNo,Ndz11,Ndz21,Ndz31,Ndz41,Ndz51 FROM RLY_RLYOBJ_TEM";
    return rno ? settingsBy(columns + " WHERE RNo=? ORDER BY RNo,DzNo", {rno})
               : settingsBy(columns + " ORDER BY RNo,DzNo", {});
}

RunInputs::RunInputs(int caseNo, int modeCaseNo, QString typeCode)
    : caseNo_(caseNo), modeCaseNo_(modeCaseNo), typeCode_(std::move(typeCode)) {}

void RunInputs::readRelays() {
    if (std::exchange(relaysRead_, true)) return;
    const std::string typeCode = work::gbk(typeCode_);
    sql::Query q;
    q.exec("SELECT Valid,RNo,RTypeNo,RType,Side,ID_Name,I_Name,J_Name,CTPri,CTSec,PTPri,PTSec FROM RLY_RUD");
    while (q.next()) {
        const ElementName at = nameAt(q, 5);
        exchange::RelayBlock block;
        block.valid = q.number(0);
        block.rno = q.number(1);
        block.side = q.number(4);
        block.label =
            exchange::relayLabel(work::gbk(at.idName), work::gbk(block.side == 1 ? at.iName : at.jName), typeCode);
        const bool placed = placeBlock(block, q.number(3), at);
        std::vector<InstalledRelay>& ofType = relaysOfType_[q.number(2)];
        relays_.insert(block.rno, {q.number(2), static_cast<int>(ofType.size())});
        ofType.push_back({block.rno, keyOf(at, block.side), q.real(8), q.real(9), q.real(10), q.real(11),
                          placed ? std::optional(block) : std::nullopt});
    }
}

const InstalledRelay* RunInputs::relay(int rno) {
    readRelays();
    const auto it = relays_.constFind(rno);
    return it == relays_.constEnd() ? nullptr : &relaysOfType_[it->first][it->second];
}

const std::vector<InstalledRelay>& RunInputs::relaysOfType(int rTypeNo) {
    readRelays();
    return relaysOfType_[rTypeNo];
}

const SettingsOfRelay& RunInputs::storedSettings(int rTypeNo, int rno) {
    if (!typesRead_.contains(rTypeNo)) {
        typesRead_.insert(rTypeNo);
        storedSettings_.insert(
            settingsBy("SELECT z.RNo,z.NRdz11,z.NRdz21,z.NRdz31,z.NRdz41,z.NRdz51 FROM RLY_RUD u "
                       "JOIN RLY_RDZ z ON z.RNo=u.RNo WHERE u.RTypeNo=? ORDER BY z.RNo,z.DzNo",
                       {rTypeNo}));
    }
    return storedSettings_[rno];
}

QHash<int, QVector<UserFault>> RunInputs::userFaults(const SettingRow& row) {
    if (!userFaults_) userFaults_ = readUserFaults();
    const QString key = row.ruleNo < 100 ? ruleKey(locationKey(row.idName, row.iName, row.jName, row.side), row.ruleNo)
                                         : ruleKey(row.rno, row.ruleNo);
    QHash<int, QVector<UserFault>> byMode;
    for (const UserFault& fault : userFaults_->value(key)) byMode[fault.rMode].push_back(fault);
    return byMode;
}

QVector<ElementName> RunInputs::outagesOfRelay(int rno) {
    if (!outagesOfRelay_) {
        outagesOfRelay_.emplace();
        sql::Query q;
        q.exec("SELECT RNo,ID_Name,I_Name,J_Name FROM RLY_CELECHK");
        while (q.next()) (*outagesOfRelay_)[q.number(0)].push_back(nameAt(q, 1));
    }
    return outagesOfRelay_->value(rno);
}

QVector<ElementName> RunInputs::outagesOfMainBranch(const ElementName& branch, int side) {
    if (!outagesOfMainBranch_) {
        outagesOfMainBranch_.emplace();
        sql::Query q;
        q.exec("SELECT ZID_Name,ZI_Name,ZJ_Name,Side,ID_Name,I_Name,J_Name FROM RLY_CKFCHK WHERE Case_no=?", {caseNo_});
        while (q.next()) (*outagesOfMainBranch_)[keyOf(nameAt(q, 0), q.number(3))].push_back(nameAt(q, 4));
    }
    return outagesOfMainBranch_->value(keyOf(branch, side));
}

void RunInputs::readModes() {
    if (std::exchange(modesRead_, true)) return;
    sql::Query q;
    q.exec("SELECT SysNo,SFlg FROM RLY_RUDSYS WHERE Case_No=?", {caseNo_});
    while (q.next())
        if (q.number(1) == 1 || q.number(1) == 2) (q.number(1) == 1 ? maximum_ : minimum_).push_back(q.number(0));
    sql::Query k;
    k.exec("SELECT SysNo FROM RLY_KLMFSYS WHERE Case_No=?", {modeCaseNo_});
    while (k.next()) sensitivity_.push_back(k.number(0));
    sql::Query z;
    z.exec("SELECT ZID_Name,ZI_Name,ZJ_Name,Side,SysNo FROM RLY_FZXSSYS WHERE Case_No=?", {caseNo_});
    while (z.next()) modesOfMainBranch_[keyOf(nameAt(z, 0), z.number(3))].push_back(z.number(4));
}

std::vector<int> RunInputs::modesOfMainBranch(const ElementName& branch, int side) {
    readModes();
    return modesOfMainBranch_.value(keyOf(branch, side));
}

std::vector<int> RunInputs::modes(int sFlg) {
    readModes();
    std::vector<int> numbers;
    if (sFlg == 1 || sFlg == 3) numbers = maximum_;
    if (sFlg == 2 || sFlg == 3) numbers.insert(numbers.end(), minimum_.begin(), minimum_.end());
    return numbers;
}

const std::vector<int>& RunInputs::sensitivityModes() {
    readModes();
    return sensitivity_;
}

int RunInputs::parameterVector(int rno, int pno, int ruleNo) {
    if (!parameterVectors_) {
        parameterVectors_.emplace();
        sql::Query q;
        q.exec("SELECT RNo,PNo,RuleNo,ParNo FROM RLY_CASEINF WHERE Case_No=?", {caseNo_});
        while (q.next()) parameterVectors_->insert({{q.number(0), q.number(1), q.number(2)}, q.number(3)});
    }
    return valueOf(*parameterVectors_, std::tuple(rno, pno, ruleNo));
}

void RunInputs::readSettingRows() {
    if (std::exchange(rowsRead_, true)) return;
    sql::Query q;
    q.exec("SELECT ID,RNo,PNo,RuleNo,Cdz,PRTypeNo FROM RLY_RDZTEM WHERE Case_No=? ORDER BY ID ASC", {caseNo_});
    while (q.next()) {
        rowIds_.insert({{q.number(1), q.number(2), q.number(3), q.text(4)}, q.number(0)});
        std::vector<ListedRule>& rules = rulesOfPart_[{q.number(1), q.number(2)}];
        const ListedRule rule{q.number(3), q.number(5)};
        if (std::none_of(rules.begin(), rules.end(),
                         [&](const ListedRule& r) { return r.ruleNo == rule.ruleNo && r.prTypeNo == rule.prTypeNo; }))
            rules.push_back(rule);
    }
}

const std::vector<RunInputs::ListedRule>& RunInputs::rulesOfPart(int rno, int pno) {
    readSettingRows();
    return rulesOfPart_[{rno, pno}];
}

int RunInputs::settingRowId(int rno, int pno, int ruleNo, const QString& cdz) {
    readSettingRows();
    return valueOf(rowIds_, std::tuple(rno, pno, ruleNo, cdz));
}
