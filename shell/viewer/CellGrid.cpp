#include "shell/viewer/CellGrid.h"

#include <QFontDatabase>
#include <algorithm>
#include <cmath>
#include <limits>

namespace shell {

namespace {

constexpr qreal kNoticed = 0.05;  ///< pixels; less does not add up to a cell within a line

}  // namespace

CellGrid::CellGrid(const QFont& font)
    : metrics_(font),
      cell_(metrics_.horizontalAdvance('x')),
      known_(0x10000, std::numeric_limits<float>::quiet_NaN()) {}

QFont CellGrid::font(qreal pointSize) {
    const QStringList families = {
        "Noto Sans Mono CJK SC", "Source Han Mono SC", "Sarasa Mono SC", "WenQuanYi Zen Hei Mono", "NSimSun", "SimSun"};
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    const auto found = std::find_if(families.begin(), families.end(), &QFontDatabase::hasFamily);
    if (found != families.end()) font = QFont(*found);
    font.setPointSizeF(pointSize);
    font.setStyleHint(QFont::Monospace);
    return font;
}

qreal CellGrid::lack(QChar character) const {
    if (character.unicode() < 0x80) return 0;
    float& known = known_[character.unicode()];
    if (!std::isnan(known)) return known;
    const qreal lack = 2 * cell_ - metrics_.horizontalAdvance(character);
    known = std::fabs(lack) < kNoticed ? 0 : float(lack);
    return known;
}

bool CellGrid::fits(const QString& text) const {
    return std::all_of(text.begin(), text.end(), [&](QChar character) { return lack(character) == 0; });
}

void CellFormat::highlightBlock(const QString& text) {
    for (int at = 0; at < text.size();) {
        const qreal lack = grid_.lack(text[at]);
        int end = at + 1;
        while (end < text.size() && grid_.lack(text[end]) == lack) ++end;
        QTextCharFormat format;
        format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
        format.setFontLetterSpacing(lack);
        if (lack != 0) setFormat(at, end - at, format);
        at = end;
    }
}

}  // namespace shell
