#include "shell/Settings.h"

#include <QDir>
#include <QStandardPaths>
#include <algorithm>

namespace shell {

Settings::Settings()
    : store_(std::make_unique<QSettings>(
          QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/morvane/workbench.ini",
          QSettings::IniFormat)) {}

QString Settings::language() const {
    const QString language = store_->value("language").toString();
    return language == "zh" || language == "en" ? language : QString();
}

void Settings::setLanguage(const QString& language) { store_->setValue("language", language); }

Theme Settings::theme() const { return Theme(std::clamp(store_->value("theme").toInt(), 0, 2)); }

void Settings::setTheme(Theme theme) { store_->setValue("theme", int(theme)); }

bool Settings::loginAtOpening() const { return store_->value("login_at_opening", false).toBool(); }

void Settings::setLoginAtOpening(bool asks) { store_->setValue("login_at_opening", asks); }

QByteArray Settings::windowPart(const QString& part) const { return store_->value("window/" + part).toByteArray(); }

void Settings::setWindowPart(const QString& part, const QByteArray& state) {
    store_->setValue("window/" + part, state);
}

QString Settings::folder() const { return store_->value("folder", QDir::homePath()).toString(); }

void Settings::setFolder(const QString& folder) { store_->setValue("folder", folder); }

}  // namespace shell
