#include "shell/Appearance.h"

#include <QApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>
#include <QTranslator>

#include "platform/host/ui/Icons.h"

namespace shell {

namespace {

/// The frame of an unticked box is drawn in a somewhat darker shade of the window, which is faint on light and hidden
/// on dark windows: it takes a darker shade of the lines, on dark windows of the text.
class Style : public QProxyStyle {
  public:
    Style() : QProxyStyle("Fusion") {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        const bool box = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton;
        if (!box) return QProxyStyle::drawPrimitive(element, option, painter, widget);
        QStyleOptionButton seen;
        static_cast<QStyleOption&>(seen) = *option;
        const QPalette& palette = option->palette;
        const bool dark = palette.window().color().lightness() < 128;
        const auto group = option->state & State_Enabled ? QPalette::Active : QPalette::Disabled;
        seen.palette.setColor(QPalette::Window, palette.color(group, dark ? QPalette::WindowText : QPalette::Mid));
        QProxyStyle::drawPrimitive(element, &seen, painter, widget);
    }
};

struct Shades {
    QColor window, base, alternate, button, text, disabled, highlight, highlighted, link, tip, tipText, mid;
};

QPalette paletteOf(const Shades& shades) {
    QPalette palette(shades.button, shades.window);
    palette.setColor(QPalette::Window, shades.window);
    palette.setColor(QPalette::Base, shades.base);
    palette.setColor(QPalette::Disabled, QPalette::Base, shades.window);
    palette.setColor(QPalette::AlternateBase, shades.alternate);
    palette.setColor(QPalette::Button, shades.button);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, shades.text);
        palette.setColor(QPalette::Disabled, role, shades.disabled);
    }
    palette.setColor(QPalette::PlaceholderText, shades.disabled);
    palette.setColor(QPalette::Highlight, shades.highlight);
    palette.setColor(QPalette::HighlightedText, shades.highlighted);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, shades.mid);
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, shades.disabled);
    palette.setColor(QPalette::Link, shades.link);
    palette.setColor(QPalette::LinkVisited, shades.link);
    palette.setColor(QPalette::ToolTipBase, shades.tip);
    palette.setColor(QPalette::ToolTipText, shades.tipText);
    palette.setColor(QPalette::Mid, shades.mid);
    return palette;
}

QPalette lightPalette() {
    return paletteOf({0xf3f4f6, 0xffffff, 0xf0f3f7, 0xe9ebef, 0x1b1f24, 0x767d87, 0x1f5fa8, 0xffffff, 0x1a5cae,
                      0xfffbe6, 0x1b1f24, 0xc3c8cf});
}

QPalette darkPalette() {
    return paletteOf({0x24272c, 0x31353c, 0x363b43, 0x3d4249, 0xe6e8eb, 0x8b929c, 0x2f6fb8, 0xffffff, 0x7db7f5,
                      0x3a3f46, 0xe6e8eb, 0x4a5058});
}

void install(QApplication& application, const QString& file, const QString& folder) {
    auto* translator = new QTranslator(&application);
    translator->setObjectName("language");
    if (translator->load(file, folder))
        QApplication::installTranslator(translator);
    else
        delete translator;
}

}  // namespace

QIcon icon(const QString& name) { return host::lineIcon(":/icons/" + name + ".svg"); }

void applyTheme(QApplication& application, Theme theme) {
    static const QPalette system = QApplication::palette();
    if (!dynamic_cast<Style*>(application.style())) QApplication::setStyle(new Style);
    const bool dark = theme == Theme::Dark || (theme == Theme::System && system.window().color().lightness() < 128);
    QApplication::setPalette(dark ? darkPalette() : lightPalette());
}

QString languageInUse(const QString& setting) {
    if (!setting.isEmpty()) return setting;
    // a system without a language of its own gets the language that the program was written in
    const QLocale::Language system = QLocale::system().language();
    return system == QLocale::Chinese || system == QLocale::C ? "zh" : "en";
}

void applyLanguage(QApplication& application, const QString& language) {
    for (QTranslator* old : application.findChildren<QTranslator*>("language")) delete old;
    const QString chosen = languageInUse(language);
    QLocale::setDefault(QLocale(chosen == "zh" ? "zh_CN" : "en_US"));
    install(application, chosen == "zh" ? "qtbase_zh_CN" : "qtbase_en",
            QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    if (chosen != "en") return;
    for (const QString& file : QDir(":/i18n").entryList({"*_en.qm"})) install(application, file, ":/i18n");
}

}  // namespace shell
