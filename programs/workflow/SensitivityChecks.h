#pragma once

#include <QString>
#include <QVector>

/// The sensitivity checks of a setting, RLY_RKLMTEM_TEM, as a run window shows and changes them.
namespace SensitivityChecks {

struct Setting {
    int RNo = 0;
    int PNo = 0;
    QString Cdz;
    double value = 0;  ///< primary
};

struct Row {
    int ID = 0;
    QString Valsense, Note1, Rfault1, Note2, Rfault2;
    int Flg = 11;

    /// The parameter in use was never computed: `Valsense` means nothing.
    [[nodiscard]] bool isOpen() const;
    /// The sensitivity as it is shown: a figure, or that the parameter was not computed.
    [[nodiscard]] QString shown() const;
};

struct Checks {
    QVector<Row> rows;
    double sensitivity = -1;  ///< below 0: none
    QString reason;           ///< why there is none, or none that counts
};

/// Computes the sensitivity of a setting; one that exists is stored with its rows.
/// \param tells  a divisor of 0 is told in the dock
Checks check(int rTypeNo, const Setting& setting, bool tells);
/// The same for a look at a value that may still change: nothing is stored or told.
Checks look(int rTypeNo, const Setting& setting);

/// Parameter in use, 1 or 2.
int parameterInUse(int flg);
/// The flag that puts the other parameter in use; the kind of the check, its units digit, stays.
int otherParameter(int flg);
/// Setting whose check a row is; RNo 0 without such a row. The value is not filled.
Setting settingOf(int id);
bool storeFlag(int id, int flg);

}  // namespace SensitivityChecks
