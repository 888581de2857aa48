#include "programs/frame/ui/DialogParts.h"

#include <QDialogButtonBox>
#include <QPushButton>

QDialogButtonBox* buttonRow(QPushButton* ensure, QPushButton* cancel) {
    auto* row = new QDialogButtonBox(ensure->parentWidget());
    row->addButton(ensure, QDialogButtonBox::AcceptRole);
    row->addButton(cancel, QDialogButtonBox::RejectRole);
    ensure->setDefault(true);
    return row;
}
