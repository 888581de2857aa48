#include "programs/reports/ui/BookExport.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include "platform/host/Text.h"
#include "programs/frame/Messages.h"
#include "programs/reports/BookPages.h"
#include "programs/reports/BookText.h"
#include "programs/reports/ui/BookLayout.h"

namespace {

constexpr int kDotsPerInch = 300;
constexpr double kMargin = 15;  // mm
constexpr double kFooter = 8;   // mm, between the text and the page number

double dots(double millimetres) { return millimetres / 25.4 * kDotsPerInch; }

void paintFooter(QPainter& painter, const QString& title, int number, int count, const QSizeF& page) {
    const QRectF footer(0, page.height() + dots(kFooter) / 2, page.width(), dots(kFooter));
    painter.setFont(bookFont());
    painter.setPen(QColor(0x44, 0x44, 0x44));
    painter.drawText(footer, Qt::AlignLeft | Qt::AlignBottom, title);
    painter.drawText(footer, Qt::AlignRight | Qt::AlignBottom,
                     QString("第 %1 页  共 %2 页").arg(number + 1).arg(count));
}

/// Paints the pages.
/// \return the links between them; nothing when the painting failed
std::optional<PdfLinks> paint(QIODevice& out, const QString& title, const QString& body) {
    QPdfWriter writer(&out);
    writer.setTitle(title);
    writer.setResolution(kDotsPerInch);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(kMargin, kMargin, kMargin, kMargin), QPageLayout::Millimeter);
    const QRectF room = writer.pageLayout().paintRectPixels(kDotsPerInch);
    const QSizeF page(room.width(), room.height() - dots(kFooter));
    const BookLayout layout(body, writer, page);
    QPainter painter;
    if (!painter.begin(&writer)) return std::nullopt;
    const int count = layout.pageCount();
    for (int number = 0; number < count; ++number) {
        if (number > 0 && !writer.newPage()) return std::nullopt;
        layout.paint(painter, number);
        paintFooter(painter, title, number, count, page);
    }
    if (!painter.end()) return std::nullopt;
    const double points = 72.0 / kDotsPerInch;
    return layout.links(QTransform::fromScale(points, points).translate(room.x(), room.y()));
}

QByteArray bookPdf(const QString& title, const QString& body, QString& fault) {
    QBuffer painted;
    painted.open(QIODevice::WriteOnly);
    auto links = paint(painted, title, body);
    if (!links) return {};
    links->language = "zh-CN";
    return pdfWithLinks(painted.data(), *links, fault);
}

}  // namespace

bool exportBookPdf(const BookRequest& request, const QString& file) {
    const auto pages = readBookPages(request);
    if (!pages) return false;
    QString fault;
    const QByteArray book = bookPdf(bookTitle(request.sensitivity) + "  " + request.caseName,
                                    bookBody(*pages, QDateTime::currentDateTime()), fault);
    QSaveFile out(file);
    if (!book.isEmpty() && out.open(QIODevice::WriteOnly) && out.write(book) == book.size() && out.commit())
        return true;
    ReportError(Text::tr("不能写文件 ") + file + "：" + (book.isEmpty() ? fault : out.errorString()), 0);
    return false;
}
