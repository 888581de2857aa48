#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QPushButton>
#include <QSqlDatabase>
#include <QSqlField>
#include <QSqlIndex>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include "platform/recordform/CDataForm.h"
#include "platform/recordform/CSqlDialog.h"
#include "platform/recordform/CSqlDialogBtns.h"
#include "platform/recordform/CSqlWidget.h"
#include "platform/recordform/RecordList.h"
#include "tests/gui/Screenshot.h"
#include "tests/host/HostFixture.h"

using namespace sql_dlg;

namespace {

/// A dialog over a table that tests may throw away; writes down the hooks with the name that stands in the form then.
class TryDialog : public CSqlDialog {
  public:
    explicit TryDialog(QSqlDatabase* database) : CSqlDialog(database, nullptr, "TryDialog") {
        name = new CSqlLineEditString(this, "lineEdit_Name");
        note = new CSqlLineEditString(this, "lineEdit_Dsc");
        valid = new CSqlCheckBox(this, "checkBox_Valid");
        side = new CSqlRadioBtnGroup(this, "radioBtnGroup_Side");
        label = new CSqlLabel(this, "textLabel_No");
        for (int value : {1, 2}) {
            radios << new QRadioButton(QString(value == 1 ? "I" : "J"), side);
            side->AddRadioBtn(radios.last(), QString::number(value));
        }
        auto* radioColumn = new QVBoxLayout(side);
        for (QRadioButton* radio : radios) radioColumn->addWidget(radio);
        valid->setText("有效");
        for (QWidget* widget : {static_cast<QWidget*>(name), static_cast<QWidget*>(note), static_cast<QWidget*>(valid),
                                static_cast<QWidget*>(side), static_cast<QWidget*>(label)})
            body()->addWidget(widget);
        buttons = new CSqlDialogBtns(this);
        form = new CDataForm("TRY", this, database);
        form->AddSqlWidget(name, "Name", FIELD_STRING, true);
        form->AddSqlWidget(note, "Note", FIELD_STRING, false);
        form->AddSqlWidget(valid, "Valid", FIELD_INT, false);
        form->AddSqlWidget(side, "Side", FIELD_INT, true);
        form->AddSqlWidget(label, "No", FIELD_INT, true);
        buttons->SetDataForm(form);
        QSqlIndex sort;
        sort.append(QSqlField("Name"));
        form->Select("", sort);
        form->First();
        InitDlg();
    }
    void press(QToolButton* host::RecordButtons::*button) {
        hooks.clear();
        QTest::mouseClick(buttons->*button, Qt::LeftButton);
    }

    CSqlLineEditString *name, *note;
    CSqlCheckBox* valid;
    CSqlRadioBtnGroup* side;
    CSqlLabel* label;
    QList<QRadioButton*> radios;
    CSqlDialogBtns* buttons;
    CDataForm* form;
    QStringList hooks;
    bool allow = true;

  protected:
    bool before(const char* hook) {
        hooks << QString("before ") + hook + ' ' + name->text();
        return allow;
    }
    void after(const char* hook) { hooks << QString("after ") + hook + ' ' + name->text(); }
    bool BeforePrev() override { return before("prev"); }
    void AfterPrev() override { after("prev"); }
    bool BeforeNext() override { return before("next"); }
    void AfterNext() override { after("next"); }
    bool BeforeFirst() override { return before("first"); }
    void AfterFirst() override { after("first"); }
    bool BeforeLast() override { return before("last"); }
    void AfterLast() override { after("last"); }
    bool BeforeDelete() override { return before("delete"); }
    void AfterDelete() override { after("delete"); }
    bool BeforeInsert() override { return before("insert"); }
    void AfterInsert() override { after("insert"); }
    void CopyRecord() override { after("copy"); }
    void PasteRecord() override { after("paste"); }
    void RecoverRecord() override { after("recover"); }
};

using B = host::RecordButtons;

class RecordForm : public HostFixture {
  protected:
    void SetUp() override {
        HostFixture::SetUp();
        ASSERT_TRUE(
            sql::Query().exec("CREATE TABLE TRY (Name char(20) BINARY NOT NULL DEFAULT '',Note char(10) NOT"
                              " NULL DEFAULT '',Valid int NOT NULL DEFAULT 0,Side int NOT NULL DEFAULT 0,No int"
                              " NOT NULL DEFAULT 0,PRIMARY KEY(Name,Side,No))"));
    }
    void TearDown() override {
        database = {};
        HostFixture::TearDown();
    }
    static void addRows() {
        ASSERT_TRUE(sql::Query().exec("INSERT INTO TRY VALUES ('a','it''s',1,1,7),('b','\\\\',0,2,8),('c','',0,0,9)"));
    }
    static QString rows() {
        return sql::scalar({},
                           "SELECT GROUP_CONCAT(CONCAT_WS('/',Name,Note,Valid,Side,No) ORDER BY Name SEPARATOR ' ')"
                           " FROM TRY")
            .toString();
    }
    static bool hasCopy() { return !sql::scalar({}, "SHOW TABLES LIKE 'TRY\\_TEM'").isNull(); }
    const QString original = "a/it's/1/1/7 b/\\/0/2/8 c//0/0/9";
    QSqlDatabase database;
};

}  // namespace

