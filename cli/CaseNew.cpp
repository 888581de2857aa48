#include <QSet>
#include <algorithm>

#include "cli/CaseVerbs.h"
#include "cli/TextTable.h"
#include "platform/sql/Sql.h"
#include "programs/frame/LocationLabel.h"
#include "programs/frame/Messages.h"
#include "programs/frame/RelayTypes.h"
#include "programs/model/RelayStore.h"
#include "programs/study/ModeStore.h"
#include "programs/workflow/RelaySelection.h"

namespace cli {

namespace {

bool modesByName(Context& context, const std::vector<std::string>& names, QList<int>* modes) {
    for (const std::string& name : names) {
        const int number = ModeStore::numberOf(QString::fromStdString(name));
        if (number == 0) return context.stop(BadInput, "没有运行方式" + QString::fromStdString(name));
        if (!modes->contains(number)) modes->append(number);
    }
    return true;
}

bool relaysOfLevels(int type, const std::vector<double>& levels, QSet<int>* relays) {
    for (const double level : levels) {
        QVector<SelectedRly> found;
        if (!RelaySelection::ofLevel(type, level, &found)) return false;
        for (const SelectedRly& relay : found) relays->insert(relay.RNo);
    }
    return true;
}

/// The relays that are meant, those switched off left out.
bool chooseRelays(Context& context, const CaseWish& wish, QVector<int>* chosen) {
    QSet<int> ofLevels;
    if (!relaysOfLevels(wish.type, wish.levels, &ofLevels)) return context.stop(BadInput, {});
    const auto named = [&](int relay) {
        return wish.relays.empty() || std::find(wish.relays.begin(), wish.relays.end(), relay) != wish.relays.end();
    };
    for (const InstalledRelay& relay : RelayStore::list(wish.type)) {
        const bool inLevel = wish.levels.empty() || ofLevels.contains(relay.RNo);
        if (relay.Valid && inLevel && named(relay.RNo)) chosen->append(relay.RNo);
    }
    for (const int relay : wish.relays)
        if (!chosen->contains(relay))
            return context.stop(BadInput, "保护" + QString::number(relay) + "不存在、无效或不是该类型");
    return true;
}

QString firstScheme() { return sql::scalar({}, "SELECT SchName FROM CDB_SCHEMEINFBAK LIMIT 1").toString(); }

bool fillForm(Context& context, const CaseWish& wish, CaseForm& form) {
    form.name = wish.name.empty() ? CaseStore::defaultName() : QString::fromStdString(wish.name);
    form.note = QString::fromStdString(wish.note);
    form.onLoadFlow = !wish.loadFlow.empty();
    form.source = QString::fromStdString(form.onLoadFlow ? wish.loadFlow : wish.scheme);
    if (form.source.isEmpty()) form.source = firstScheme();
    if (!wish.parts.empty()) form.PartFlg.fill(0);
    for (const int part : wish.parts) form.PartFlg[size_t(part - 1)] = 1;
    return modesByName(context, wish.maximum, &form.bigSys) && modesByName(context, wish.minimum, &form.smallSys);
}

QString placesOf(const QVector<int>& relays, int type) {
    const int rType = readRelayTypes().value(type).RType;
    QStringList places;
    for (const InstalledRelay& relay : RelayStore::list(type))
        if (relays.contains(relay.RNo))
            places.append(
                locationLabel(rType, relay.at.ID_Name, relay.at.I_Name, relay.at.J_Name, relay.at.Side).trimmed());
    return places.join("、");
}

/// Leaves out the relays whose element the network of the case does not have: no run could calculate them.
bool keepRelaysOfNetwork(Context& context, const CaseForm& form, int type, QVector<int>* relays) {
    if (relays->isEmpty() || !CaseStore::hasSource(form)) return true;  // refused when the case is stored
    NetworkSource network(context.realTime());
    network.SwitchNetwork(form.onLoadFlow ? 1 : 0, CaseStore::loadFlowNumber(form),
                          form.onLoadFlow ? QString(" ") : form.source);
    const QVector<int> outside = NetworkSource::relaysOutside(*relays);
    if (outside.isEmpty()) return true;
    const QString where = (form.onLoadFlow ? "潮流作业" : "方案") + form.source + "的网络中";
    if (outside.size() == relays->size()) return context.stop(BadInput, "所选保护都不在" + where + "，不能定义作业");
    ReportError("不在" + where + "的保护没有列入作业: " + placesOf(outside, type), 1);
    relays->removeIf([&](int relay) { return outside.contains(relay); });
    return true;
}

}  // namespace

void newCase(Context& context, const CaseWish& wish) {
    if (!openAlone(context, wish, true)) return;
    CaseStore cases;
    CaseForm form;
    QVector<int> relays;
    QList<int> sensitivity;
    if (!offeredForCases(wish.type) || !readRelayTypes().contains(wish.type)) {
        context.stop(BadInput, "不能为保护类型" + QString::number(wish.type) + "定义作业");
        return;
    }
    if (!fillForm(context, wish, form) || !modesByName(context, wish.sensitivity, &sensitivity) ||
        !chooseRelays(context, wish, &relays) || !keepRelaysOfNetwork(context, form, wish.type, &relays) ||
        !cases.UpdateCaseChain(1))
        return;
    QStringList outages;
    for (const std::string& name : wish.outages) outages.append(QString::fromStdString(name));
    cases.insert(wish.type, form.onLoadFlow ? 1 : 0, -1, form.source);
    const bool stored = cases.addRelays(form, relays) && cases.setRules({}, numbersOf(wish.rulesOff)) &&
                        cases.SaveRecord(1, form) && cases.setSensitivityModes(sensitivity) &&
                        (outages.isEmpty() || cases.setOutages(relays, outages));
    if (!stored) {
        cases.recoverAll();
        cases.remove();
        context.exitCode = BadInput;
        return;
    }
    const CaseNode& node = *cases.current();
    if (context.json) return print(QString("{\"number\":%1}\n").arg(node.Case_No));
    print("作业 " + node.Case_Name + "，编号 " + QString::number(node.Case_No) + "，保护 " +
          QString::number(relays.size()) + " 套\n");
}

}  // namespace cli
