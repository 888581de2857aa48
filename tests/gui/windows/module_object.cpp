#include <QDir>
#include <QSqlDatabase>

#include "tests/gui/windows/module_fixture.h"

using testing::ElementsAre;

namespace {

class Module : public ModuleFixture {
  protected:
    /// Names of the enabled actions.
    QStringList enabled() const {
        QStringList names;
        for (const QString& name : actionNames)
            if (actions[name]->isEnabled()) names << name;
        return names;
    }
    void select(const QString& name) {
        caseCombo.setCurrentText(name);
        module->SetCase_No(0);
    }
    static bool hasBranch(const QString& line) {
        const Location at = end(line, 1);
        return BranchTable::current()->find(at.ID_Name, at.I_Name, at.J_Name) != nullptr;
    }
};

TEST_F(Module, IsLoadedAndClosedAsAHostDoesIt) {
    addCase(3, "作业三", 0, -1, "基础方案");
    exec("UPDATE RLY_RLYDSP SET RlyAss=1,RlyLoc=0");
    moduleAction.setEnabled(false);
    modeCombo.addItem("其他模块的方式");
    caseCombo.hide();
    load();
    EXPECT_TRUE(moduleAction.isEnabled() && caseCombo.isEnabled() && !caseCombo.isHidden());
    EXPECT_EQ(caseCombo.itemText(0), "作业三");
    EXPECT_EQ(modeCombo.count(), 2);
    EXPECT_EQ(modeCombo.currentText(), "保护编辑");
    EXPECT_EQ(CMorvaneObject::iRlyDspAss, 1);
    EXPECT_EQ(CMorvaneObject::iRlyDspLoc, 0);
    EXPECT_THAT(window.flags, ElementsAre(4, 2));
    EXPECT_THAT(window.modes, ElementsAre(0));
    EXPECT_EQ(module->GetCase_No(), -1);
    EXPECT_THAT(errors, testing::IsEmpty());

    EXPECT_TRUE(module->CloseCalcModule());
    EXPECT_TRUE(caseCombo.isHidden() && !caseCombo.isEnabled() && modeCombo.isHidden() && !moduleAction.isEnabled());
    const QString before = QDir::currentPath();
    module.reset();
    EXPECT_EQ(QDir::currentPath(), QDir(home.path()).canonicalPath());
    QDir::setCurrent(before);
}

TEST_F(Module, UsesTheRuleDatabaseOfTheOpenProject) {
    const auto server = [] { return value("SELECT CONNECTION_ID()", {}, tables::ruleConnection); };
    const QString before = server();
    load();
    EXPECT_EQ(server(), before);  // the host's own connection was not replaced
    module.reset();
    QSqlDatabase::database(tables::ruleConnection).close();
    QSqlDatabase::removeDatabase(tables::ruleConnection);
    load();
    EXPECT_EQ(QSqlDatabase::database(tables::ruleConnection).databaseName(), "模块TEMRLYRULE");
    EXPECT_EQ(value("SELECT COUNT(*)>0 FROM RTYPE", {}, tables::ruleConnection), "1");
}

TEST_F(Module, EnablesTheActionsOfTheWorkingMode) {
    load();
    const QStringList always = {"RlyDspSetAction", "RlySetCopRlyAction", "RlySetUserAction"};
    const QStringList calculating = {"RlyCalCalAction", "RlyCalBuildDzdAction"};
    QStringList editing = actionNames;
    editing.removeIf([&](const QString& name) { return calculating.contains(name); });
    for (QAction* action : actions) action->setVisible(true);  // an invisible action never counts as enabled
    EXPECT_EQ(enabled(), editing);
    window.flags.clear();

    QMetaObject::invokeMethod(&modeCombo, "activated", Q_ARG(int, 1));
    QCoreApplication::processEvents();
    EXPECT_EQ(enabled(), (QStringList{"RlyDspSetAction", "RlySetCopRlyAction", "RlyCalCalAction",
                                      "RlyCalBuildDzdAction", "RlySetUserAction"}));
    EXPECT_EQ(modeCombo.currentIndex(), 1);
    EXPECT_EQ(module->GetSubModuleOrderNum(), 1);
    EXPECT_EQ(module->GetEleLabelsConfNum(), 17);
    module->SubStation(2);
    EXPECT_EQ(enabled(), always);
    EXPECT_EQ(modeCombo.currentIndex(), 1);
    for (QAction* action : actions) action->setEnabled(false);
    module->SubStation(3);
    EXPECT_EQ(enabled(), always);
    QCoreApplication::processEvents();
    EXPECT_THAT(window.modes, ElementsAre(0, 1, 2));
    EXPECT_THAT(window.flags, ElementsAre(2, 2));
}

TEST_F(Module, RunsTheActionsItHasAndHidesTheOthers) {
    load();
    const QMap<QString, bool> has = {
        {"RlyDspSetAction", false},       {"RlyEditSelectRTypeAction", true},
        {"RlyEditSetDzNameAction", true}, {"RlyEditSetDumRlyAction", false},
        {"RlyCalCalAction", true},        {"RlySetUserAction", false}};  // and whether they say that they handled it
    for (const QString& name : actionNames) {
        EXPECT_EQ(actions[name]->isVisible(), has.contains(name)) << name.toStdString();
        EXPECT_EQ(module->GetDynMenuAction(name), actions[name]);
        if (name != "RlyEditSetDumRlyAction" && has.contains(name)) whenOpen([](QDialog& dialog) { dialog.reject(); });
        bool handled = false;
        EXPECT_EQ(module->ProcessDynMenuInterface(name, handled), has.contains(name)) << name.toStdString();
        EXPECT_EQ(handled, has.value(name)) << name.toStdString();
    }
    EXPECT_NE(value("SELECT COUNT(*) FROM RLY_DUMRLY"), "0");  // the demonstration network has T nodes
    bool handled = true;
    EXPECT_FALSE(module->ProcessDynMenuInterface("别的模块的动作", handled));
    EXPECT_TRUE(handled);
    EXPECT_EQ(module->GetDynMenuAction("别的模块的动作"), nullptr);
    EXPECT_EQ(actions.size(), actionNames.size());
}

TEST_F(Module, RedrawsLabelsOnlyAfterAnAcceptedDialog) {
    load();
    window.flags.clear();
    bool handled = false;
    whenOpen([](QDialog& dialog) { dialog.reject(); });
    module->ProcessDynMenuInterface("RlyDspSetAction", handled);
    EXPECT_THAT(window.flags, testing::IsEmpty());
    whenOpen([](QDialog& dialog) { QMetaObject::invokeMethod(&dialog, "PushButton_Ensure_Clicked"); });
    module->ProcessDynMenuInterface("RlyDspSetAction", handled);
    EXPECT_THAT(window.flags, ElementsAre(4));
    whenOpen([](QDialog& dialog) { dialog.reject(); });
    module->RlyPopupMenuSetDsp();
    EXPECT_THAT(window.flags, ElementsAre(4, 4));
}

TEST_F(Module, BringsTheNetworkInWhenTheSourceChanges) {
    addCase(1, "基础", 0, -1, "基础方案");
    addCase(2, "同源", 0, -1, "基础方案");
    addCase(3, "停运", 0, -1, "青龙线停运");
    addCase(4, "潮流", 1, 1, " ");
    load();
    window.flags.clear();
    select("停运");
    EXPECT_FALSE(hasBranch("青龙"));
    EXPECT_TRUE(hasBranch("青白I"));
    EXPECT_THAT(window.flags, ElementsAre(0x2A, 4));
    select("基础");
    EXPECT_TRUE(hasBranch("青龙"));
    EXPECT_EQ(module->GetCase_No(), 1);

    window.flags.clear();
    const auto rows = realTime->changeCount();
    select("基础");
    select("同源");
    EXPECT_EQ(module->GetCase_No(), 2);
    EXPECT_EQ(module->caseNo, 2);
    EXPECT_EQ(realTime->changeCount(), rows);
    EXPECT_THAT(window.flags, testing::IsEmpty());

    select("潮流");
    EXPECT_THAT(window.flags, ElementsAre(0x1A, 4));
    EXPECT_EQ(realTime->fact("load_flow"), "1");
    EXPECT_EQ(module->GetCase_NoByCase_Name("潮流"), 4);
    EXPECT_EQ(module->GetCase_Name(4), "潮流");
}

class ModuleCases : public Module {
  protected:
    void SetUp() override {
        Module::SetUp();
        const int relay = install(end("青白I", 1), 3);
        addCase(1, "基础", 0, -1, "基础方案");
        addCase(2, "停运", 0, -1, "青龙线停运");
        exec("UPDATE RLY_CASE_RLY SET RTypeNo=3");
        for (const int no : {1, 2})
            exec("INSERT INTO RLY_CASEINF (Case_No,TurnNo,RNo,PNo,RuleNo,PValid,RValid) VALUES (?,1,?,1,3101,1,1)",
                 {no, relay});
        load();
        select("基础");
        window.flags.clear();
    }
    void TearDown() override {
        for (const char* table : {"RLY_CASEINF", "RLY_CASERDZ"}) exec(QString("DELETE FROM ") + table);
        Module::TearDown();
    }
    /// Opens the case editor, goes to the next case and leaves by a slot.
    void edit(const char* leave) {
        bool handled = false;
        whenOpen([&](QDialog& editor) {
            QMetaObject::invokeMethod(&editor, "ToolButton_NextRec_clicked");
            EXPECT_FALSE(hasBranch("青龙"));
            QMetaObject::invokeMethod(&editor, leave);
        });
        EXPECT_TRUE(module->ProcessDynMenuInterface("RlyCalCalAction", handled));
        EXPECT_TRUE(handled);
    }
};

TEST_F(ModuleCases, TheCaseThatTheEditorLeavesIsInHandWithItsNetwork) {
    QStringList told;
    QObject::connect(&caseCombo, &CComboBoxCaseNo::caseNameChanged, [&](const QString& name) { told << name; });
    QObject::connect(&caseCombo, &CComboBoxCaseNo::itemsChanged, [&] { told << "items"; });
    edit("Button_OK_clicked");
    EXPECT_THAT(told, ElementsAre("停运", "items"));
    EXPECT_EQ(module->GetCase_No(), 2);
    EXPECT_EQ(caseCombo.currentText(), "停运");
    EXPECT_FALSE(hasBranch("青龙"));
    EXPECT_THAT(window.flags, ElementsAre(4, 0x2A));
    window.flags.clear();
    select("停运");
    EXPECT_THAT(window.flags, testing::IsEmpty());
    EXPECT_THAT(errors, testing::IsEmpty());
}

TEST_F(ModuleCases, ACancelledEditorGivesTheNetworkBack) {
    edit("Button_Cancel_clicked");
    EXPECT_EQ(module->GetCase_No(), 1);
    EXPECT_TRUE(hasBranch("青龙"));
    EXPECT_THAT(window.flags, testing::IsEmpty());
}

TEST_F(ModuleCases, LabelsAreDrawnAnewAfterSettingsWereSaved) {
    bool handled = false;
    whenOpen([](QDialog& editor) {
        CMorvaneObject::iRlyDspFlg = 1;
        editor.reject();
    });
    module->ProcessDynMenuInterface("RlyCalCalAction", handled);
    EXPECT_THAT(window.flags, ElementsAre(4));
    const QString file = project->directory + "RTDB.nm";
    ASSERT_TRUE(QFile::rename(file, file + ".away"));
    handled = false;
    EXPECT_FALSE(module->ProcessDynMenuInterface("RlyCalCalAction", handled));
    ASSERT_TRUE(QFile::rename(file + ".away", file));
    EXPECT_FALSE(handled);
    EXPECT_THAT(errors, ElementsAre("读 RTDB.nm 失败"));
}

TEST_F(Module, ForgetsTheCaseWhoseNameIsGone) {
    addCase(1, "基础", 0, -1, "基础方案");
    load();
    select("基础");
    module->Refreshfdb("没有这个作业");
    EXPECT_EQ(module->GetCase_No(), -1);
    EXPECT_EQ(module->caseNo, -1);
    EXPECT_THAT(errors, testing::IsEmpty());
    EXPECT_EQ(module->GetCase_NoByCase_Name("没有这个作业"), 0);
    EXPECT_EQ(module->GetCase_Name(9), "");
    window.flags.clear();
    select("基础");  // its source counts as new again
    EXPECT_THAT(window.flags, ElementsAre(0x2A, 4));
}

TEST_F(Module, KeepsTheCaseWhenTheRealTimeNameCannotBeRead) {
    addCase(1, "基础", 0, -1, "基础方案");
    addCase(2, "停运", 0, -1, "青龙线停运");
    load();
    select("基础");
    const QString file = project->directory + "RTDB.nm";
    ASSERT_TRUE(QFile::rename(file, file + ".away"));
    select("停运");
    ASSERT_TRUE(QFile::rename(file + ".away", file));
    EXPECT_THAT(errors, ElementsAre("读 RTDB.nm 失败"));
    EXPECT_EQ(module->GetCase_No(), 1);
    EXPECT_TRUE(hasBranch("青龙"));
}

TEST_F(Module, TellsAHalfSwitchedNetworkAndBringsItInAtTheNextTry) {
    addCase(1, "基础", 0, -1, "基础方案");
    addCase(4, "潮流", 1, 1, " ");
    load();
    select("基础");
    exec("RENAME TABLE L3_1 TO Away");
    select("潮流");
    exec("RENAME TABLE Away TO L3_1");
    EXPECT_THAT(errors, testing::Contains(Holds("网络不完整")));
    EXPECT_EQ(module->GetCase_No(), -1);
    errors.clear();
    select("潮流");
    EXPECT_EQ(module->GetCase_No(), 4);
    EXPECT_TRUE(hasBranch("青龙"));
    EXPECT_THAT(errors, testing::IsEmpty());
}

TEST_F(Module, KeepsTheShownCaseWhenTheListIsFilledAnew) {
    addCase(1, "甲", 0, -1, "基础方案");
    addCase(2, "乙", 0, -1, "基础方案");
    load();
    caseCombo.setCurrentText("乙");
    addCase(3, "丙", 0, -1, "基础方案");
    module->InitComboBox_Case();
    EXPECT_EQ(caseCombo.count(), 3);
    EXPECT_EQ(caseCombo.currentText(), "乙");
}

TEST_F(Module, WorksWithoutTheHostsToolbar) {
    CMorvaneObject bare(realTime.get());
    EXPECT_TRUE(bare.InitCalcModule(nullptr, project->directory, home.path(), nullptr));
    bare.InitDynMenuStatus();
    bare.SetCase_No(1);
    EXPECT_FALSE(bare.isEditing());
    EXPECT_TRUE(bare.CloseCalcModule());
    EXPECT_EQ(bare.GetCase_No(), -1);
}

}  // namespace