TEST_F(RecordForm, MovesWriteTheRecordBetweenTheHooks) {
    addRows();
    TryDialog dialog(&database);
    takeScreenshot(dialog, "record_form");
    EXPECT_EQ(dialog.name->text() + dialog.note->text() + dialog.label->text(), "ait's7");
    EXPECT_TRUE(dialog.valid->isChecked() && dialog.radios[0]->isChecked());
    EXPECT_FALSE(dialog.buttons->PrevRec->isEnabled() || dialog.buttons->FirstRec->isEnabled());
    dialog.note->setText("电'流");
    dialog.radios[1]->setChecked(true);
    dialog.press(&B::NextRec);
    EXPECT_EQ(dialog.hooks, (QStringList{"before next a", "after next b"}));
    EXPECT_EQ(rows(), "a/电'流/1/2/7 b/\\/0/2/8 c//0/0/9");
    dialog.press(&B::LastRec);
    EXPECT_EQ(dialog.hooks.last(), "after last c");
    EXPECT_FALSE(dialog.radios[0]->isChecked() || dialog.radios[1]->isChecked()) << "a value of no button";
    EXPECT_FALSE(dialog.buttons->NextRec->isEnabled() || dialog.buttons->LastRec->isEnabled());
    dialog.press(&B::PrevRec);
    EXPECT_EQ(dialog.hooks, (QStringList{"before prev c", "after prev b"}));
    dialog.press(&B::FirstRec);
    EXPECT_EQ(dialog.hooks, (QStringList{"before first b", "after first a"}));
    dialog.allow = false;
    dialog.press(&B::NextRec);
    EXPECT_EQ(dialog.hooks, QStringList("before next a")) << "a hook that refuses keeps the record";
    EXPECT_EQ(dialog.form->At(), 0);
    EXPECT_TRUE(dialog.form->Seek({{"No", 9}}));
    EXPECT_EQ(dialog.name->text(), "c");
    EXPECT_FALSE(dialog.form->Seek({{"No", 10}}));
}

TEST_F(RecordForm, WhatCannotBeStoredKeepsTheRecordAndIsTold) {
    addRows();
    TryDialog dialog(&database);
    dialog.name->setText("b");
    dialog.radios[1]->setChecked(true);
    dialog.label->setText("8");
    messages.clear();
    dialog.press(&B::NextRec);
    EXPECT_EQ(dialog.form->At(), 0);
    EXPECT_THAT(messages.join(' ').toStdString(), testing::HasSubstr("记录已经存在"));
    for (const char* bad : {"", "   ", "*NEW_VALUE*", "ab\xF0\x9F\x98\x80"}) {
        messages.clear();
        dialog.name->setText(QString::fromUtf8(bad));
        dialog.press(&B::LastRec);
        EXPECT_EQ(dialog.form->At(), 0) << bad;
        EXPECT_FALSE(messages.isEmpty()) << bad;
    }
    EXPECT_EQ(rows(), original);
    dialog.name->clear();
    QTest::keyClicks(dialog.name, "x");
    QTest::sendKeyEvent(QTest::Click, dialog.name, Qt::Key_unknown, QString(QChar(0x0E01)), {});
    EXPECT_EQ(dialog.name->text(), "x") << "refused as it is typed";
    dialog.note->clear();
    QTest::keyClicks(dialog.note, "123456789012");
    EXPECT_EQ(dialog.note->text(), "1234567890");
    dialog.ToolButton_OK_clicked();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_FALSE(hasCopy());
}

