#pragma once

#include <QString>
#include <QVector>

/// An operating mode to pick.
struct OfferedMode {
    int SysNo = 0;
    QString SysName;
};
/// The operating modes that change something, by number.
QVector<OfferedMode> offeredModes();
