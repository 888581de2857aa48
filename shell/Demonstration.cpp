#include "shell/Demonstration.h"

#include <QCoreApplication>

#include "platform/sql/Sql.h"
#include "programs/model/RelayStore.h"
#include "programs/netview/DisplayConfiguration.h"
#include "programs/netview/VirtualRelays.h"
#include "programs/study/ModeStore.h"
#include "programs/workflow/CaseStore.h"

namespace shell {

namespace {

struct Level {
    double kv, ct, pt;
};
constexpr Level kLevels[] = {{220, 240, 2200}, {110, 120, 1100}};
constexpr int kTypes[] = {1, 2, 3};
constexpr int kSecondOnSecond = 202;  ///< coordinates a second stage with the adjacent second stage: ever longer times

QString caseName(int type) {
    static const char* const names[] = {QT_TRANSLATE_NOOP("shell::Demonstration", "相间距离"),
                                        QT_TRANSLATE_NOOP("shell::Demonstration", "接地距离"),
                                        QT_TRANSLATE_NOOP("shell::Demonstration", "零序电流")};
    return QCoreApplication::translate("shell::Demonstration", names[type - 1]);
}

bool installRelays() {
    QVector<RelayRequest> requests;
    for (const Level& level : kLevels)
        for (const Location& at : RelayStore::lineEnds(level.kv))
            for (const int type : kTypes) requests.append({at, type, level.ct, level.pt, {}});
    return RelayStore::install(requests) >= 0 && SearchDumRelay();
}

bool makeCase(CaseStore& cases, int type) {
    CaseForm form;
    form.name = caseName(type);
    form.source = sql::scalar({}, "SELECT SchName FROM CDB_SCHEMEINFBAK LIMIT 1").toString();
    form.bigSys = {ModeStore::numberOf("最大方式")};
    form.smallSys = {ModeStore::numberOf("最小方式")};
    QVector<int> relays;
    for (const InstalledRelay& relay : RelayStore::list(type)) relays.append(relay.RNo);
    cases.insert(type, 0, -1, form.source);
    return cases.addRelays(form, relays) && cases.setRules({}, {type * 1000 + kSecondOnSecond}) &&
           cases.SaveRecord(1, form) && cases.setSensitivityModes(form.smallSys);
}

/// As in the display configuration: relay types on the labels, one after the other in the order of kTypes.
bool showRelays() {
    QVector<DisplayConfiguration::Row> types = DisplayConfiguration::types();
    for (const int type : kTypes)
        for (qsizetype row = 0; row < types.size(); ++row)
            if (types[row].key.toInt() == type) DisplayConfiguration::toggle(types, row);
    return DisplayConfiguration::store(kTypes[0], DisplayConfiguration::settings(kTypes[0]), types, {1, true, true});
}

}  // namespace

bool makeDemonstration() {
    CaseStore cases;
    if (!installRelays() || !cases.UpdateCaseChain(1)) return false;
    for (const int type : kTypes)
        if (!makeCase(cases, type)) return false;
    return showRelays();
}

}  // namespace shell
