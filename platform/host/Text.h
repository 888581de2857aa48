#pragma once

#include <QCoreApplication>
#include <string>

/// Texts for the user outside of windows: messages, labels, reports. Chinese in the source, translated where a
/// translation is loaded.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(Text)
  public:
    static std::string say(const char* text) { return tr(text).toStdString(); }
};
