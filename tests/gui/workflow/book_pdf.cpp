#include <QProcess>
#include <QStandardPaths>

#include "programs/reports/ui/BookExport.h"
#include "tests/reports/HandMadeCase.h"

namespace {

class PdfBook : public HandMadeCase {
  protected:
    [[nodiscard]] QString pdf() const {
        const QString pictures = qEnvironmentVariable("MORVANE_SCREENSHOTS");
        return (pictures.isEmpty() ? folder.path() : pictures) + "/book.pdf";
    }
    [[nodiscard]] QByteArray bytes() const {
        QFile in(pdf());
        EXPECT_TRUE(in.open(QIODevice::ReadOnly));
        return in.readAll();
    }
};

TEST_F(PdfBook, HasPagesAndItsOwnFonts) {
    ASSERT_TRUE(exportBookPdf(request(7, 3), pdf()));
    const QByteArray book = bytes();
    EXPECT_TRUE(book.startsWith("%PDF-"));
    EXPECT_GE(book.count("/Type /Page\n"), 3);
    EXPECT_GE(book.count("/FontFile"), 1);
    const QString reader = QStandardPaths::findExecutable("pdftotext");
    if (reader.isEmpty()) GTEST_SKIP() << "pdftotext is not installed, the text of the book is not read back";
    QProcess process;
    process.start(reader, {"-layout", pdf(), "-"});
    ASSERT_TRUE(process.waitForFinished());
    const QString text =
        QString::fromUtf8(process.readAllStandardOutput()).normalized(QString::NormalizationForm_KC).remove(' ');
    for (const char* words : {"继电保护整定计算书", "第1", "三相短路接地", "参量值为0,没有灵敏度", "2段"})
        EXPECT_TRUE(text.contains(words)) << words << " not in\n" << text.toStdString();
    EXPECT_EQ(text.count('\f'), book.count("/Type /Page\n"));
}

TEST_F(PdfBook, ThatCannotBeWrittenIsTold) {
    EXPECT_FALSE(exportBookPdf(request(7, 3), folder.path() + "/没有的文件夹/book.pdf"));
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors[0].startsWith("不能写文件 ")) << errors[0].toStdString();
    EXPECT_FALSE(exportBookPdf(request(8, 3), pdf()));
}

}  // namespace
