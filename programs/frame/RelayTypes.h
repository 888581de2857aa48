#pragma once

#include <QHash>
#include <QString>
#include <QVector>

/// A setting of a relay type, a row of RTYPE.
struct SettingKind {
    int DzNo = 0;
    QString Cdz;
    int VType = 0;  ///< 1 current, 2 impedance, 3 voltage, 4 time, other none
    QString DspCdz;
};

struct RelayTypeInfo {
    int RTypeNo = 0;
    QString RTypeCode;
    int RType = 0;  ///< code of the element on which it is installed
    int NPart = 0;
    QVector<SettingKind> settings;  ///< by DzNo, the line length "L" included

    [[nodiscard]] const SettingKind* setting(const QString& cdz) const;
};

/// The relay types of the rule database, by number, read at one go.
QHash<int, RelayTypeInfo> readRelayTypes();

/// Whether a case of this type can be defined: the types that exist for coordination only, and the virtual relay,
/// cannot.
bool offeredForCases(int rTypeNo);

/// The name under which a line length is kept among the settings; it takes no part in calculations.
inline const QString kLineLength = QStringLiteral("L");
