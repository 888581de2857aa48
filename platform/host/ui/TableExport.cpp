#include "platform/host/ui/TableExport.h"

#include <locale.h>
#include <xlsxwriter.h>

#include <QFile>
#include <QHeaderView>
#include <QSaveFile>
#include <QTableView>
#include <QTemporaryDir>
#include <cmath>

#include "platform/host/Text.h"
#include "platform/host/ui/TableHabits.h"
#include "platform/import/CsvTable.h"

namespace host {

namespace {

struct ShownTable {
    QVector<int> columns;  ///< from left to right
    QVector<int> rows;
    const QTableView& table;

    explicit ShownTable(const QTableView& shown) : table(shown) {
        const QHeaderView* header = table.horizontalHeader();
        for (int at = 0; at < header->count(); ++at)
            if (!header->isSectionHidden(header->logicalIndex(at))) columns << header->logicalIndex(at);
        for (int row = 0; row < table.model()->rowCount(); ++row)
            if (!table.isRowHidden(row)) rows << row;
    }
    [[nodiscard]] QVariant cell(int row, int column) const {
        const QModelIndex at = table.model()->index(row, column);
        const QVariant value = at.data(ExportRole);
        return value.isValid() ? value : at.data();
    }
    [[nodiscard]] QString head(int column) const {
        return table.model()->headerData(column, Qt::Horizontal).toString();
    }
    /// Heads and rows as texts.
    template <class Take>
    void eachLine(Take take) const {
        QStringList cells;
        for (const int column : columns) cells << head(column);
        take(cells);
        for (const int row : rows) {
            cells.clear();
            for (const int column : columns) cells << textOf(cell(row, column));
            take(cells);
        }
    }
    static QString textOf(const QVariant& value) {
        return value.typeId() == QMetaType::Double
                   ? QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest)
                   : value.toString();
    }
};

/// A text of nothing but figures calls no function and reads no cell, whatever it begins with.
QString withoutFormula(const QString& text) {
    static const QString figures = QStringLiteral("0123456789.,+-%() ");
    if (text.isEmpty() || !QStringLiteral("=+-@\t\r").contains(text[0])) return text;
    const bool harmless = std::all_of(text.begin(), text.end(), [](QChar c) { return figures.contains(c); });
    bool isNumber = false;
    text.toDouble(&isNumber);
    return harmless || isNumber ? text : '\'' + text;
}

QByteArray csvOf(const QTableView& table) {
    std::string text = "\xEF\xBB\xBF";
    ShownTable(table).eachLine([&](const QStringList& cells) {
        std::vector<std::string> fields;
        for (const QString& cell : cells) fields.push_back(withoutFormula(cell).toStdString());
        import::appendCsv(text, fields);
        text.insert(text.size() - 1, 1, '\r');
    });
    return QByteArray::fromStdString(text);
}

bool store(const QString& file, const QByteArray& content, QString* error) {
    QSaveFile out(file);
    if (out.open(QIODevice::WriteOnly) && out.write(content) == content.size() && out.commit()) return true;
    *error = Text::tr("不能写文件%1：%2").arg(file, out.errorString());
    return false;
}

/// The library prints numbers by the locale of the thread.
class PointForDecimals {
  public:
    PointForDecimals() : point_(newlocale(LC_NUMERIC_MASK, "C", nullptr)), before_(uselocale(point_)) {}
    ~PointForDecimals() {
        uselocale(before_);
        freelocale(point_);
    }
    PointForDecimals(const PointForDecimals&) = delete;
    PointForDecimals& operator=(const PointForDecimals&) = delete;

  private:
    locale_t point_, before_;
};

lxw_error writeCell(lxw_worksheet* sheet, int row, int column, const QVariant& value) {
    const auto at = lxw_col_t(column);
    if (value.typeId() == QMetaType::Double && std::isfinite(value.toDouble()))
        return worksheet_write_number(sheet, lxw_row_t(row), at, value.toDouble(), nullptr);
    const QByteArray text = ShownTable::textOf(value).toUtf8();
    return text.isEmpty() ? LXW_NO_ERROR : worksheet_write_string(sheet, lxw_row_t(row), at, text.constData(), nullptr);
}

lxw_error fillSheet(lxw_worksheet* sheet, lxw_format* bold, const ShownTable& shown) {
    lxw_error failed = LXW_NO_ERROR;
    const auto keep = [&failed](lxw_error error) { failed = failed ? failed : error; };
    for (int at = 0; at < shown.columns.size(); ++at) {
        const auto column = lxw_col_t(at);
        const QByteArray head = shown.head(shown.columns[at]).toUtf8();
        keep(worksheet_write_string(sheet, 0, column, head.constData(), bold));
        const int width = shown.table.columnWidth(shown.columns[at]);
        keep(worksheet_set_column_pixels(sheet, column, column, uint32_t(width), nullptr));
        for (int row = 0; row < shown.rows.size(); ++row)
            keep(writeCell(sheet, row + 1, at, shown.cell(shown.rows[row], shown.columns[at])));
    }
    worksheet_freeze_panes(sheet, 1, 0);
    if (!shown.columns.isEmpty())
        keep(worksheet_autofilter(sheet, 0, 0, lxw_row_t(shown.rows.size()), lxw_col_t(shown.columns.size() - 1)));
    return failed;
}

/// Into a file of the system's temporary folder, since the library leaves half files.
lxw_error buildWorkbook(const QTableView& table, const QString& sheet, const QString& file) {
    const PointForDecimals locale;
    lxw_workbook* book = workbook_new(QFile::encodeName(file).constData());
    if (!book) return LXW_ERROR_MEMORY_MALLOC_FAILED;
    lxw_format* bold = workbook_add_format(book);
    format_set_bold(bold);
    lxw_worksheet* page = workbook_add_worksheet(book, sheet.toUtf8().constData());
    const lxw_error filled = page ? fillSheet(page, bold, ShownTable(table)) : LXW_ERROR_PARAMETER_VALIDATION;
    const lxw_error closed = workbook_close(book);
    return filled ? filled : closed;
}

}  // namespace

QString shownText(const QTableView& table) {
    QStringList lines;
    ShownTable(table).eachLine([&](const QStringList& cells) { lines << tabbedLine(cells); });
    return lines.join('\n');
}

bool writeCsv(const QTableView& table, const QString& file, QString* error) { return store(file, csvOf(table), error); }

bool writeXlsx(const QTableView& table, const QString& sheet, const QString& file, QString* error) {
    const QTemporaryDir folder;
    QFile made(folder.filePath("table.xlsx"));
    const lxw_error failed = buildWorkbook(table, sheet, made.fileName());
    if (!failed && made.open(QIODevice::ReadOnly)) return store(file, made.readAll(), error);
    *error = Text::tr("不能写文件%1：%2").arg(file, failed ? lxw_strerror(failed) : made.errorString());
    return false;
}

}  // namespace host
