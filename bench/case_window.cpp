// The windows of the case editor on a network with relays of three types at both ends of every line, offscreen, with
// three cases of all relays of one type: wall time of each step until it is painted, processor time of the program and
// of the database server, and statements. The network is the first argument that is no option.

#include <QApplication>
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QToolButton>
#include <chrono>
#include <functional>

#include "bench/RelayedCases.h"
#include "bench/Usage.h"
#include "programs/frame/RelayTypes.h"
#include "programs/frame/ui/CMorvaneObject.h"
#include "programs/workflow/CoordinationSearch.h"
#include "programs/workflow/WinDlgRlyCalMain.h"
#include "programs/workflow/WinDlgSaveDZ.h"
#include "programs/workflow/WinDlgSelectRly.h"
#include "programs/workflow/ui/SettingTable.h"

namespace {

using bench::zeroSequence;
constexpr int rounds = 4;

bench::Cases& cases() {
    static bench::Cases all;
    return all;
}

CMorvaneObject& workbench() {
    static CMorvaneObject object(&bench::realTime);
    return object;
}

template <class Widget>
Widget& part(const QWidget& window, const char* name) {
    return *window.findChild<Widget*>(name);
}

void paint(QWidget& window) {
    window.show();
    QApplication::sendPostedEvents();
    QApplication::processEvents();
    window.repaint();
}

class Editor {
  public:
    explicit Editor(int caseNo = 1, CMorvaneObject* owner = &workbench())
        : window(bench::project.realTimeName, bench::project.realTimePath(), bench::project.workDirectory(), caseNo,
                 QCoreApplication::applicationDirPath() + "/", {}, &bench::realTime, owner) {
        paint(window);
    }
    ~Editor() { window.Button_Cancel_clicked(); }
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;

    void tool(const char* name) {
        part<QToolButton>(window, name).click();
        paint(window);
    }
    void press(const char* name) {
        part<QPushButton>(window, name).click();
        paint(window);
    }
    /// Adds all relays of the type in the dialog behind the button.
    void addAll() {
        QTimer::singleShot(0, qApp, [] {
            auto* picker = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            part<QRadioButton>(*picker, "radioButton_gBSelection_Net").click();
            part<QPushButton>(*picker, "pushButton_Ensure").click();
        });
        press("pushButton_AddRly");
    }
    void chooseType(int type) {
        auto& box = part<QComboBox>(window, "comboBox_RType");
        box.setCurrentIndex(box.findData(type));
        emit box.activated(box.currentIndex());
        paint(window);
    }
    [[nodiscard]] qsizetype rows() const { return part<SettingTable>(window, "table_ObjRly").rows().size(); }
    [[nodiscard]] bool shows(qsizetype relays) const { return rows() >= relays; }

