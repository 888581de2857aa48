#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSpinBox;

namespace shell {

class Settings;

/// Language, theme, login and database server. OK writes all of them.
class WinDlgSettings : public QDialog {
    Q_OBJECT
  public:
    explicit WinDlgSettings(Settings& settings, QWidget* parent = nullptr);
    /// The server's settings differ from those at the opening of the dialog: they count from the next start.
    [[nodiscard]] bool serverChanged() const { return serverChanged_; }

  public slots:
    void accept() override;

  private:
    QGroupBox* makeAppearance();
    QGroupBox* makeServer();
    void readServer();
    bool writeServer();
    void check();

    Settings& settings_;
    bool serverChanged_ = false;
    QComboBox *comboBox_Language = nullptr, *comboBox_Theme = nullptr;
    QCheckBox* checkBox_LogIn = nullptr;
    QRadioButton *radioButton_Embedded = nullptr, *radioButton_Host = nullptr;
    QLineEdit *lineEdit_Host = nullptr, *lineEdit_User = nullptr, *lineEdit_PassWord = nullptr;
    QSpinBox* spinBox_Port = nullptr;
    QLabel* textLabel_Reason = nullptr;
    QPushButton* pushButton_Ensure = nullptr;
};

}  // namespace shell
