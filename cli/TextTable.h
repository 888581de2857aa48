#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace cli {

/// Columns that a terminal takes for a text: two for a Chinese character.
int displayWidth(const QString& text);

/// A table on standard output, its columns aligned by display width.
class TextTable {
  public:
    /// \param rightAligned  columns whose cells stand at the right
    explicit TextTable(QStringList header, QList<int> rightAligned = {});
    void add(const QStringList& cells) { rows_.append(cells); }
    void print() const;

  private:
    [[nodiscard]] QString line(const QStringList& cells, const QVector<int>& widths) const;

    QStringList header_;
    QList<int> right_;
    QVector<QStringList> rows_;
};

/// Writes text to standard output as UTF-8.
void print(const QString& text);
/// A number as tables show it: six significant digits.
QString number(double value);

}  // namespace cli
