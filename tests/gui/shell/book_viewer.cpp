#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>

#include "platform/sql/Sql.h"
#include "shell/Appearance.h"
#include "shell/viewer/BookPrint.h"
#include "shell/viewer/BookWindow.h"
#include "shell/viewer/CellGrid.h"
#include "tests/gui/Screenshot.h"

using shell::BookWindow;

namespace {

template <class Widget>
Widget& part(const QWidget& window, const char* name) {
    return *window.findChild<Widget*>(name);
}

/// Where a character of a line begins, in pixels from the first one.
qreal left(const QPlainTextEdit& edit, int line, int column) {
    const QTextLine laidOut = edit.document()->findBlockByNumber(line).layout()->lineAt(0);
    return laidOut.cursorToX(column) - laidOut.cursorToX(0);
}

const QString kBook =
    "定值计算书\n"
    "保护          原则                      定值\n"
    "青白I线       躲过本线路末端故障        Idz=1234.56\n"
    "φfh=30        √3×Ifh，t=t'I+dt          Zdz=12.50\n";

}  // namespace

class BookViewer : public testing::Test {
  protected:
    void write(const QByteArray& bytes) const {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }
    static QByteArray gbk(QString text) { return sql::toGbk(text.replace("\n", "\r\n")); }
    static bool waitFor(const std::function<bool()>& holds) {
        return QTest::qWaitFor([&] { return holds(); }, 5000);
    }

    QTemporaryDir folder;
    QString file = folder.filePath("CalRef.ROT");
};

