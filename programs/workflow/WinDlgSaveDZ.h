#pragma once

#include <QDialog>

/// Makes the settings of the case the settings of record, with or without a change of the backup settings.
class WinDlgSaveDZ : public QDialog {
    Q_OBJECT
  public:
    explicit WinDlgSaveDZ(int rTypeNo, QWidget* parent = nullptr);
};
