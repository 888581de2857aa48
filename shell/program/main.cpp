#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QTextStream>

#include "shell/Appearance.h"
#include "shell/MainWindow.h"
#include "shell/Settings.h"

namespace {

/// The most memory that this process has used, as the system tells it.
QString peakMemory() {
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly)) return {};
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:")) return QString::fromLatin1(line.mid(6).trimmed());
    return {};
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName("morvane-workbench");
    QApplication::setApplicationDisplayName("Morvane");
    QApplication::setApplicationVersion("0.1.0");
    const shell::Settings settings;
    shell::applyLanguage(application, settings.language());
    shell::applyTheme(application, settings.theme());

    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument("PROJECT", QCoreApplication::translate("main", "要打开的工程"));
    const QCommandLineOption untilShown("until-shown",
                                        QCoreApplication::translate("main", "图画出后写一行到标准输出并退出"));
    const QCommandLineOption demonstration("demo", QCoreApplication::translate("main", "打开示例工程，没有时先建立"));
    parser.addOptions({untilShown, demonstration});
    parser.process(application);

    shell::MainWindow window;
    if (parser.isSet(untilShown))
        QObject::connect(
            &window, &shell::MainWindow::projectShown, &window,
            [&window] {
                window.repaint();
                QTextStream(stdout) << "shown, at most " << peakMemory() << Qt::endl;
                window.close();
            },
            Qt::QueuedConnection);
    window.show();
    if (parser.isSet(demonstration)) window.openDemonstration();
    const QStringList projects = parser.positionalArguments();
    if (!projects.isEmpty()) window.openWhenReady(projects.first());
    return QApplication::exec();
}
