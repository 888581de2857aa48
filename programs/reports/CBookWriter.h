#pragma once

#include <QString>

/// Writes the calculation books of a case: how each setting, or each sensitivity parameter, came about.
class CBookWriter {
  public:
    /// \param typeText  relay type as the user knows it
    /// \param caseName  name of the case, or what stands in its place
    CBookWriter(int caseNo, int rTypeNo, const QString& typeText, const QString& caseName);

    /// Writes "CalRef.ROT" in the working directory (ending in a slash), GBK, lines ended by CR LF.
    /// \return false with a message when the file cannot be written
    bool WriteSettingBook(const QString& workDir);
    bool WriteKlmBook(const QString& workDir);

    /// Sensitivity of a setting, without messages: -1.0 when the parameter is 0 or there is no row, -2.0 when the
    /// setting is 0.
    static double CalKlmForBook(int rTypeNo, int rNo, int pNo, const QString& cdz, double value);

  private:
    int caseNo_, rTypeNo_;
    QString typeText_, caseName_;
};
