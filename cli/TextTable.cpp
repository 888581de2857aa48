#include "cli/TextTable.h"

#include <algorithm>
#include <cstdio>

namespace cli {

namespace {

struct Range {
    uint first, last;
};
constexpr Range kWide[] = {{0x1100, 0x115F}, {0x2E80, 0xA4CF}, {0xAC00, 0xD7A3}, {0xF900, 0xFAFF},
                           {0xFE30, 0xFE6F}, {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x20000, 0x3FFFD}};

bool isWide(uint character) {
    return std::any_of(std::begin(kWide), std::end(kWide),
                       [&](const Range& range) { return character >= range.first && character <= range.last; });
}

}  // namespace

int displayWidth(const QString& text) {
    int width = 0;
    for (const uint character : text.toUcs4())
        width += QChar::category(character) == QChar::Mark_NonSpacing ? 0 : isWide(character) ? 2 : 1;
    return width;
}

TextTable::TextTable(QStringList header, QList<int> rightAligned)
    : header_(std::move(header)), right_(std::move(rightAligned)) {}

QString TextTable::line(const QStringList& cells, const QVector<int>& widths) const {
    QString text;
    for (int column = 0; column < cells.size(); ++column) {
        const QString fill(std::max(0, widths[column] - displayWidth(cells[column])), ' ');
        text += column > 0 ? "  " : "";
        text += right_.contains(column) ? fill + cells[column] : cells[column] + fill;
    }
    while (text.endsWith(' ')) text.chop(1);
    return text + "\n";
}

void TextTable::print() const {
    QVector<int> widths;
    for (int column = 0; column < header_.size(); ++column) {
        int width = displayWidth(header_[column]);
        for (const QStringList& row : rows_) width = std::max(width, displayWidth(row.value(column)));
        widths.append(width);
    }
    QString text = line(header_, widths);
    for (const QStringList& row : rows_) text += line(row, widths);
    cli::print(text);
}

void print(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
}

QString number(double value) { return QString::number(value, 'g', 6); }

}  // namespace cli
