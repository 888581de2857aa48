#include "programs/reports/ui/BookLayout.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>
#include <cmath>

namespace {

constexpr double kNumberColumn = 0.08;  // of the width of the contents, for the page numbers

// What the text layout of the toolkit understands; it is black on white whatever the program's theme.
const char* const style = R"(
body { color: #000000; }
h1 { font-size: 17pt; margin-bottom: 4px; }
h2 { font-size: 13pt; margin-top: 22px; margin-bottom: 6px; }
h3 { font-size: 11pt; margin-top: 14px; margin-bottom: 4px; }
h4 { font-size: 9.5pt; margin-top: 12px; margin-bottom: 3px; background-color: #eef1f4; }
p { margin-top: 2px; margin-bottom: 2px; }
p.facts { color: #444444; }
p.none { color: #666666; }
a { color: #0b4a8a; text-decoration: none; }
table { margin-top: 5px; margin-bottom: 5px; }
th { background-color: #eef1f4; text-align: left; }
)";

QString printable(QString html) {
    html.replace("<table>",
                 "<table border=\"1\" cellspacing=\"0\" cellpadding=\"4\" style=\"border-collapse:collapse\">");
    return html.replace("<td class=\"figure\">", "<td align=\"right\">");
}

/// Head and contents, overview, and each relay.
QStringList sectionsOf(const QString& body) {
    static const QRegularExpression start("(?=<h2 id=\"(?!contents\"))");
    return body.split(start, Qt::SkipEmptyParts);
}

QString anchorOf(const QTextBlock& block) {
    const QStringList names = block.begin().fragment().charFormat().anchorNames();
    return names.isEmpty() ? QString() : names.first();
}

template <typename Visit>
void forEachHeading(const QTextDocument& text, Visit visit) {
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next())
        if (block.blockFormat().headingLevel() > 0) visit(block);
}

QPointF origin(const QTextBlock& block) {
    return block.document()->documentLayout()->blockBoundingRect(block).topLeft();
}

/// The page within its document on which a block begins.
int pageOf(const QTextBlock& block) {
    if (block.layout()->lineCount() == 0) return -1;
    const QTextLine line = block.layout()->lineAt(0);
    const double middle = origin(block).y() + line.y() + line.height() / 2;
    return static_cast<int>(middle / block.document()->pageSize().height());
}

/// What must not be parted from a heading: the next text, of a table its first row of figures.
QTextBlock followerOf(const QTextBlock& heading) {
    for (QTextBlock next = heading.next(); next.isValid(); next = next.next()) {
        const QTextTable* table = QTextCursor(next).currentTable();
        const int row = table ? table->format().headerRowCount() : 0;
        if (table) return row < table->rows() ? table->cellAt(row, 0).firstCursorPosition().block() : next;
        if (next.blockFormat().headingLevel() == 0 && !next.text().isEmpty()) return next;
    }
    return heading;
}

void keepHeadings(const QTextDocument& text) {
    forEachHeading(text, [](const QTextBlock& heading) {
        const int page = pageOf(heading);
        const bool first = !heading.previous().isValid() || pageOf(heading.previous()) < page;
        if (first || pageOf(followerOf(heading)) == page) return;
        QTextBlockFormat format;
        format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        QTextCursor(heading).mergeBlockFormat(format);
    });
}

}  // namespace

QFont bookFont() {
    return QFont(QStringList{"Noto Sans CJK SC", "Source Han Sans SC", "Microsoft YaHei", "PingFang SC"}, 9);
}

BookLayout::BookLayout(const QString& body, QPaintDevice& device, const QSizeF& page) : page_(page) {
    for (const QString& html : sectionsOf(body)) addSection(html, device);
    placeHeadings();
}

BookLayout::~BookLayout() = default;

int BookLayout::pageCount() const {
    return sections_.empty() ? 0 : sections_.back().firstPage + sections_.back().text->pageCount();
}

void BookLayout::addSection(const QString& html, QPaintDevice& device) {
    const int firstPage = pageCount();
    auto text = std::make_unique<QTextDocument>();
    text->setUndoRedoEnabled(false);
    text->documentLayout()->setPaintDevice(&device);
    text->setDefaultFont(bookFont());
    text->setDefaultStyleSheet(style);
    text->setDocumentMargin(0);
    text->setHtml(printable(html));
    QVector<Stretch> links;
    for (QTextBlock block = text->begin(); block.isValid(); block = block.next())
        for (auto at = block.begin(); !at.atEnd(); ++at)
            if (const QString href = at.fragment().charFormat().anchorHref(); href.startsWith('#'))
                links.append({at.fragment().position(), at.fragment().length(), href.mid(1)});
    // The painter would write them as links to other files.
    QTextCursor cursor(text.get());
    cursor.beginEditBlock();
    for (const Stretch& link : links) {
        cursor.setPosition(link.start);
        cursor.setPosition(link.start + link.length, QTextCursor::KeepAnchor);
        QTextCharFormat format = cursor.charFormat();
        format.clearProperty(QTextFormat::AnchorHref);
        cursor.setCharFormat(format);
    }
    cursor.endEditBlock();
    const double width = page_.width() * (sections_.empty() ? 1 - kNumberColumn : 1);
    text->setPageSize({width, page_.height()});
    keepHeadings(*text);
    sections_.push_back({std::move(text), links, firstPage});
}

BookLayout::Place BookLayout::place(const Section& section, const QTextBlock& block) const {
    const int page = pageOf(block);
    return {section.firstPage + page, origin(block).y() + block.layout()->lineAt(0).y() - page * page_.height()};
}

void BookLayout::placeHeadings() {
    for (const Section& section : sections_)
        forEachHeading(*section.text, [&](const QTextBlock& block) {
            const QString anchor = anchorOf(block);
            anchors_.insert(anchor, place(section, block));
            if (block.blockFormat().headingLevel() == 2) chapters_.insert(anchor, anchors_.value(anchor).page);
        });
}

QVector<BookLayout::Area> BookLayout::areas(const Section& section) const {
    QVector<Area> found;
    for (const Stretch& link : section.links) {
        const QTextBlock block = section.text->findBlock(link.start);
        const QPointF corner = origin(block);
        const int start = link.start - block.position(), end = start + link.length;
        for (int k = 0; k < block.layout()->lineCount(); ++k) {
            const QTextLine line = block.layout()->lineAt(k);
            const int from = std::max(start, line.textStart());
            const int to = std::min(end, line.textStart() + line.textLength());
            if (from >= to) continue;
            QRectF dots(QPointF(line.cursorToX(from), line.y()), QPointF(line.cursorToX(to), line.y() + line.height()));
            dots.translate(corner);
            const int page = static_cast<int>(dots.center().y() / page_.height());
            found.append({section.firstPage + page, dots.translated(0, -page * page_.height()), link.anchor});
        }
    }
    return found;
}

PdfLinks BookLayout::links(const QTransform& toSheet) const {
    const auto target = [&](const QString& anchor) {
        const Place at = anchors_.value(anchor);
        return PdfPlace{at.page, toSheet.map(QPointF(0, at.y)).y()};
    };
    PdfLinks made;
    for (const Section& section : sections_) {
        forEachHeading(*section.text, [&](const QTextBlock& block) {
            const int level = block.blockFormat().headingLevel() - 2;
            if (level >= 0) made.bookmarks.append({block.text().simplified(), level, target(anchorOf(block))});
        });
        for (const Area& area : areas(section))
            if (anchors_.contains(area.anchor))
                made.links.append({area.page, toSheet.mapRect(area.dots), target(area.anchor)});
    }
    return made;
}

void BookLayout::paint(QPainter& painter, int page) const {
    const auto after = std::upper_bound(sections_.begin(), sections_.end(), page,
                                        [](int number, const Section& section) { return number < section.firstPage; });
    const Section& section = *std::prev(after);
    const double top = (page - section.firstPage) * page_.height();
    painter.save();
    painter.translate(0, -top);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black);
    context.clip = QRectF(0, top, page_.width(), page_.height());
    painter.setClipRect(context.clip);
    section.text->documentLayout()->draw(&painter, context);
    painter.restore();
    if (&section == &sections_.front()) paintPageNumbers(painter, page);
}

void BookLayout::paintPageNumbers(QPainter& painter, int page) const {
    painter.setFont(sections_.front().text->defaultFont());
    painter.setPen(Qt::black);
    for (const Area& area : areas(sections_.front()))
        if (area.page == page && chapters_.contains(area.anchor))
            painter.drawText(QRectF(0, area.dots.top(), page_.width(), area.dots.height()),
                             Qt::AlignRight | Qt::AlignVCenter, QString::number(chapters_.value(area.anchor) + 1));
}
