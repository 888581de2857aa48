#pragma once

#include <QDialog>

/// The sensitivity parameters that a run computed, to be confirmed.
/// \param caseNo  number under which the run's results stand
class WinDlgEnsureKlmP : public QDialog {
    Q_OBJECT
  public:
    WinDlgEnsureKlmP(int rTypeNo, const QString& typeText, int caseNo, const QString& workDir,
                     QWidget* parent = nullptr);
};
