#pragma once

#include <QDialog>

/// Which setting rules of a relay of a case are in use, with which parameters.
/// \param location  label of the relay's place
class WinDlgSelectRule : public QDialog {
    Q_OBJECT
  public:
    WinDlgSelectRule(int caseNo, int rNo, int rTypeNo, const QString& rTypeCode, const QString& location,
                     QWidget* parent = nullptr);
};