TEST_F(BookViewer, ShowsFindsAndCopiesABook) {
    write(gbk(kBook));
    BookWindow window;
    window.show();
    window.open(file);
    takeScreenshot(window, "book");
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const auto& edit = part<QPlainTextEdit>(window, "plainTextEdit_Book");
    EXPECT_EQ(edit.toPlainText(), kBook);
    EXPECT_TRUE(edit.isReadOnly());
    EXPECT_EQ(window.windowTitle(), "CalRef.ROT");
    EXPECT_FALSE(part<QLabel>(window, "label_Trouble").isVisible());
    EXPECT_EQ(part<QLabel>(window, "label_Invalid").text(), "");

    QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
    auto& wanted = part<QLineEdit>(window, "lineEdit_Find");
    ASSERT_TRUE(wanted.isVisible());
    const auto& count = part<QLabel>(window, "label_Count");
    wanted.setText("DZ=");
    EXPECT_EQ(count.text(), "1 / 2") << "upper and lower case are the same";
    QTest::keyClick(&wanted, Qt::Key_Return);
    EXPECT_EQ(count.text(), "2 / 2");
    EXPECT_EQ(edit.textCursor().blockNumber(), 3);
    QTest::keyClick(&wanted, Qt::Key_Return);
    EXPECT_EQ(count.text(), "1 / 2") << "round the end";
    QTest::keyClick(&wanted, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(count.text(), "2 / 2");
    wanted.setText("青龙");
    EXPECT_EQ(count.text(), "没有");
    wanted.setText("青白I线");
    QTest::keyClick(&wanted, Qt::Key_Escape);
    EXPECT_FALSE(wanted.isVisible());
    const_cast<QPlainTextEdit&>(edit).copy();
    EXPECT_EQ(QApplication::clipboard()->text(), "青白I线");
}

TEST_F(BookViewer, ColumnsStandInCellsWhateverTheFontAndTheSize) {
    write(gbk(kBook));
    BookWindow window;
    window.show();
    window.open(file);
    const auto& edit = part<QPlainTextEdit>(window, "plainTextEdit_Book");
    for (const int steps : {0, 3, -2}) {
        window.zoom(steps);
        QApplication::processEvents();
        const qreal cell = QFontMetricsF(edit.font()).horizontalAdvance('x');
        EXPECT_NEAR(left(edit, 2, 10 + 1), 14 * cell, 0.5) << "behind 3 wide and 8 narrow characters";
        EXPECT_NEAR(left(edit, 3, 13), 14 * cell, 0.5) << "a Greek letter takes two cells";
    }
    QPlainTextEdit other;
    other.setFont(QFont("DejaVu Sans Mono", 11));
    other.setPlainText(kBook);
    const shell::CellFormat cells(other.document(), other.font());
    other.show();
    QApplication::processEvents();
    const qreal cell = QFontMetricsF(other.font()).horizontalAdvance('x');
    EXPECT_NEAR(left(other, 2, 11), 14 * cell, 0.5);
    EXPECT_NEAR(left(other, 3, 13), 14 * cell, 0.5);
}

TEST_F(BookViewer, BytesThatAreNoTextAreMarkedAndCounted) {
    write(QByteArray("ab\xb0 z\n\xc7\xe0 \xff\xff \xb0"));
    BookWindow window;
    window.show();
    window.open(file);
    EXPECT_EQ(part<QPlainTextEdit>(window, "plainTextEdit_Book").toPlainText(), "ab\uFFFD z\n青 \uFFFD\uFFFD \uFFFD");
    EXPECT_EQ(part<QLabel>(window, "label_Invalid").text(), "不是 GBK 编码的字符，显示为 �：4 处");
}

TEST_F(BookViewer, AFileThatComesChangesAndGoesIsFollowed) {
    BookWindow window;
    window.show();
    window.open(file);
    const auto& trouble = part<QLabel>(window, "label_Trouble");
    auto& edit = part<QPlainTextEdit>(window, "plainTextEdit_Book");
    EXPECT_TRUE(trouble.isVisible());
    EXPECT_EQ(trouble.text(), "不能读文件 " + file + "：文件不存在");
    EXPECT_FALSE(edit.isVisible());

    write(gbk(QString("甲行\n").repeated(500)));
    ASSERT_TRUE(waitFor([&] { return edit.isVisible(); }));
    EXPECT_FALSE(trouble.isVisible());
    edit.verticalScrollBar()->setValue(200);
    const QString aside = file + ".new";
    std::swap(file, const_cast<QString&>(aside));
    write(gbk(QString("乙行\n").repeated(500)));
    ASSERT_TRUE(QFile::remove(aside) && QFile::rename(file, aside));
    ASSERT_TRUE(waitFor([&] { return edit.toPlainText().startsWith("乙"); })) << "another file of the same name";
    EXPECT_EQ(edit.verticalScrollBar()->value(), 200);

    ASSERT_TRUE(QFile::remove(aside));
    ASSERT_TRUE(waitFor([&] { return trouble.isVisible(); }));
    EXPECT_TRUE(edit.toPlainText().startsWith("乙")) << "what was read stays";
    window.open(folder.path());
    EXPECT_TRUE(trouble.text().endsWith("这是一个文件夹"));
}

TEST_F(BookViewer, TenMegabytesOpenAndAreSearchedAtOnce) {
    for (const char* letter : {"L", "φ"}) {
        const QByteArray line =
            gbk("  青白I线 青山侧  一段  Kk=0.85  Idz=1234.56 A  灵敏度 1.523  躲过末端故障" + QString(letter) + "\n");
        write(line.repeated(10 * 1024 * 1024 / line.size()));
        BookWindow window;
        window.show();
        QElapsedTimer clock;
        clock.start();
        window.open(file);
        window.repaint();
        RecordProperty(std::string("shown_ms_") + letter, int(clock.elapsed()));
        QApplication::processEvents();
        RecordProperty(std::string("ready_ms_") + letter, int(clock.elapsed()));
        EXPECT_LT(clock.restart(), 4000);
        part<QLineEdit>(window, "lineEdit_Find").setText("Idz");
        RecordProperty(std::string("found_ms_") + letter, int(clock.elapsed()));
        EXPECT_LT(clock.elapsed(), 2000);
        EXPECT_GT(part<QLabel>(window, "label_Count").text().section(" / ", 1).toInt(), 100000);
    }
}

TEST_F(BookViewer, PrintsAllPagesOrSome) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setPageSize(QPageSize(QPageSize::A4));
    const auto pagesIn = [](const QString& pdf) {
        QFile in(pdf);
        return in.open(QIODevice::ReadOnly) ? int(in.readAll().count("/Type /Page\n")) : -1;
    };
    printer.setOutputFileName(folder.filePath("all.pdf"));
    const int pages = shell::printBook("CalRef.ROT", QString("青白I线 Idz=1234.56\n").repeated(200), printer);
    EXPECT_GT(pages, 2);
    EXPECT_EQ(pagesIn(folder.filePath("all.pdf")), pages);
    EXPECT_GT(shell::printBook("x", QString("长").repeated(200 * 100), printer), pages / 2) << "long lines go on";
    printer.setOutputFileName(folder.filePath("second.pdf"));
    printer.setFromTo(2, 2);
    EXPECT_EQ(shell::printBook("CalRef.ROT", QString("青白I线 Idz=1234.56\n").repeated(200), printer), pages);
    EXPECT_EQ(pagesIn(folder.filePath("second.pdf")), 1);
}

TEST_F(BookViewer, SpeaksEnglish) {
    write(gbk(kBook) + "\xb0");
    shell::applyLanguage(*qApp, "en");
    {
        BookWindow window;
        window.show();
        window.open(file);
        takeScreenshot(window, "book-en");
        EXPECT_EQ(part<QLabel>(window, "label_Invalid").text(), "Characters that are not in GBK, shown as �: 1");
        static const QRegularExpression chinese("[\\x{4E00}-\\x{9FFF}]");
        for (const QAction* menu : window.menuBar()->actions())
            for (const QAction* action : menu->menu()->actions())
                EXPECT_FALSE((menu->text() + action->text()).contains(chinese)) << action->text().toStdString();
        window.open(folder.filePath("none"));
        EXPECT_TRUE(part<QLabel>(window, "label_Trouble").text().endsWith("the file does not exist"));
    }
    shell::applyLanguage(*qApp, "zh");
}
