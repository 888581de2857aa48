#include "programs/frame/ui/DialogParts.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QSettings>
#include <QSplitter>

QDialogButtonBox* buttonRow(QPushButton* ensure, QPushButton* cancel) {
    auto* row = new QDialogButtonBox(ensure->parentWidget());
    row->addButton(ensure, QDialogButtonBox::AcceptRole);
    row->addButton(cancel, QDialogButtonBox::RejectRole);
    ensure->setDefault(true);
    return row;
}

void rememberSizes(QSplitter* splitter, const QString& window) {
    const auto settings = [] { return QSettings(QSettings::IniFormat, QSettings::UserScope, "morvane", "windows"); };
    const QString key = window + "/" + splitter->objectName();
    splitter->restoreState(settings().value(key).toByteArray());
    QObject::connect(splitter, &QSplitter::splitterMoved, splitter,
                     [=] { settings().setValue(key, splitter->saveState()); });
}
