// Export, settings, help.
#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>

#include "platform/host/WinDockFeedback.h"
#include "platform/host/diagram/DiagramView.h"
#include "shell/Appearance.h"
#include "shell/MainWindow.h"
#include "shell/Menus.h"
#include "shell/WinDlgSettings.h"
#include "shell/WinDlgShortcuts.h"

namespace shell {

void MainWindow::exportDiagram() {
    const QString file =
        QFileDialog::getSaveFileName(this, tr("导出图"), settings_.folder() + "/" + session_->project().name + ".pdf",
                                     tr("PDF (*.pdf);;SVG (*.svg);;PNG (*.png)"));
    if (file.isEmpty()) return;
    settings_.setFolder(QFileInfo(file).path());
    QString error;
    if (diagram_->exportTo(file, &error))
        report(tr("图已存为 %1").arg(file), WinDockFeedback::Information);
    else
        report(error, WinDockFeedback::Error);
}

void MainWindow::printDiagram() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(QPageLayout::Landscape);
    printer.setDocName(session_->project().name);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() != QDialog::Accepted) return;
    QPainter painter(&printer);
    diagram_->scene()->render(&painter);
}

void MainWindow::showSettings() {
    WinDlgSettings dialog(settings_, this);
    if (dialog.exec() != QDialog::Accepted) return;
    applyTheme(*qApp, settings_.theme());
    const QString name = session_->isOpen() ? session_->project().name : QString();
    const QLocale before;
    applyLanguage(*qApp, settings_.language());
    // the module fills the toolbar with its own texts when it starts
    if (before != QLocale() && !name.isEmpty()) openProject(name);
    if (!dialog.serverChanged()) return;
    closeProject();
    server_.open();
    refreshStatus();
}

void MainWindow::showShortcuts() { WinDlgShortcuts(menus_->shortcuts(), this).exec(); }

void MainWindow::showAbout() {
    QMessageBox box(this);
    box.setObjectName("messageBox_About");
    box.setWindowTitle(tr("关于 Morvane"));
    box.setIconPixmap(windowIcon().pixmap(QSize(1, 1) * fontMetrics().height() * 4));
    box.setText("<b>Morvane " + QApplication::applicationVersion() + "</b><br>" + tr("输电网继电保护整定计算"));
    box.setInformativeText(tr("自由软件，GPL-3.0 或更新版本。Qt %1。").arg(qVersion()));
    box.exec();
}

}  // namespace shell
