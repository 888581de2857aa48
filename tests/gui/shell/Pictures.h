#pragma once

#include <QPixmap>
#include <QString>
#include <QVector>

/// Pictures of windows, each with a caption, put together into one sheet.
class Pictures {
  public:
    void add(const QString& caption, const QWidget& window);
    /// Columns of pictures side by side, scaled down; few colours, so that the file stays small.
    bool save(const QString& file) const;
    /// Each by itself as well, in a folder.
    void saveEach(const QString& folder) const;

  private:
    struct Picture {
        QString caption;
        QPixmap image;
    };
    QVector<Picture> pictures_;
};