    WinDlgRlyCalMain window;
};

qsizetype all() { return cases().relays.size(); }

/// Times `step`; `prepare` before it is not counted.
void measure(
    benchmark::State& state, const std::function<bool()>& step, const std::function<void()>& prepare = [] {}) {
    if (!cases().made) return state.SkipWithError("no cases");
    double module = 0, server = 0, statements = 0;
    for (auto _ : state) {
        prepare();
        const bench::Usage before;
        const auto start = std::chrono::steady_clock::now();
        const bool done = step();
        const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
        const bench::Usage after;
        if (!done) return state.SkipWithError("the step failed");
        state.SetIterationTime(wall.count());
        module += after.module - before.module;
        server += after.server - before.server;
        statements += after.statements - before.statements - 1;
    }
    using benchmark::Counter;
    state.counters["program_ms"] = Counter(1e3 * module, Counter::kAvgIterations);
    state.counters["server_ms"] = Counter(1e3 * server, Counter::kAvgIterations);
    state.counters["statements"] = Counter(statements, Counter::kAvgIterations);
}

void openAndShow(benchmark::State& state, const std::function<CMorvaneObject*()>& owner) {
    std::unique_ptr<Editor> editor;
    cases();
    measure(
        state,
        [&] {
            editor = std::make_unique<Editor>(1, owner());
            return editor->shows(all());
        },
        [&] { editor.reset(); });
}
void openOnStandingNetwork(benchmark::State& state) {
    cases();
    workbench().network()->SwitchNetwork(0, -1, bench::scheme);
    openAndShow(state, [] { return &workbench(); });
}
void openOnOtherNetwork(benchmark::State& state) {
    openAndShow(state, [] { return nullptr; });
}

void leave(benchmark::State& state, void (WinDlgRlyCalMain::*slot)()) {
    cases();
    std::unique_ptr<Editor> editor;
    measure(
        state,
        [&] {
            (editor->window.*slot)();
            return editor->window.isHidden();
        },
        [&] { editor = std::make_unique<Editor>(); });
}
void leaveByOk(benchmark::State& state) { leave(state, &WinDlgRlyCalMain::Button_OK_clicked); }
void leaveByCancel(benchmark::State& state) { leave(state, &WinDlgRlyCalMain::Button_Cancel_clicked); }

/// There and back in turns.
void moveFrom(benchmark::State& state, int caseNo) {
    cases();
    Editor editor(caseNo);
    bool there = false;
    measure(state, [&] {
        editor.tool(there ? "ToolButton_PrevRec" : "ToolButton_NextRec");
        there = !there;
        return editor.shows(all());
    });
}
void moveOnSameNetwork(benchmark::State& state) { moveFrom(state, 1); }
void moveToOtherNetwork(benchmark::State& state) { moveFrom(state, 2); }

void otherMeasure(benchmark::State& state) {
    cases();
    Editor editor;
    bool primary = true;
    measure(state, [&] {
        primary = !primary;
        part<QRadioButton>(editor.window, primary ? "radioButton_Yici" : "radioButton_Erci").click();
        paint(editor.window);
        return editor.shows(all());
    });
}

void pickerOfRelays(benchmark::State& state) {
    const RelayTypeInfo type = readRelayTypes().value(zeroSequence);
    std::unique_ptr<WinDlgSelectRly> picker;
    cases();
    measure(state, [&] {
        picker = std::make_unique<WinDlgSelectRly>(type.RTypeCode, zeroSequence, type.RType, 0);
        paint(*picker);
        return part<QListWidget>(*picker, "listBox_AllRly").count() == all();
    });
}

void pickAllByHand(benchmark::State& state) {
    const RelayTypeInfo type = readRelayTypes().value(zeroSequence);
    std::unique_ptr<WinDlgSelectRly> picker;
    cases();
    measure(
        state,
        [&] {
            part<QListWidget>(*picker, "listBox_AllRly").selectAll();
            part<QPushButton>(*picker, "pushButton_Add").click();
            paint(*picker);
            return part<QListWidget>(*picker, "listBox_RlySelected").count() == all();
        },
        [&] {
            picker = std::make_unique<WinDlgSelectRly>(type.RTypeCode, zeroSequence, type.RType, 0);
            paint(*picker);
        });
}

void openSaveDialog(benchmark::State& state) {
    std::unique_ptr<WinDlgSaveDZ> dialog;
    measure(
        state,
        [&] {
            dialog = std::make_unique<WinDlgSaveDZ>(zeroSequence);
            paint(*dialog);
            return part<SettingTable>(*dialog, "table_Newdz").rows().size() >= all();
        },
        [] { cases().load(1); });
}

void save(benchmark::State& state, const char* button) {
    std::unique_ptr<WinDlgSaveDZ> dialog;
    measure(
        state,
        [&] {
            part<QPushButton>(*dialog, button).click();
            return dialog->isHidden();
        },
        [&] {
            cases().load(1);
            dialog = std::make_unique<WinDlgSaveDZ>(zeroSequence);
            paint(*dialog);
        });
}
void saveChangingBackup(benchmark::State& state) { save(state, "pushButton_SaveChangeHB"); }
void saveKeepingBackup(benchmark::State& state) { save(state, "pushButton_SaveNotChangeHB"); }

void searchCoordination(benchmark::State& state) {
    cases();
    workbench().network()->SwitchNetwork(0, -1, bench::scheme);
    measure(
        state, [] { return CoordinationSearch::SearchRlyCop(1); },
        [] { sql::Query().exec("DELETE FROM RLY_CASERLYCOP"); });
}
void searchWhatStands(benchmark::State& state) {
    measure(state, [] { return CoordinationSearch::SearchRlyCop(1); });
}

void addAllRelays(benchmark::State& state) {
    cases();
    Editor editor;
    editor.tool("ToolButton_InsertRec");
    editor.chooseType(zeroSequence);
    measure(
        state,
        [&] {
            editor.addAll();
            return editor.shows(all());
        },
        [&] { editor.tool("ToolButton_RecoverAll"); });
}

void deleteOneRelay(benchmark::State& state) {
    cases();
    Editor editor;
    measure(state, [&] {
        const qsizetype before = editor.rows();
        editor.press("pushButton_DeleteRly");
        return editor.rows() < before;
    });
}

void changeTypeOfAllRelays(benchmark::State& state) {
    cases();
    Editor editor;
    editor.tool("ToolButton_InsertRec");
    measure(
        state,
        [&] {
            editor.chooseType(1);
            return editor.rows() == 0;
        },
        [&] {
            editor.tool("ToolButton_RecoverAll");
            editor.chooseType(zeroSequence);
            editor.addAll();
        });
}

[[maybe_unused]] const bool registered = [] {
    const std::pair<const char*, void (*)(benchmark::State&)> steps[] = {
        {"openOnStandingNetwork", openOnStandingNetwork},
        {"openOnOtherNetwork", openOnOtherNetwork},
        {"leaveByOk", leaveByOk},
        {"leaveByCancel", leaveByCancel},
        {"moveOnSameNetwork", moveOnSameNetwork},
        {"moveToOtherNetwork", moveToOtherNetwork},
        {"otherMeasure", otherMeasure},
        {"pickerOfRelays", pickerOfRelays},
        {"pickAllByHand", pickAllByHand},
        {"openSaveDialog", openSaveDialog},
        {"saveChangingBackup", saveChangingBackup},
        {"saveKeepingBackup", saveKeepingBackup},
        {"searchCoordination", searchCoordination},
        {"searchWhatStands", searchWhatStands},
        {"addAllRelays", addAllRelays},
        {"deleteOneRelay", deleteOneRelay},
        {"changeTypeOfAllRelays", changeTypeOfAllRelays}};
    for (const auto& [name, step] : steps)
        benchmark::RegisterBenchmark(name, step)->Unit(benchmark::kMillisecond)->Iterations(rounds)->UseManualTime();
    return true;
}();

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return bench::runInProject<QApplication>(argc, argv);
}
