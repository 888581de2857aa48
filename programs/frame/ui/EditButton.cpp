#include "programs/frame/ui/EditButton.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

EditButton::EditButton(QWidget* parent, const char* name, uint flags)
    : QWidget(parent, Qt::WindowFlags(int(flags))), lineEdit(new QLineEdit(this)), pushButton(new QPushButton(this)) {
    setObjectName(name ? name : "EditButton");
    lineEdit->setObjectName("lineEdit");
    pushButton->setObjectName("pushButton");
    pushButton->setText("...");
    pushButton->setFixedWidth(25);
    pushButton->setAutoDefault(false);
    for (QWidget* part : {static_cast<QWidget*>(lineEdit), static_cast<QWidget*>(pushButton)})
        part->setSizePolicy(part->sizePolicy().horizontalPolicy(), QSizePolicy::Ignored);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(lineEdit, 1);
    row->addWidget(pushButton);
    setFocusProxy(lineEdit);
    setAutoFillBackground(true);
    resize(sizeHint());
}
