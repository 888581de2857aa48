#pragma once

#include <QFont>

namespace diagram {

/// The application's font at the diagram's size in scene units.
inline QFont captionFont(bool station) {
    QFont font;
    font.setPixelSize(station ? 15 : 11);
    font.setBold(station);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

}  // namespace diagram
