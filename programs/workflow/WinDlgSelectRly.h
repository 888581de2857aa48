#pragma once

#include <QDialog>

/// Picks relays of one type: by hand, by voltage level, or all of the network. The result is SelectedRlyList.
class WinDlgSelectRly : public QDialog {
    Q_OBJECT
  public:
    WinDlgSelectRly(const QString& rTypeCode, int rTypeNo, int rType, int flag, QWidget* parent = nullptr);
};
