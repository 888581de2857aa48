#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlDatabase>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "platform/host/BaseTables.h"
#include "platform/host/ui/WinDlgCalBranchChoose.h"
#include "platform/host/ui/WinDlgCalBusChoose.h"
#include "platform/host/ui/WinDlgCalEleTerm1Choose.h"
#include "tests/gui/Screenshot.h"
#include "tests/host/HostFixture.h"
#include "tests/host/SampleNetwork.h"

namespace {

const QList<QString> kBranchTables{"CDB_ACLINE", "CDB_TRANS_2WBAK", "CDB_TRANS_3WBAK"};

class Pickers : public HostFixture {
  protected:
    void SetUp() override {
        HostFixture::SetUp();
        ASSERT_TRUE(host::createBaseTables());
    }
    /// What the user does in the dialog that opens next.
    static void then(const std::function<void(QDialog*)>& act) {
        QTimer::singleShot(0, [act] { act(qobject_cast<QDialog*>(QApplication::activeModalWidget())); });
    }
    static QStringList names(const QVector<host::PickRow>& rows) {
        QStringList found;
        for (const host::PickRow& row : rows) found << row.name + ':' + row.i + '>' + row.j;
        return found;
    }
    static QAbstractItemModel* model(QDialog* dialog) {
        return dialog->findChild<QTableView*>("tableView_Element")->model();
    }
    QSqlDatabase database() { return QSqlDatabase::database(); }
};

class SamplePickers : public Pickers {
  protected:
    void SetUp() override {
        Pickers::SetUp();
        ASSERT_TRUE(host::storeNetwork(sample::network()));
    }
};

QString q(const std::string& text) { return QString::fromStdString(text); }

}  // namespace

TEST_F(SamplePickers, ListBranchesByStationAndLevelWithARowForEachWinding) {
    const auto rows = host::branchRows({}, kBranchTables);
    const QStringList found = names(rows);
    EXPECT_EQ(found.filter(q(sample::kThree)),
              (QStringList{q(sample::kThree + ":" + sample::kStar + ">" + sample::kBarA),
                           q(sample::kThree + ":" + sample::kStar + ">" + sample::kMiddleNode),
                           q(sample::kThree + ":" + sample::kStar + ">" + sample::kLowNode)}));
    EXPECT_EQ(found.filter(q(sample::kShifter)).size(), 0) << "phase shifters have a table of their own";
    ASSERT_EQ(rows.size(), 6);
    QMap<QString, QString> places;
    for (const host::PickRow& row : rows) places[row.name] = row.level + row.station;
    EXPECT_EQ(places[q(sample::kTransformer)], "110/10白水厂");
    EXPECT_EQ(places[q(sample::kLine2)], "110青'山变 - 白水厂");
    EXPECT_EQ(rows.first().station, "白水厂");
    EXPECT_EQ(host::branchRows({}, {"CDB_SHIFT", "CDB_BREAKERBAK", "CDB_NOSUCHBAK"}).size(), 2);
    EXPECT_TRUE(host::branchRows({}, {"CDB_NOSUCHBAK"}).isEmpty());
    EXPECT_TRUE(messages.isEmpty()) << "a table that is not there is no error";
}

TEST_F(Pickers, CalculationTablesListTheKindsAskedFor) {
    const auto add = [](const char* table, int number, const char* name, int type) {
        return sql::Query().exec(QString("INSERT INTO ") + table +
                                     " (ID_Name,I_Name,J_Name,ID_No,Valid,NType) VALUES"
                                     " (?,'A','B',?,1,?)",
                                 {name, number, type});
    };
    ASSERT_TRUE(add("L2_0", 1, "线", 1) && add("L2_0", 2, "电容", 3) && add("L3_0", 3, "双", 1) &&
                add("L3_0", 4, "三", 31) && add("L3_0", 5, "三", 33));
    const QList<QString> both{"L2_0", "L3_0"};
    EXPECT_EQ(names(host::branchRows({}, both, {6})), QStringList("线:A>B"));
    EXPECT_EQ(host::branchRows({}, both, {6, 10, 12}).size(), 4);
    EXPECT_EQ(host::branchRows({}, both).size(), 4);
    EXPECT_EQ(names(host::branchRows({}, both, {10})), QStringList("双:A>B"));
}

