#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QVector>

namespace sql_dlg {

/// A widget bound to a field of a record. Values are the field's text.
class CSqlWidget {
  public:
    virtual ~CSqlWidget() = default;
    virtual void ClearText() = 0;
    [[nodiscard]] virtual QString GetValue() const = 0;
    virtual void SetValue(const QString& value) = 0;
    /// Lets the widget refuse what no field can hold.
    virtual void SetValider() {}
    /// \param length  characters that the field holds
    virtual void SetMaxLength(int /*length*/) {}
    virtual QWidget* Widget() = 0;
};

/// A line of text. Characters that cannot be stored are refused as they are typed, with a tip that says so.
class CSqlLineEditString : public QLineEdit, public CSqlWidget {
    Q_OBJECT
  public:
    explicit CSqlLineEditString(QWidget* parent = nullptr, const char* name = nullptr);
    void ClearText() override { clear(); }
    [[nodiscard]] QString GetValue() const override { return text(); }
    void SetValue(const QString& value) override { setText(value); }
    void SetValider() override;
    void SetMaxLength(int length) override { setMaxLength(length); }
    QWidget* Widget() override { return this; }
};

/// "1" when checked, else "0".
class CSqlCheckBox : public QCheckBox, public CSqlWidget {
    Q_OBJECT
  public:
    explicit CSqlCheckBox(QWidget* parent = nullptr, const char* name = nullptr);
    void ClearText() override { setChecked(false); }
    [[nodiscard]] QString GetValue() const override { return isChecked() ? "1" : "0"; }
    void SetValue(const QString& value) override { setChecked(value.toInt() != 0); }
    QWidget* Widget() override { return this; }
};

/// The value of the button that is on; empty when none is, which any value of no button makes.
class CSqlRadioBtnGroup : public QWidget, public CSqlWidget {
    Q_OBJECT
  public:
    explicit CSqlRadioBtnGroup(QWidget* parent = nullptr, const char* name = nullptr);
    /// The buttons may lie anywhere; only one of the group is on at a time.
    void AddRadioBtn(const QRadioButton* button, const QString& value);
    void ClearText() override { SetValue({}); }
    [[nodiscard]] QString GetValue() const override;
    void SetValue(const QString& value) override;
    QWidget* Widget() override { return this; }

  protected:
    void changeEvent(QEvent* event) override;

  private:
    struct Choice {
        QRadioButton* button;
        QString value;
    };
    QVector<Choice> choices_;
    class QButtonGroup* group_;
};

/// A text that the user does not change.
class CSqlLabel : public QLabel, public CSqlWidget {
    Q_OBJECT
  public:
    explicit CSqlLabel(QWidget* parent = nullptr, const char* name = nullptr, uint flags = 0);
    void ClearText() override { clear(); }
    [[nodiscard]] QString GetValue() const override { return text(); }
    void SetValue(const QString& value) override { setText(value); }
    QWidget* Widget() override { return this; }
};

}  // namespace sql_dlg
