#include "programs/frame/ui/DialogParts.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QSplitter>

QDialogButtonBox* buttonRow(QPushButton* ensure, QPushButton* cancel) {
    auto* row = new QDialogButtonBox(ensure->parentWidget());
    row->addButton(ensure, QDialogButtonBox::AcceptRole);
    row->addButton(cancel, QDialogButtonBox::RejectRole);
    ensure->setDefault(true);
    return row;
}

namespace {

constexpr int kFrame = 60;  ///< for the title of a window and the bars of a desktop

QSettings settings() { return QSettings(QSettings::IniFormat, QSettings::UserScope, "morvane", "windows"); }

}  // namespace

void rememberSizes(QSplitter* splitter, const QString& window) {
    const QString key = window + "/" + splitter->objectName();
    splitter->restoreState(settings().value(key).toByteArray());
    QObject::connect(splitter, &QSplitter::splitterMoved, splitter,
                     [=] { settings().setValue(key, splitter->saveState()); });
}

void rememberPlace(QDialog* dialog, QSize wanted) {
    const QString key = dialog->objectName() + "/place";
    dialog->resize(wanted.boundedTo(dialog->screen()->availableSize() - QSize(kFrame, kFrame)));
    dialog->restoreGeometry(settings().value(key).toByteArray());
    QObject::connect(dialog, &QDialog::finished, dialog, [=] { settings().setValue(key, dialog->saveGeometry()); });
}