TEST_F(SamplePickers, TypingFiltersAndEnterTakes) {
    QSqlDatabase connection = database();
    WinDlgCalBranchChoose picker(1, &connection, kBranchTables);
    then([](QDialog* dialog) {
        auto* line = dialog->findChild<QLineEdit*>("lineEdit_Filter");
        takeScreenshot(*dialog, "branch_picker");
        EXPECT_EQ(model(dialog)->rowCount(), 6);
        line->setText("e?:1 青'山");
        EXPECT_EQ(model(dialog)->rowCount(), 1) << "words anywhere in the row, without case";
        line->setText("三绕组");
        EXPECT_EQ(model(dialog)->rowCount(), 3);
        QTest::keyClick(line, Qt::Key_Down);
        QTest::keyClick(line, Qt::Key_Return);
    });
    picker.SetLFCase_No(0);
    EXPECT_EQ(picker.ChooseBranch("", "", ""), 0);
    EXPECT_EQ(picker.ElementName + picker.INodeName + picker.JNodeName,
              q(sample::kThree + sample::kStar + sample::kMiddleNode));

    then([](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    EXPECT_NE(picker.ChooseBranch("", "", ""), 0);
    EXPECT_EQ(picker.ElementName + picker.INodeName + picker.JNodeName, "") << "nothing of the choice before";

    then([](QDialog* dialog) { dialog->findChild<QLineEdit*>()->setText("没有"); });
    QTimer::singleShot(20, [] {
        QDialog* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        EXPECT_FALSE(dialog->findChild<QPushButton*>("pushButton_Ensure")->isEnabled());
        QTest::keyClick(dialog->findChild<QLineEdit*>(), Qt::Key_Return);
        EXPECT_TRUE(dialog->isVisible()) << "nothing to take";
        dialog->reject();
    });
    EXPECT_NE(picker.ChooseBranch("", "", ""), 0);
}

TEST_F(SamplePickers, BranchGivenIsCurrentAtFirst) {
    QSqlDatabase connection = database();
    WinDlgCalBranchChoose picker(1, &connection, kBranchTables);
    then([](QDialog* dialog) {
        QTest::mouseClick(dialog->findChild<QPushButton*>("pushButton_Ensure"), Qt::LeftButton);
    });
    EXPECT_EQ(picker.ChooseBranch(q(sample::kThree), q(sample::kStar), q(sample::kLowNode)), 0);
    EXPECT_EQ(picker.JNodeName, q(sample::kLowNode));
}

TEST_F(SamplePickers, BusAndOneEndedElements) {
    QSqlDatabase connection = database();
    WinDlgCalBusChoose bus(0, 0, &connection, q(sample::kBarB), false);
    EXPECT_EQ(bus.GetName(), "") << "nothing was chosen yet";
    then([](QDialog* dialog) {
        takeScreenshot(*dialog, "bus_picker");
        auto* view = dialog->findChild<QTableView*>();
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(view->currentIndex()).center());
        if (dialog->isVisible()) QTest::keyClick(view, Qt::Key_Return);
    });
    EXPECT_EQ(bus.exec(), QDialog::Accepted);
    EXPECT_EQ(bus.GetName(), q(sample::kBarB));
    EXPECT_LT(host::busRows({}, true).size(), host::busRows({}, false).size());
    for (const QString table : {"CDB_PCAPREA", "CDB_PCAPREABAK"}) {
        WinDlgCalEleTerm1Choose shunt(&connection, table, "ID_Name", q(sample::kReactor));
        then([](QDialog* dialog) {
            takeScreenshot(*dialog, "one_ended_picker");
            EXPECT_EQ(model(dialog)->rowCount(), 2);
            QTest::keyClick(dialog->findChild<QTableView*>(), Qt::Key_Return);
        });
        EXPECT_EQ(shunt.exec(), QDialog::Accepted);
        EXPECT_EQ(shunt.GetName() + shunt.GetNodeName(), q(sample::kReactor + sample::kBarB));
    }
}

TEST_F(Pickers, NineThousandBranchesOpenAndFilterAtOnce) {
    QVector<QVariantList> nodes, lines;
    for (int i = 0; i < 4500; ++i) nodes << QVariantList{QString("N%1").arg(i), QString("站%1").arg(i / 7), 220};
    for (int i = 0; i < 9000; ++i)
        lines << QVariantList{QString("L%1").arg(i), QString("N%1").arg(i % 4500), QString("N%1").arg(i * 7 % 4500), i};
    ASSERT_TRUE(sql::insertRows({}, "CDB_NODEBAK", {"Node_Name", "PS_Name", "Base_kV"}, nodes) &&
                sql::insertRows({}, "CDB_ACLINEBAK", {"ID_Name", "I_Name", "J_Name", "Order_No"}, lines));
    QSqlDatabase connection = database();
    WinDlgCalBranchChoose picker(1, &connection, kBranchTables);
    QElapsedTimer timer;
    timer.start();
    qint64 opened = 0, filtered = 0;
    then([&](QDialog* dialog) {
        opened = timer.restart();
        dialog->findChild<QLineEdit*>()->setText("L123");
        filtered = timer.elapsed();
        EXPECT_EQ(model(dialog)->rowCount(), 11);
        dialog->reject();
    });
    picker.ChooseBranch("", "", "");
    RecordProperty("opened_ms", static_cast<int>(opened));
    RecordProperty("filtered_ms", static_cast<int>(filtered));
    std::cout << "opened " << opened << " ms, filtered " << filtered << " ms\n";
    EXPECT_LT(opened, 1500);
    EXPECT_LT(filtered, 300);
}
