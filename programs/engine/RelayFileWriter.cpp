#include <QHash>
#include <QSet>
#include <array>

#include "exchange/FileNames.h"
#include "exchange/RelayFile.h"
#include "platform/sql/Sql.h"
#include "programs/engine/BranchTable.h"
#include "programs/engine/CRelayFaultCal.h"
#include "programs/engine/WorkFiles.h"
#include "programs/frame/Messages.h"

namespace {

constexpr std::size_t kSettingsPerPart = 4;
const char kRelayColumns[] = "SELECT Valid,RNo,I_Name,J_Name,Side,ID_Name,RType FROM RLY_RUD WHERE ";

struct InstalledRelay {
    int valid = 0, rno = 0;
    QString iName, jName;
    int side = 1;
    QString idName;
    int rType = 0;
};

/// The values of one setting name, by part, as the database's text.
using SettingValues = std::array<std::string, 5>;
using SettingsOfRelay = std::vector<SettingValues>;

InstalledRelay relayAt(const sql::Query& q) {
    return {q.number(0), q.number(1), q.text(2), q.text(3), q.number(4), q.text(5), q.number(6)};
}

QHash<int, SettingsOfRelay> settingsBy(const QString& query, const QVariantList& values) {
    QHash<int, SettingsOfRelay> settings;
    sql::Query q;
    q.exec(query, values);
    while (q.next()) {
        SettingValues row;
        for (int part = 0; part < 5; ++part) row[part] = q.raw(part + 1).toStdString();
        settings[q.number(0)].push_back(row);
    }
    return settings;
}

QHash<int, SettingsOfRelay> workingSettings(int rno = 0) {
    const QString columns = "SELECT RNo,Ndz11,Ndz21,Ndz31,Ndz41,Ndz51 FROM RLY_RLYOBJ_TEM";
    return rno ? settingsBy(columns + " WHERE RNo=? ORDER BY RNo,DzNo", {rno})
               : settingsBy(columns + " ORDER BY RNo,DzNo", {});
}

QHash<int, SettingsOfRelay> storedSettings(int rTypeNo) {
    return settingsBy(
        "SELECT z.RNo,z.NRdz11,z.NRdz21,z.NRdz31,z.NRdz41,z.NRdz51 FROM RLY_RUD u JOIN RLY_RDZ z ON z.RNo=u.RNo "
        "WHERE u.RTypeNo=? ORDER BY z.RNo,z.DzNo",
        {rTypeNo});
}

/// The relay's numbers and label, without its parts. \return nothing when it is not in the network
std::optional<exchange::RelayBlock> placed(const InstalledRelay& relay, const QString& typeCode) {
    static const QSet<int> kBranchTypes{1, 4, 5, 6, 10, 12};
    const auto branches = BranchTable::current();
    exchange::RelayBlock block;
    block.valid = relay.valid;
    block.rno = relay.rno;
    block.side = relay.side;
    block.label = exchange::relayLabel(work::gbk(relay.idName), work::gbk(relay.side == 1 ? relay.iName : relay.jName),
                                       work::gbk(typeCode));
    if (relay.rType == 0) {
        const std::optional<int> node = branches->nodeNumber(relay.iName);
        if (!node) return std::nullopt;
        block.iNo = block.jNo = *node;
        return block;
    }
    if (!kBranchTypes.contains(relay.rType)) return std::nullopt;
    const BranchRow* branch = branches->find(relay.idName, relay.iName, relay.jName);
    if (!branch) return std::nullopt;
    block.iNo = branch->iNo;
    block.jNo = branch->jNo;
    block.idNo = branch->idNo;
    return block;
}

std::string blockOf(exchange::RelayBlock block, int nPart, const SettingsOfRelay& settings) {
    block.parts.resize(nPart);
    for (int part = 0; part < nPart; ++part)
        for (std::size_t k = 0; k < kSettingsPerPart; ++k)
            block.parts[part][k] = k < settings.size() && part < 5 ? settings[k][part] : "0";
    return exchange::format(block);
}

int partsOf(const RuleData& rules, int rTypeNo) {
    const RelayType* type = rules.type(rTypeNo);
    return type ? type->nPart : 0;
}

QVector<InstalledRelay> othersOfType(int rTypeNo, const InstalledRelay& first) {
    QVector<InstalledRelay> relays;
    sql::Query q;
    q.exec(kRelayColumns + QString("RTypeNo=? AND ( ID_Name!=? OR I_Name!=? OR J_Name!=? OR Side!=? )"),
           {rTypeNo, first.idName, first.iName, first.jName, first.side});
    while (q.next()) relays.push_back(relayAt(q));
    return relays;
}

}  // namespace

bool CRelayFaultCal::WriteRelayFile(int relayType, int rno) {
    if (!work::write(workDir_, exchange::file::kRelays, {})) return false;
    sql::Query q;
    q.exec(kRelayColumns + QString("RNo=?"), {rno});
    const InstalledRelay first = q.next() ? relayAt(q) : InstalledRelay();
    const auto block = placed(first, typeCode_);
    if (!block) {
        ReportError("要整定的保护不在当前方案或潮流作业对应的网络中,请检查数据", 0);
        return false;
    }
    std::string text = blockOf(*block, partsOf(rules(), rTypeNo_), workingSettings(rno).value(rno));
    const QVector<InstalledRelay> others = othersOfType(relayType, first);
    if (!others.isEmpty()) {
        const int nPart = partsOf(rules(), relayType);
        const auto working = firstWrite_ == 1 ? QHash<int, SettingsOfRelay>() : workingSettings();
        const auto stored = storedSettings(relayType);
        for (const InstalledRelay& relay : others)
            if (const auto other = placed(relay, typeCode_))
                text += blockOf(*other, nPart, working.contains(relay.rno) ? working[relay.rno] : stored[relay.rno]);
        firstWrite_ = 0;
    }
    return work::write(workDir_, exchange::file::kRelays, text);
}
