#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QSyntaxHighlighter>
#include <vector>

namespace shell {

/// Cells of one width, as books count their columns: a character of one byte in GBK takes one, any other two.
class CellGrid {
  public:
    explicit CellGrid(const QFont& font);
    /// A font with one width for narrow and twice that for Chinese characters, where the system has one.
    static QFont font(qreal pointSize);

    /// What a character's own width lacks of its cells, in pixels.
    [[nodiscard]] qreal lack(QChar character) const;
    /// Whether no character of a text lacks anything.
    [[nodiscard]] bool fits(const QString& text) const;

  private:
    QFontMetricsF metrics_;
    qreal cell_;
    mutable std::vector<float> known_;  ///< by UTF-16 unit; not a number: not measured yet
};

/// Puts the characters of a document into their cells, whatever the font.
class CellFormat : public QSyntaxHighlighter {
    Q_OBJECT
  public:
    CellFormat(QTextDocument* document, const QFont& font) : QSyntaxHighlighter(document), grid_(font) {}

  protected:
    void highlightBlock(const QString& text) override;

  private:
    CellGrid grid_;
};

}  // namespace shell
