#include "programs/reports/ui/BookExport.h"

#include <QAbstractTextDocumentLayout>
#include <QFont>
#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QSaveFile>
#include <QTextDocument>

#include "platform/host/Text.h"
#include "programs/frame/Messages.h"
#include "programs/reports/BookPages.h"
#include "programs/reports/BookText.h"

namespace {

constexpr int kDotsPerInch = 300;
constexpr double kMargin = 15;  // mm
constexpr double kFooter = 8;   // mm, between the text and the page number

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

double dots(double millimetres) { return millimetres / 25.4 * kDotsPerInch; }

/// The body for the text layout, which writes links within a document as such to other files: without them.
QString printable(QString body) {
    body.replace("<table>",
                 "<table border=\"1\" cellspacing=\"0\" cellpadding=\"4\" style=\"border-collapse:collapse\">");
    body.replace("<td class=\"figure\">", "<td align=\"right\">");
    static const QRegularExpression link("<a href=\"#[^\"]+\">([^<]*)</a>");
    body.replace(link, "\\1");
    return body;
}

void layOut(QTextDocument& document, QPdfWriter& writer, const QString& body, const QSizeF& page) {
    QFont font(QStringList{"Noto Sans CJK SC", "Source Han Sans SC", "Microsoft YaHei", "PingFang SC"}, 9);
    document.documentLayout()->setPaintDevice(&writer);
    document.setDefaultFont(font);
    document.setDefaultStyleSheet(style);
    document.setDocumentMargin(0);
    document.setHtml(printable(body));
    document.setPageSize(page);
}

/// One page: the part of the text that falls on it, and its number below.
void paintPage(QPainter& painter, QTextDocument& document, const QString& title, int number, int count,
               const QSizeF& page) {
    painter.save();
    painter.translate(0, -number * page.height());
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black);
    context.clip = QRectF(0, number * page.height(), page.width(), page.height());
    painter.setClipRect(context.clip);
    document.documentLayout()->draw(&painter, context);
    painter.restore();
    const QRectF footer(0, page.height() + dots(kFooter) / 2, page.width(), dots(kFooter));
    painter.setFont(document.defaultFont());
    painter.setPen(QColor(0x44, 0x44, 0x44));
    painter.drawText(footer, Qt::AlignLeft | Qt::AlignBottom, title);
    painter.drawText(footer, Qt::AlignRight | Qt::AlignBottom,
                     QString("第 %1 页  共 %2 页").arg(number + 1).arg(count));
}

bool paint(QIODevice& out, const QString& title, const QString& body) {
    QPdfWriter writer(&out);
    writer.setTitle(title);
    writer.setResolution(kDotsPerInch);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(kMargin, kMargin, kMargin, kMargin), QPageLayout::Millimeter);
    const QSizeF whole = writer.pageLayout().paintRectPixels(kDotsPerInch).size();
    const QSizeF page(whole.width(), whole.height() - dots(kFooter));
    QTextDocument document;
    layOut(document, writer, body, page);
    QPainter painter;
    if (!painter.begin(&writer)) return false;
    const int count = document.pageCount();
    for (int number = 0; number < count; ++number) {
        if (number > 0 && !writer.newPage()) return false;
        paintPage(painter, document, title, number, count, page);
    }
    return painter.end();
}

}  // namespace

bool exportBookPdf(const BookRequest& request, const QString& file) {
    const auto pages = readBookPages(request);
    if (!pages) return false;
    const QString title = bookTitle(request.sensitivity) + "  " + request.caseName;
    QSaveFile out(file);
    if (out.open(QIODevice::WriteOnly) && paint(out, title, bookBody(*pages, QDateTime::currentDateTime())) &&
        out.commit())
        return true;
    ReportError(Text::tr("不能写文件 ") + file + "：" + out.errorString(), 0);
    return false;
}
