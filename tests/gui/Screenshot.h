#pragma once

#include <QApplication>
#include <QDir>
#include <QPalette>
#include <QWidget>

inline QPalette darkPalette() {
    QPalette dark(QColor(45, 47, 51), QColor(45, 47, 51));
    dark.setColor(QPalette::Base, QColor(30, 31, 34));
    dark.setColor(QPalette::AlternateBase, QColor(38, 40, 43));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText}) {
        dark.setColor(role, QColor(223, 225, 229));
        dark.setColor(QPalette::Disabled, role, QColor(120, 122, 126));
    }
    dark.setColor(QPalette::Highlight, QColor(46, 110, 180));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    return dark;
}

/// Pictures of a window for people to look at, in light and in dark: written when MORVANE_SCREENSHOTS names a folder.
inline void takeScreenshot(QWidget& window, const QString& name) {
    const QString folder = qEnvironmentVariable("MORVANE_SCREENSHOTS");
    if (folder.isEmpty()) return;
    QDir().mkpath(folder);
    const QPalette light = QApplication::palette();
    for (const bool dark : {false, true}) {
        QApplication::setPalette(dark ? darkPalette() : light);
        window.show();
        QApplication::processEvents();
        window.grab().save(folder + '/' + name + (dark ? "-dark" : "-light") + ".png");
    }
    QApplication::setPalette(light);
}
