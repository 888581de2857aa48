#pragma once

#include <QIcon>
#include <QString>

#include "shell/Settings.h"

class QApplication;

namespace shell {

/// One of the delivered drawings (icons/NAME.svg) in the colours of the palette in use, sharp at every size.
QIcon icon(const QString& name);

/// The colours of a theme for the whole application; the system's are those it had at the first call.
void applyTheme(QApplication& application, Theme theme);

/// Texts in a language ("zh", "en", empty: that of the system), those of the toolkit's own dialogs included.
void applyLanguage(QApplication& application, const QString& language);

/// The language that a setting comes to.
QString languageInUse(const QString& setting);

}  // namespace shell
