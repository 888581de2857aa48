#include <QDir>
#include <QPainter>
#include <QWidget>

#include "tests/gui/shell/Pictures.h"

namespace {

constexpr int kColumns = 8;
constexpr int kCell = 460;
constexpr int kCaption = 22;
constexpr int kGap = 8;

}  // namespace

void Pictures::add(const QString& caption, const QWidget& window) {
    pictures_.append({caption, const_cast<QWidget&>(window).grab()});
}

bool Pictures::save(const QString& file) const {
    const int rows = int(pictures_.size() + kColumns - 1) / kColumns;
    constexpr int cellHeight = kCell * 3 / 4 + kCaption;
    QImage sheet(kColumns * (kCell + kGap), rows * (cellHeight + kGap), QImage::Format_RGB32);
    sheet.fill(0xff808890);
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (int i = 0; i < pictures_.size(); ++i) {
        const QPoint at(i % kColumns * (kCell + kGap) + kGap / 2, i / kColumns * (cellHeight + kGap) + kGap / 2);
        painter.drawText(QRect(at, QSize(kCell, kCaption)), Qt::AlignVCenter, pictures_[i].caption);
        const QPixmap& image = pictures_[i].image;
        const QSize limit(kCell, cellHeight - kCaption);
        const bool fits = image.width() <= limit.width() && image.height() <= limit.height();
        painter.drawPixmap(at + QPoint(0, kCaption),
                           fits ? image : image.scaled(limit, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    }
    painter.end();
    return sheet.convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither).save(file, "PNG", 0);
}

void Pictures::saveEach(const QString& folder) const {
    QDir().mkpath(folder);
    for (int i = 0; i < pictures_.size(); ++i)
        pictures_[i].image.save(folder + QString("/%1 %2.png").arg(i, 3, 10, QChar('0')).arg(pictures_[i].caption));
}
