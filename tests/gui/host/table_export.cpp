#include "platform/host/ui/TableExport.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <zip.h>

#include <QFile>
#include <QHeaderView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <clocale>
#include <csignal>
#include <pugixml.hpp>

#include "platform/import/CsvTable.h"

namespace {

/// A table whose columns stand in another order than they are numbered, with a hidden column and a hidden row.
class TableExport : public testing::Test {
  protected:
    void SetUp() override {
        table.setHorizontalHeaderLabels({"名称", "隐藏", "数值, A", "说明"});
        const QVariantList rows[] = {
            {"线路\"1\"", "x", 0.1, "=1+1"}, {"第二行", "x", 1, "-"}, {"三\n四", "x", -2.5e-7, "+5 (+2%)"}};
        for (int row = 0; row < 3; ++row)
            for (int column = 0; column < 4; ++column) put(row, column, rows[row][column]);
        table.setColumnHidden(1, true);
        table.setRowHidden(1, true);
        table.horizontalHeader()->moveSection(2, 0);
        table.setColumnWidth(2, 150);
    }
    void put(int row, int column, const QVariant& value) {
        auto* item = new QTableWidgetItem(value.toString());
        if (value.typeId() == QMetaType::Double) item->setData(host::ExportRole, value);
        table.setItem(row, column, item);
    }
    [[nodiscard]] QString path(const char* name) const { return folder.filePath(name); }
    static QByteArray content(const QString& file) {
        QFile in(file);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("absent");
    }
    QTableWidget table{3, 4};
    QTemporaryDir folder;
    QString error;
};

/// A part of a workbook, read as any other program reads it.
pugi::xml_document workbookPart(const QString& file, const char* name) {
    pugi::xml_document document;
    zip_t* book = zip_open(QFile::encodeName(file).constData(), ZIP_RDONLY, nullptr);
    zip_file_t* part = book ? zip_fopen(book, name, 0) : nullptr;
    std::string text(part ? 100000 : 0, ' ');
    if (part) text.resize(size_t(std::max<zip_int64_t>(0, zip_fread(part, text.data(), text.size()))));
    if (part) zip_fclose(part);
    if (book) zip_discard(book);
    EXPECT_TRUE(document.load_buffer(text.data(), text.size())) << name;
    return document;
}

/// Cells as "A1=text", numbers as "A1:number", bold ones with a star.
std::string cellsOf(const QString& file) {
    const pugi::xml_document strings = workbookPart(file, "xl/sharedStrings.xml");
    const pugi::xml_document sheet = workbookPart(file, "xl/worksheets/sheet1.xml");
    std::vector<std::string> texts;
    for (const pugi::xml_node text : strings.child("sst").children("si"))
        texts.emplace_back(text.child("t").child_value());
    std::string cells;
    for (const pugi::xml_node row : sheet.child("worksheet").child("sheetData").children("row"))
        for (const pugi::xml_node cell : row.children("c")) {
            const std::string value = cell.child("v").child_value();
            const bool isText = std::string(cell.attribute("t").value()) == "s";
            cells += cell.attribute("r").value() + std::string(cell.attribute("s").as_int() > 0 ? "*" : "") +
                     (isText ? "=" + texts.at(std::stoul(value)) : ":" + value) + " ";
        }
    return cells;
}

}  // namespace

TEST_F(TableExport, CsvHasWhatIsShownQuotedAndWithoutFormulas) {
    ASSERT_TRUE(host::writeCsv(table, path("a.csv"), &error)) << error.toStdString();
    EXPECT_EQ(content(path("a.csv")),
              "\xEF\xBB\xBF\"数值, A\",名称,说明\r\n0.1,\"线路\"\"1\"\"\",'=1+1\r\n-2.5e-07,\"三\n四\",+5 (+2%)\r\n");
    const import::CsvTable read = import::parseCsv(content(path("a.csv")).toStdString(), "a.csv");
    EXPECT_EQ(read.records.at(1).cells.at(1), "三\n四");
    EXPECT_EQ(host::shownText(table).toStdString(),
              "数值, A\t名称\t说明\n0.1\t线路\"1\"\t=1+1\n-2.5e-07\t\"三\n四\"\t+5 (+2%)");
}

TEST_F(TableExport, WorkbooksHaveNumbersHeadsAndFilters) {
    for (const char* locale : {"C", "de_DE.UTF-8"}) {  // with a comma for decimals where it is installed
        std::setlocale(LC_NUMERIC, locale);
        ASSERT_TRUE(host::writeXlsx(table, "定值", path("a.xlsx"), &error)) << error.toStdString();
        std::setlocale(LC_NUMERIC, "C");
        EXPECT_EQ(cellsOf(path("a.xlsx")),
                  "A1*=数值, A B1*=名称 C1*=说明 A2:0.1 B2=线路\"1\" C2==1+1 A3:-2.5E-07 B3=三\n四 C3=+5 (+2%) ");
    }
    const pugi::xml_document sheet = workbookPart(path("a.xlsx"), "xl/worksheets/sheet1.xml");
    const pugi::xml_node root = sheet.child("worksheet");
    EXPECT_STREQ(root.child("autoFilter").attribute("ref").value(), "A1:C3");
    const pugi::xml_node pane = root.child("sheetViews").child("sheetView").child("pane");
    EXPECT_STREQ(pane.attribute("state").value(), "frozen");
    EXPECT_EQ(pane.attribute("ySplit").as_int(), 1);
    EXPECT_NEAR(root.child("cols").child("col").attribute("width").as_double(), 150 / 7.0, 1);
    const pugi::xml_document book = workbookPart(path("a.xlsx"), "xl/workbook.xml");
    EXPECT_STREQ(book.child("workbook").child("sheets").child("sheet").attribute("name").value(), "定值");
}

TEST_F(TableExport, ATableWithoutRowsGivesItsHeads) {
    table.setRowCount(0);
    ASSERT_TRUE(host::writeCsv(table, path("a.csv"), &error) && host::writeXlsx(table, "t", path("a.xlsx"), &error));
    EXPECT_EQ(content(path("a.csv")), "\xEF\xBB\xBF\"数值, A\",名称,说明\r\n");
    EXPECT_EQ(cellsOf(path("a.xlsx")), "A1*=数值, A B1*=名称 C1*=说明 ");
}

TEST_F(TableExport, AFailingWriteNamesTheFileAndLeavesTheOldOne) {
    using Write = bool (*)(const QTableView&, const QString&, QString*);
    const auto xlsx = [](const QTableView& shown, const QString& file, QString* why) {
        return host::writeXlsx(shown, "t", file, why);
    };
    for (const Write write : {Write(host::writeCsv), Write(xlsx)}) {
        EXPECT_FALSE(write(table, path("absent/a"), &error));
        EXPECT_TRUE(error.contains(path("absent/a"))) << error.toStdString();
        ASSERT_TRUE(host::writeCsv(table, path("old"), &error));
        const QByteArray before = content(path("old"));
        for (int row = 0; row < 3; ++row) put(row, 3, QString(20000, QChar(0x4e00 + row)));
        // a file that cannot grow, as on a full disk
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit small{4096, limit.rlim_max};
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &small);
        EXPECT_FALSE(write(table, path("old"), &error));
        setrlimit(RLIMIT_FSIZE, &limit);
        std::signal(SIGXFSZ, handler);
        EXPECT_TRUE(error.contains(path("old"))) << error.toStdString();
        EXPECT_EQ(content(path("old")), before);
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"old"}) << "nothing half written is left";
        SetUp();
    }
}
