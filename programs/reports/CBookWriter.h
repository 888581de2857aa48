#pragma once

#include <QDateTime>
#include <functional>

#include "programs/reports/BookRequest.h"

/// Writes the calculation books of a case: how each setting, or each sensitivity parameter, came about.
class CBookWriter {
  public:
    /// \param typeText  relay type as the user knows it
    /// \param caseName  name of the case, or what stands in its place
    /// \param clock     date and time of the book
    CBookWriter(int caseNo, int rTypeNo, const QString& typeText, const QString& caseName,
                std::function<QDateTime()> clock = &QDateTime::currentDateTime);

    /// Writes "CalRef.ROT" in the working directory (ending in a slash), GBK, lines ended by CR LF. A character that
    /// GBK does not have becomes "?" and is told; so is the number of rules without a result.
    /// \return false with a message when the file cannot be written; no part of a book is left then
    bool WriteSettingBook(const QString& workDir);
    bool WriteKlmBook(const QString& workDir);

    /// Whether there are rows of a run for a book to tell of; says so when not.
    [[nodiscard]] bool hasResults() const;

    /// Sensitivity of a setting, without messages: -1.0 when the parameter is 0 or there is no row, -2.0 when the
    /// setting is 0.
    static double CalKlmForBook(int rTypeNo, int rNo, int pNo, const QString& cdz, double value);

  private:
    bool write(const QString& workDir, bool sensitivity);

    BookRequest request_;
    std::function<QDateTime()> clock_;
};
