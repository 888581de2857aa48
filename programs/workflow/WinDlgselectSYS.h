#pragma once

#include <QDialog>

/// Picks operating modes. The result is SelectedSysList.
class WinDlgselectSYS : public QDialog {
    Q_OBJECT
  public:
    explicit WinDlgselectSYS(QWidget* parent = nullptr);
};