TEST_F(RecordForm, ANewRecordIsStoredAndDeletedInTheOrderOfTheHooks) {
    TryDialog dialog(&database);
    EXPECT_FALSE(dialog.name->isEnabled() || dialog.radios[0]->isEnabled() || dialog.buttons->DeleteRec->isEnabled());
    dialog.press(&B::InsertRec);
    EXPECT_EQ(dialog.hooks, (QStringList{"before insert ", "after insert *NEW_VALUE*"}));
    EXPECT_TRUE(dialog.name->isEnabled() && dialog.radios[0]->isEnabled());
    dialog.press(&B::InsertRec);
    EXPECT_EQ(dialog.form->Count(), 1) << "a record without a name is not left";
    dialog.name->setText("z");
    dialog.radios[0]->setChecked(true);
    dialog.press(&B::InsertRec);
    EXPECT_EQ(dialog.hooks, (QStringList{"before insert z", "after insert *NEW_VALUE*"}));
    EXPECT_EQ(rows(), "*NEW_VALUE*//0/0/0 z//0/1/0");
    dialog.press(&B::DeleteRec);
    EXPECT_EQ(dialog.hooks, (QStringList{"before delete *NEW_VALUE*", "after delete z"}));
    dialog.press(&B::DeleteRec);
    EXPECT_EQ(dialog.hooks.last(), "after delete ");
    EXPECT_FALSE(dialog.name->isEnabled());
    EXPECT_EQ(rows(), "");
}

TEST_F(RecordForm, CopyPasteAndRecover) {
    addRows();
    TryDialog dialog(&database);
    EXPECT_FALSE(dialog.buttons->PasteRec->isEnabled());
    dialog.press(&B::CopyRec);
    EXPECT_EQ(dialog.hooks, QStringList("after copy a"));
    ASSERT_TRUE(dialog.buttons->PasteRec->isEnabled());
    dialog.press(&B::NextRec);
    dialog.press(&B::PasteRec);
    EXPECT_EQ(dialog.hooks, QStringList("after paste b")) << "the key is not pasted";
    EXPECT_EQ(dialog.note->text(), "it's");
    EXPECT_TRUE(dialog.valid->isChecked());
    dialog.press(&B::RecoverAll);
    EXPECT_EQ(dialog.hooks, QStringList("after recover b"));
    EXPECT_EQ(dialog.note->text(), "\\");
    EXPECT_FALSE(dialog.valid->isChecked());
}

TEST_F(RecordForm, EveryWayToCancelTakesTheTableBack) {
    addRows();
    for (int way = 0; way < 3; ++way) {
        TryDialog dialog(&database);
        dialog.show();
        ASSERT_TRUE(hasCopy());
        dialog.press(&B::DeleteRec);
        dialog.press(&B::InsertRec);
        dialog.name->setText("new");
        dialog.press(&B::FirstRec);
        ASSERT_NE(rows(), original);
        if (way == 0) dialog.close();
        if (way == 1) QTest::keyClick(&dialog, Qt::Key_Escape);
        if (way == 2) QTest::mouseClick(dialog.pushButton_Cancel, Qt::LeftButton);
        EXPECT_EQ(rows(), original) << way;
        EXPECT_FALSE(hasCopy() || dialog.isVisible());
    }
    ASSERT_TRUE(sql::Query().exec("DROP TABLE TRY"));
    TryDialog lost(&database);
    EXPECT_FALSE(lost.pushButton_OK->isEnabled() || lost.name->isEnabled()) << "nothing that could not be taken back";
}

TEST_F(RecordForm, TheListOfRecordsIsAMove) {
    addRows();
    TryDialog dialog(&database);
    QTimer::singleShot(0, [] {
        auto* list = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        takeScreenshot(*list, "record_list");
        auto* table = list->findChild<QAbstractItemView*>("table_Record");
        table->setCurrentIndex(table->model()->index(2, 0));
        QTest::keyClick(list, Qt::Key_Return);
    });
    dialog.press(&B::Browse);
    EXPECT_EQ(dialog.hooks, (QStringList{"before next a", "after next c"}));
    EXPECT_EQ(QString::fromUtf8(csvOf(*dialog.form).mid(3)).section("\r\n", 0, 1),
              "\"Name\",\"Note\",\"Valid\",\"Side\",\"No\"\r\n\"a\",\"it's\",\"1\",\"1\",\"7\"");
}
