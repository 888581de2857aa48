#pragma once

#include <QByteArray>
#include <QSettings>
#include <QString>
#include <memory>

namespace shell {

enum class Theme { System, Light, Dark };

/// What the user chose, in `morvane/workbench.ini` below the user's configuration folder. Written at once.
class Settings {
  public:
    Settings();

    /// "zh", "en", or empty for that of the system.
    [[nodiscard]] QString language() const;
    void setLanguage(const QString& language);
    [[nodiscard]] Theme theme() const;
    void setTheme(Theme theme);
    /// Whether a project with a password asks for it when it is opened.
    [[nodiscard]] bool loginAtOpening() const;
    void setLoginAtOpening(bool asks);

    [[nodiscard]] QByteArray windowPart(const QString& part) const;
    void setWindowPart(const QString& part, const QByteArray& state);
    /// The folder that a file dialog showed last.
    [[nodiscard]] QString folder() const;
    void setFolder(const QString& folder);

    [[nodiscard]] QSettings& store() const { return *store_; }

  private:
    std::unique_ptr<QSettings> store_;
};

}  // namespace shell
