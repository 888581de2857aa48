#pragma once

#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <memory>

#include "platform/host/BaseTables.h"
#include "platform/host/WinDockFeedback.h"
#include "platform/host/ui/HostEvents.h"
#include "platform/import/Import.h"
#include "platform/rtdb/CaseRecords.h"
#include "platform/rtdb/dbCursor.h"
#include "platform/rtdb/dbDatabase.h"
#include "platform/sql/Sql.h"
#include "programs/engine/BranchTable.h"
#include "programs/frame/ProjectStore.h"
#include "programs/frame/TableNames.h"
#include "programs/frame/ui/CMorvaneObject.h"
#include "programs/model/RelayStore.h"

inline void PrintTo(const QString& text, std::ostream* out) { *out << text.toStdString(); }

MATCHER_P(Holds, part, "") { return arg.contains(QString(part)); }

/// A host's main window that keeps what the module sends.
class HostWindow : public QWidget {
  public:
    HostWindow() { host::setMainWidget(this); }

    QVector<int> modes;  ///< data of the events 53212
    QVector<int> flags;  ///< of the events 53214

    bool event(QEvent* event) override {
        if (event->type() == QEvent::Type(53212)) {
            const std::unique_ptr<int> mode(static_cast<int*>(static_cast<host::DataCustomEvent*>(event)->data()));
            modes << *mode;
        } else if (event->type() == QEvent::Type(53214)) {
            flags << static_cast<CUpdateLabelsCustomEvent*>(event)->flags();
        } else {
            return QWidget::event(event);
        }
        return true;
    }
};

/// A project on the demonstration network, made for the whole suite, with the module loaded as a host does it. Each
/// test begins without relays, cases, users and labels, and with nothing displayed.
class ModuleFixture : public testing::Test {
  protected:
    static inline const QStringList actionNames = {
        "RlyDspSetAction",       "RlySetCopRlyAction",       "RlyEditEditSysAction",   "RlyEditSetRlyAction",
        "RlyEditEditFzxsAction", "RlyEditSelectRTypeAction", "RlyEditSetDzNameAction", "RlyEditSetDumRlyAction",
        "RlyCalCalAction",       "RlyCalBuildDzdAction",     "RlyEditSetAllRlyAction", "RlySetUserAction"};

    static void SetUpTestSuite() {
        WinDockFeedback::setReceiver([](const char*, int) {});
        project = std::make_unique<Project>(ProjectStore().create("模块", MORVANE_SOURCE_DIR "/data/rules").value());
        import::Report report;
        ASSERT_TRUE(host::storeNetwork(import::read(MORVANE_SOURCE_DIR "/data/networks/demo", {}, report)));
        exec("CREATE TABLE Pristine AS SELECT * FROM RLY_RLYDSP");
        realTime = std::make_unique<dbDatabase>();
        ASSERT_TRUE(realTime->open(project->realTimeFile()));
    }
    static void TearDownTestSuite() {
        realTime.reset();
        ProjectStore().remove(project->name);
        WinDockFeedback::setReceiver({});
    }

    void SetUp() override {
        for (const char* table : {"RLY_RLYUSER", "RLY_CASE_RLY", "RLY_RUD", "RLY_RDZ", "RLY_RLYCOP", "RLY_DUMRLY",
                                  "RLY_RRBRANCH_TEM", "RLY_RLYDSP"})
            exec(QString("DELETE FROM ") + table);
        exec("INSERT INTO RLY_RLYDSP SELECT * FROM Pristine");
        BranchTable::invalidate();
        dbCursor<norvdb::addition_graph>(*realTime, dbCursorForUpdate).removeAll();
        realTime->commit();
        CMorvaneObject::iRlyDspAss = CMorvaneObject::iRlyDspLoc = CMorvaneObject::iRlyDspFlg = 0;
        WinDockFeedback::setReceiver([this](const char* text, int level) {
            (level > WinDockFeedback::Diagram ? errors : lines) << QString::fromUtf8(text);
        });
        for (const QString& name : actionNames) actions[name] = new QAction(&window);
    }
    void TearDown() override {
        module.reset();
        WinDockFeedback::setReceiver([](const char*, int) {});
    }

    /// The calls of a host that opens the project.
    CMorvaneObject& load() {
        module = std::make_unique<CMorvaneObject>(&caseCombo, &modeCombo, realTime.get(), &moduleAction);
        module->SetDynMenuActions(&actions);
        module->InitCalcModule(nullptr, project->directory, home.path(), nullptr);
        module->InitDynMenuStatus();
        QCoreApplication::processEvents();
        return *module;
    }

    /// Does something with the next modal dialog, which is then closed if it still stands.
    template <class Act>
    static void whenOpen(Act act) {
        QTimer::singleShot(0, [act] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            act(*dialog);
            if (dialog->isVisible()) dialog->reject();
        });
    }

    static void exec(const QString& text, const QVariantList& values = {}, const QString& connection = {}) {
        ASSERT_TRUE(sql::Query(connection).exec(text, values)) << text.toStdString();
    }
    static QString value(const QString& text, const QVariantList& values = {}, const QString& connection = {}) {
        return sql::scalar(connection, text, values, "-").toString();
    }
    static Location end(const QString& line, int side) { return RelayStore::placesOf(line, side, 6).value(0); }
    /// Number of a relay installed there.
    static int install(const Location& at, int type) {
        EXPECT_EQ(RelayStore::install({{at, type, 240, 2200, {}}}), 1);
        return sql::scalar({}, "SELECT MAX(RNo) FROM RLY_RUD").toInt();
    }
    static void addCase(int no, const QString& name, int mlf, int lfCase, const QString& scheme) {
        exec("INSERT INTO RLY_CASE_RLY (Case_No,Case_Name,Mlf,Case_lf,Scheme) VALUES(?,?,?,?,?)",
             {no, name, mlf, lfCase, scheme});
    }

    static inline std::unique_ptr<Project> project;
    static inline std::unique_ptr<dbDatabase> realTime;

    QTemporaryDir home;
    HostWindow window;
    CComboBoxCaseNo caseCombo;
    QComboBox modeCombo;
    QAction moduleAction;
    QMap<QString, QAction*> actions;
    std::unique_ptr<CMorvaneObject> module;
    QStringList lines;   ///< information and diagram lines of the dock
    QStringList errors;  ///< warnings and errors
};
