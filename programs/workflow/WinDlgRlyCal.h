#pragma once

#include <QDialog>

/// The window in which a case is calculated.
class WinDlgRlyCal : public QDialog {
    Q_OBJECT
  public:
    /// \param programDir, homeDir  where the programs of the calculation are; home of the program
    /// \param runMode  1 manual, 2 automatic
    WinDlgRlyCal(const QString& rtdbName, const QString& rtdbPath, const QString& workDir, int caseNo, int rTypeNo,
                 const QString& typeText, const QString& programDir, const QString& homeDir, int runMode,
                 QWidget* parent = nullptr);
};
