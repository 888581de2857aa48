// The steps of the case editor on a network with relays of three types at both ends of every line, with cases of all
// relays of one type: time and statements of each step. The network is the first argument that is no option.

#include <functional>

#include "bench/RelayedCases.h"
#include "programs/frame/EditSession.h"
#include "programs/frame/TableDefinitions.h"
#include "programs/workflow/CoordinationSearch.h"
#include "programs/workflow/SettingStore.h"

namespace {

using bench::Cases;
using bench::zeroSequence;

Cases& cases() {
    static Cases all;
    return all;
}

/// Times `step`; `after` brings back what it needs and is not counted.
void measure(
    benchmark::State& state, const std::function<bool()>& step, const std::function<void()>& after = [] {}) {
    if (!cases().made) return state.SkipWithError("no cases");
    double statements = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const double before = bench::statementsOfServer();
        state.ResumeTiming();
        const bool done = step();
        state.PauseTiming();
        statements += bench::statementsOfServer() - before - 1;
        if (!done) return state.SkipWithError("the step failed");
        after();
        state.ResumeTiming();
    }
    using benchmark::Counter;
    state.counters["statements"] = Counter(statements, Counter::kAvgIterations);
    state.counters["relays"] = static_cast<double>(cases().relays.size());
}

EditSession editorSession() {
    QVector<EditSession::Table> tables;
    for (const char* name : {"RLY_CASE_RLY", "RLY_RUDSYS", "RLY_CASEINF", "RLY_CASERDZ", "RLY_CELECHK",
                             "RLY_CASERLYCOP", "RLY_CKFCHK", "RLY_KLMFSYS", "RLY_FZXSSYS", "RLY_RDZTEM", "RLY_FAULTINF",
                             "RLY_KFINF", "RLY_RRVIN", "RLY_RRNPH", "RLY_CFZXS", "RLY_CFZXSRM", "RLY_CRUDRM"})
        tables << EditSession::Table{name, tables::ofName(name)->code};
    return {"WinDlgRlyCalMain", tables, "_TEM"};
}

void openEditor(benchmark::State& state) {
    EditSession session = editorSession();
    CaseStore store;
    measure(
        state,
        [&] {
            return session.open() && store.UpdateCaseChain(1) && store.LoadCaseRelays() && !store.form().rows.isEmpty();
        },
        [&] { session.commit(); });
}

void editSession(benchmark::State& state) {
    EditSession session = editorSession();
    measure(
        state, [&] { return session.open(); }, [&] { session.commit(); });
}

void cancelEditor(benchmark::State& state) {
    EditSession session = editorSession();
    session.open();
    measure(
        state, [&] { return session.restore(); }, [&] { session.open(); });
    session.commit();
}

/// A move from a case to the next one, there and back in turns.
void moveTo(benchmark::State& state, int from, int to) {
    Cases& all = cases();
    all.load(from);
    CaseForm form = all.store.form();
    const CaseNode start = *all.store.current();
    all.network.SwitchNetwork(start.Mlf, start.Case_lf, start.Scheme);
    int goal = to;
    measure(state, [&] {
        if (!all.store.SaveRecord(1, form) || !all.store.select(goal) || !all.store.LoadCaseRelays()) return false;
        form = all.store.form();
        const CaseNode& node = *all.store.current();
        all.network.SwitchNetwork(node.Mlf, node.Case_lf, node.Scheme);
        goal = goal == to ? from : to;
        return all.network.isWhole();
    });
}
void moveOnSameNetwork(benchmark::State& state) { moveTo(state, 1, 2); }
void moveToOtherNetwork(benchmark::State& state) { moveTo(state, 1, 3); }

void switchNetwork(benchmark::State& state) {
    int turn = 0;
    measure(state, [&] {
        cases().network.SwitchNetwork(0, -1, ++turn % 2 ? QString("二") : bench::scheme);
        return cases().network.isWhole();
    });
}

void searchCoordination(benchmark::State& state) {
    cases().network.SwitchNetwork(0, -1, bench::scheme);
    measure(state, [] { return CoordinationSearch::SearchRlyCop(1); });
    state.counters["rows"] = sql::scalar({}, "SELECT COUNT(*) FROM RLY_CASERLYCOP WHERE Case_No=1").toDouble();
}

void loadCaseRelays(benchmark::State& state) {
    cases().store.select(1);
    measure(state, [] { return cases().store.LoadCaseRelays(); });
}

