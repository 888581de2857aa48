#include "platform/host/ui/RecordButtons.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QKeySequence>
#include <QMetaMethod>

#include "platform/host/ui/Icons.h"

namespace host {

namespace {

struct Place {
    QToolButton* RecordButtons::*member;
    ToolButtonForm form;
};

const Place kPlaces[] = {
    {&RecordButtons::PrevRec,
     {"prev", QT_TRANSLATE_NOOP("RecordButtons", "前移一条记录"), "ToolButton_PrevRec_clicked", "Ctrl+PgUp"}},
    {&RecordButtons::NextRec,
     {"next", QT_TRANSLATE_NOOP("RecordButtons", "后移一条记录"), "ToolButton_NextRec_clicked", "Ctrl+PgDown"}},
    {&RecordButtons::FirstRec,
     {"first", QT_TRANSLATE_NOOP("RecordButtons", "到第一条记录"), "ToolButton_FirstRec_clicked", "Ctrl+Home"}},
    {&RecordButtons::LastRec,
     {"last", QT_TRANSLATE_NOOP("RecordButtons", "到最后一条记录"), "ToolButton_LastRec_clicked", "Ctrl+End"}},
    {&RecordButtons::InsertRec,
     {"insert", QT_TRANSLATE_NOOP("RecordButtons", "增加一条记录"), "ToolButton_InsertRec_clicked", "Ctrl+N"}},
    {&RecordButtons::DeleteRec,
     {"delete", QT_TRANSLATE_NOOP("RecordButtons", "删除一条记录"), "ToolButton_DeleteRec_clicked", "Ctrl+Del"}},
    {&RecordButtons::CopyRec,
     {"copy", QT_TRANSLATE_NOOP("RecordButtons", "拷贝当前记录"), "ToolButton_CopyRec_clicked", "Ctrl+Shift+C"}},
    {&RecordButtons::PasteRec,
     {"paste", QT_TRANSLATE_NOOP("RecordButtons", "粘贴到当前记录"), "ToolButton_PasteRec_clicked", "Ctrl+Shift+V"}},
    {&RecordButtons::SearchRec,
     {"search", QT_TRANSLATE_NOOP("RecordButtons", "查找一条记录"), "ToolButton_SearchRec_clicked", "Ctrl+F"}},
    {&RecordButtons::RecoverAll,
     {"recover", QT_TRANSLATE_NOOP("RecordButtons", "取消本次修改"), "ToolButton_RecoverAll_clicked", "Ctrl+R"}},
    {&RecordButtons::Browse,
     {"browse", QT_TRANSLATE_NOOP("RecordButtons", "浏览所有记录"), "ToolButton_Browse_clicked", "Ctrl+B"}},
    {&RecordButtons::Export,
     {"export", QT_TRANSLATE_NOOP("RecordButtons", "输出记录信息"), "ToolButton_Export_clicked", "Ctrl+E"}},
};

}  // namespace

QToolButton* makeToolButton(const ToolButtonForm& form, QWidget* parent) {
    auto* button = new QToolButton(parent);
    button->setObjectName(QString(form.slot).section('_', 0, 1));
    button->setToolTip(QCoreApplication::translate("RecordButtons", form.toolTip));
    button->setAccessibleName(button->toolTip());
    button->setIcon(icon(form.icon));
    button->setIconSize({18, 18});
    button->setFixedSize(24, 24);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    if (form.keys) {
        button->setShortcut(QKeySequence(form.keys));
        button->setStatusTip(button->toolTip() + "  " + button->shortcut().toString(QKeySequence::NativeText));
    }
    return button;
}

bool connectByName(QAbstractButton* button, QObject* receiver, const char* slot) {
    const QByteArray signature = QByteArray(slot) + "()";
    const int index = receiver->metaObject()->indexOfSlot(signature);
    if (index < 0) {
        button->hide();
        return false;
    }
    return QObject::connect(button, QMetaMethod::fromSignal(&QAbstractButton::clicked), receiver,
                            receiver->metaObject()->method(index));
}

void RecordButtons::build(QBoxLayout* row, QWidget* parent, QObject* receiver) {
    for (const Place& place : kPlaces) {
        QToolButton* button = makeToolButton(place.form, parent);
        this->*place.member = button;
        row->addWidget(button);
        connectByName(button, receiver, place.form.slot);
    }
    PasteRec->setEnabled(false);
    QToolButton* paste = PasteRec;
    QObject::connect(CopyRec, &QToolButton::pressed, paste, [paste] { paste->setEnabled(true); });
}

std::vector<QToolButton*> RecordButtons::all() const {
    std::vector<QToolButton*> buttons;
    for (const Place& place : kPlaces) buttons.push_back(this->*place.member);
    return buttons;
}

}  // namespace host
