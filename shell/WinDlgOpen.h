#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace shell {

/// Chooses one of the projects that are there.
class WinDlgOpen : public QDialog {
    Q_OBJECT
  public:
    explicit WinDlgOpen(const QStringList& names, QWidget* parent = nullptr);
    [[nodiscard]] QString chosen() const;

  private:
    void filter(const QString& text);

    QLineEdit* lineEdit_Filter = nullptr;
    QListWidget* listWidget_Projects = nullptr;
    QPushButton *pushButton_Ensure = nullptr, *pushButton_Cancel = nullptr;
};

}  // namespace shell
