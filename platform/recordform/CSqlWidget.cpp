#include "platform/recordform/CSqlWidget.h"

#include <QButtonGroup>
#include <QEvent>
#include <QToolTip>
#include <QValidator>

#include "platform/sql/Sql.h"

namespace sql_dlg {

namespace {

class StorableText : public QValidator {
  public:
    using QValidator::QValidator;
    State validate(QString& text, int&) const override {
        for (const QChar character : std::as_const(text))
            if (character < QChar(' ')) return Invalid;
        return sql::fitsGbk(text) ? Acceptable : Invalid;
    }
};

}  // namespace

CSqlLineEditString::CSqlLineEditString(QWidget* parent, const char* name) : QLineEdit(parent) {
    setObjectName(name);
    connect(this, &QLineEdit::inputRejected, this,
            [this] { QToolTip::showText(mapToGlobal(QPoint(0, height())), tr("该字符不能存储，或文字过长"), this); });
}

void CSqlLineEditString::SetValider() { setValidator(new StorableText(this)); }

CSqlCheckBox::CSqlCheckBox(QWidget* parent, const char* name) : QCheckBox(parent) { setObjectName(name); }

CSqlRadioBtnGroup::CSqlRadioBtnGroup(QWidget* parent, const char* name)
    : QWidget(parent), group_(new QButtonGroup(this)) {
    setObjectName(name);
}

void CSqlRadioBtnGroup::AddRadioBtn(const QRadioButton* button, const QString& value) {
    auto* own = const_cast<QRadioButton*>(button);
    choices_ << Choice{own, value};
    group_->addButton(own);
    own->setEnabled(isEnabled());
}

QString CSqlRadioBtnGroup::GetValue() const {
    for (const Choice& choice : choices_)
        if (choice.button->isChecked()) return choice.value;
    return {};
}

void CSqlRadioBtnGroup::SetValue(const QString& value) {
    group_->setExclusive(false);  // an exclusive group keeps one button on
    for (const Choice& choice : std::as_const(choices_)) choice.button->setChecked(choice.value == value);
    group_->setExclusive(true);
}

void CSqlRadioBtnGroup::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange)
        for (const Choice& choice : std::as_const(choices_)) choice.button->setEnabled(isEnabled());
}

CSqlLabel::CSqlLabel(QWidget* parent, const char* name, uint flags) : QLabel(parent, Qt::WindowFlags(int(flags))) {
    setObjectName(name);
}

}  // namespace sql_dlg
