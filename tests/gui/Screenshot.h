#pragma once

#include <QApplication>
#include <QDir>
#include <QPalette>
#include <QWidget>

/// Pictures of windows for people to look at: written when MORVANE_SCREENSHOTS names a folder.
inline void takeScreenshot(QWidget& window, const QString& name) {
    const QString folder = qEnvironmentVariable("MORVANE_SCREENSHOTS");
    if (folder.isEmpty()) return;
    QDir().mkpath(folder);
    window.show();
    QApplication::processEvents();
    window.grab().save(folder + '/' + name + ".png");
}