void formOfCase(benchmark::State& state) {
    cases().load(1);
    measure(state, [] { return !cases().store.form().rows.isEmpty(); });
}

void saveCase(benchmark::State& state) {
    cases().load(1);
    const CaseForm form = cases().store.form();
    measure(state, [&] { return cases().store.SaveRecord(1, form); });
}

void saveWorkingTable(benchmark::State& state) {
    cases().load(1);
    const CaseForm form = cases().store.form();
    measure(state, [&] { return cases().store.SaveRecord(2, form); });
}

void saveChangedCase(benchmark::State& state) {
    cases().load(1);
    CaseForm form = cases().store.form();
    int turn = 0;
    measure(state, [&] {
        for (CaseSettingRow& row : form.rows) row.newValue[0] = QString::number(++turn % 1000);
        return cases().store.SaveRecord(1, form);
    });
}

void pasteCase(benchmark::State& state) {
    cases().load(2);
    measure(
        state, [] { return cases().store.pasteFrom(1); },
        [] { sql::Query().exec("UPDATE RLY_CASE_RLY SET Case_Name='二号' WHERE Case_No=2"); });
}

void addAllRelays(benchmark::State& state) {
    CaseStore& store = cases().store;
    CaseForm form;
    store.UpdateCaseChain(1);
    store.insert(zeroSequence, 0, -1, bench::scheme);
    measure(
        state, [&] { return store.addRelays(form, cases().relays); }, [&] { form.rows.clear(), store.recoverAll(); });
    store.UpdateCaseChain(1);
}

void removeAllRelaysButOne(benchmark::State& state) {
    CaseStore& store = cases().store;
    CaseForm form;
    const auto fill = [&] { store.addRelays(form, cases().relays); };
    store.UpdateCaseChain(1);
    store.insert(zeroSequence, 0, -1, bench::scheme);
    form.name = "删除";
    form.source = bench::scheme;
    fill();
    measure(
        state,
        [&] {
            for (const int relay : cases().relays)
                if (relay != cases().relays.first()) store.removeRelay(form, relay);
            return store.SaveRecord(1, form);
        },
        fill);
    store.remove();
    store.UpdateCaseChain(1);
}

void outagesOfAllRelays(benchmark::State& state) {
    const QString element = sql::scalar({}, "SELECT ID_Name FROM CDB_ACLINEBAK LIMIT 1").toString();
    cases().load(1);
    measure(
        state, [&] { return cases().store.setOutages(cases().relays, {element}); },
        [] { sql::Query().exec("DELETE FROM RLY_CELECHK"); });
}

void relaysToPickFrom(benchmark::State& state) {
    measure(state, [] { return !RelayStore::list(zeroSequence).isEmpty(); });
}

void saveSettings(benchmark::State& state) {
    cases().load(1);
    measure(state, [] { return SettingStore::saveChangingBackup(); });
}

void saveSettingsKeepingBackup(benchmark::State& state) {
    cases().load(1);
    measure(state, [] { return SettingStore::saveKeepingBackup(); });
}

[[maybe_unused]] const bool registered = [] {
    const std::pair<const char*, void (*)(benchmark::State&)> steps[] = {
        {"openEditor", openEditor},
        {"editSession", editSession},
        {"cancelEditor", cancelEditor},
        {"moveOnSameNetwork", moveOnSameNetwork},
        {"moveToOtherNetwork", moveToOtherNetwork},
        {"switchNetwork", switchNetwork},
        {"searchCoordination", searchCoordination},
        {"loadCaseRelays", loadCaseRelays},
        {"formOfCase", formOfCase},
        {"saveCase", saveCase},
        {"saveChangedCase", saveChangedCase},
        {"saveWorkingTable", saveWorkingTable},
        {"pasteCase", pasteCase},
        {"addAllRelays", addAllRelays},
        {"removeAllRelaysButOne", removeAllRelaysButOne},
        {"outagesOfAllRelays", outagesOfAllRelays},
        {"relaysToPickFrom", relaysToPickFrom},
        {"saveSettings", saveSettings},
        {"saveSettingsKeepingBackup", saveSettingsKeepingBackup}};
    for (const auto& [name, step] : steps)
        benchmark::RegisterBenchmark(name, step)->Unit(benchmark::kMillisecond)->Iterations(4)->UseRealTime();
    return true;
}();

}  // namespace

int main(int argc, char** argv) { return bench::runInProject<QCoreApplication>(argc, argv); }
