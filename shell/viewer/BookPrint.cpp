#include "shell/viewer/BookPrint.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPrinter>
#include <algorithm>

#include "shell/viewer/CellGrid.h"

namespace shell {

namespace {

constexpr qreal kPointSize = 9;

int cellsOf(QChar character) { return character.unicode() < 0x80 ? 1 : 2; }

/// The text in lines of at most so many cells.
QStringList foldedLines(const QString& text, int cells) {
    QStringList folded;
    for (const QString& line : text.split('\n')) {
        qsizetype from = 0;
        int used = 0;
        for (qsizetype at = 0; at < line.size(); ++at) {
            if (used + cellsOf(line[at]) > cells) {
                folded << line.mid(from, at - from);
                from = at;
                used = 0;
            }
            used += cellsOf(line[at]);
        }
        folded << line.mid(from);
    }
    while (folded.size() > 1 && folded.last().isEmpty()) folded.removeLast();
    return folded;
}

/// Pages of lines in cells, on the painter's device.
class Pages {
  public:
    Pages(QPainter& painter, const QRectF& paper, const QString& title, const QString& text)
        : painter_(painter), paper_(paper), title_(title), metrics_(painter.font(), painter.device()) {
        lines_ = foldedLines(text, std::max(2, int(paper.width() / cell())));
        perPage_ = std::max(1, int(paper.height() / metrics_.lineSpacing()) - 4);
    }
    [[nodiscard]] int count() const { return int((lines_.size() + perPage_ - 1) / perPage_); }

    void draw(int page) const {
        const qreal height = metrics_.lineSpacing();
        painter_.drawText(paper_, Qt::AlignTop | Qt::AlignHCenter, title_);
        painter_.drawText(
            paper_, Qt::AlignBottom | Qt::AlignHCenter,
            QCoreApplication::translate("shell::BookWindow", "第 %1 页，共 %2 页").arg(page + 1).arg(count()));
        const QStringList lines = lines_.mid(page * perPage_, perPage_);
        for (int row = 0; row < lines.size(); ++row)
            drawLine(lines[row], paper_.top() + (row + 2) * height + metrics_.ascent());
    }

  private:
    [[nodiscard]] qreal cell() const { return metrics_.horizontalAdvance('x'); }
    void drawLine(const QString& line, qreal y) const {
        qreal x = paper_.left();
        for (const QChar character : line) {
            if (character != ' ') painter_.drawText(QPointF(x, y), character);
            x += cellsOf(character) * cell();
        }
    }

    QPainter& painter_;
    QRectF paper_;
    QString title_;
    QFontMetricsF metrics_;
    QStringList lines_;
    int perPage_ = 1;
};

}  // namespace

int printBook(const QString& title, const QString& text, QPrinter& printer) {
    QPainter painter;
    if (!painter.begin(&printer)) return 0;
    painter.setFont(CellGrid::font(kPointSize));
    const QSizeF size = printer.pageRect(QPrinter::DevicePixel).size();
    const Pages pages(painter, QRectF(QPointF(), size), title, text);
    const int first = std::max(printer.fromPage(), 1);
    const int last = printer.toPage() > 0 ? std::min(printer.toPage(), pages.count()) : pages.count();
    for (int page = first; page <= last; ++page) {
        if (page > first) printer.newPage();
        pages.draw(page - 1);
    }
    return pages.count();
}

}  // namespace shell
