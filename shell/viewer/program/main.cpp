#include <QApplication>
#include <QCommandLineParser>

#include "shell/Appearance.h"
#include "shell/Settings.h"
#include "shell/viewer/BookWindow.h"

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName("NotePad");
    QApplication::setApplicationVersion("0.1.0");
    const shell::Settings settings;
    shell::applyLanguage(application, settings.language());
    shell::applyTheme(application, settings.theme());

    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument("FILE", QCoreApplication::translate("shell::BookWindow", "要看的计算书"));
    parser.process(application);

    shell::BookWindow window;
    window.setWindowIcon(shell::icon("report"));
    window.show();
    const QStringList files = parser.positionalArguments();
    if (!files.isEmpty()) window.open(files.first());
    return QApplication::exec();
}
