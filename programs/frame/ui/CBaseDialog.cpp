#include "programs/frame/ui/CBaseDialog.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "programs/frame/ui/FrameLayout.h"

CBaseDialog::CBaseDialog(QWidget* parent, const char* name, uint flags) : QWidget(parent, Qt::WindowFlags(int(flags))) {
    setObjectName(name ? name : "CBaseDialog");
    const FrameLayout frame = fillWithFrame(parent, this);
    build(frame.tools, this, parent);
    frame.tools->addStretch();
    body_ = frame.body;
    Button_OK = addButton(tr("确定"), "Button_OK_clicked");
    Button_Cancel = addButton(tr("取消"), "Button_Cancel_clicked");
    Button_OK->setDefault(true);
    frame.buttons->addStretch();
    frame.buttons->addWidget(Button_OK);
    frame.buttons->addWidget(Button_Cancel);
}

QPushButton* CBaseDialog::addButton(const QString& text, const char* slot) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(QString(slot).section('_', 0, 1));
    button->setMinimumSize(91, 24);
    host::connectByName(button, parentWidget(), slot);
    return button;
}
