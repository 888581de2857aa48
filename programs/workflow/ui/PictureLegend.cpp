#include "programs/workflow/ui/PictureLegend.h"

#include <QFontMetricsF>

#include "programs/workflow/ui/PicturePainter.h"

namespace {

constexpr double kSymbol = 24, kBetween = 5;  // pixels
constexpr int kWrap = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;

}  // namespace

QVector<PictureLegend::Row> PictureLegend::rows() const {
    QVector<Row> rows;
    const QColor bad = inkColour({PictureInk::Kind::Bad}, palette_);
    if (!scene_.findings.isEmpty()) rows.append({tr("须检查"), bad, nullptr, true});
    for (const QString& finding : scene_.findings) rows.append({finding, bad});
    if (!scene_.legend.isEmpty()) rows.append({tr("图例"), palette_.text, nullptr, true});
    for (const PictureLegendEntry& entry : scene_.legend) rows.append({entry.text, palette_.text, &entry});
    if (!scene_.notes.isEmpty()) rows.append({tr("说明"), palette_.text, nullptr, true});
    for (const QString& note : scene_.notes) rows.append({note, palette_.quiet});
    return rows;
}

double PictureLegend::indent(const Row& row) const { return row.entry ? kSymbol + 6 : 0; }

QRectF PictureLegend::bounds(const Row& row, double width) const {
    QFont font = font_;
    font.setBold(row.heading);
    return QFontMetricsF(font).boundingRect(QRectF(0, 0, width - indent(row), 10000), kWrap, row.text);
}

double PictureLegend::height(double width) const {
    double height = 0;
    for (const Row& row : rows()) height += bounds(row, width).height() + kBetween;
    return height;
}

QString PictureLegend::text() const {
    QStringList lines;
    for (const Row& row : rows()) lines << row.text;
    return lines.join('\n');
}

void PictureLegend::paintSymbol(QPainter& painter, const PictureLegendEntry& entry, QPointF middle) const {
    painter.setPen(QPen(inkColour(entry.ink, palette_), 2.4, entry.dashed ? Qt::DashLine : Qt::SolidLine));
    painter.setBrush(Qt::NoBrush);
    if (entry.form == PictureShape::Form::Circle)
        painter.drawEllipse(middle, 6, 6);
    else if (entry.form == PictureShape::Form::Arc)
        painter.drawArc(QRectF(middle.x() - 10, middle.y() - 4, 20, 20), 30 * 16, 120 * 16);
    else
        painter.drawLine(middle - QPointF(kSymbol / 2, 0), middle + QPointF(kSymbol / 2, 0));
}

void PictureLegend::paint(QPainter& painter, const QRectF& area) const {
    const double line = QFontMetricsF(font_).height();
    double y = area.top();
    const auto all = rows();
    for (const Row& row : all) {
        const double height = bounds(row, area.width()).height();
        // Behind every row but the last there must still be room to say that more follow.
        const double behind = &row == &all.back() ? 0 : kBetween + line;
        if (y + height + behind > area.bottom()) {
            painter.setPen(palette_.quiet);
            painter.drawText(QRectF(area.left(), y, area.width(), line), Qt::AlignLeft, tr("… 其余见提示"));
            return;
        }
        if (row.entry) paintSymbol(painter, *row.entry, {area.left() + kSymbol / 2, y + line / 2});
        QFont font = font_;
        font.setBold(row.heading);
        painter.setFont(font);
        painter.setPen(row.colour);
        painter.drawText(QRectF(area.left() + indent(row), y, area.width() - indent(row), height + 1), kWrap, row.text);
        y += height + kBetween;
    }
    painter.setFont(font_);
}
