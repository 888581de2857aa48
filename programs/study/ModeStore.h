#pragma once

#include <QString>
#include <QVector>
#include <vector>

#include "platform/host/NetworkModel.h"

/// A branch change of an operating mode, as entered.
struct ModeRow {
    int M10 = 1;  ///< 1 positive sequence, 0 zero sequence
    QString ID_Name, I_Name, J_Name;
    int Flg = 0;   ///< 1: the branch is cut out
    int UNIT = 0;  ///< 0 per unit, 1 ohm
    QString R = "0", X = "0";
};

struct OperatingModeRecord {
    int SysNo = 0;  ///< 0: not saved yet
    QString SysName;
    QString Note;
    QVector<ModeRow> rows;
};

/// Operating modes of the project, RLY_RSYSMODE and RLY_RSYSMODEDLS.
class ModeStore {
  public:
    /// Checks and stores one mode, all or nothing; a new one gets its number.
    /// \return false with a message when something is missing, no number, or the name is taken
    static bool save(OperatingModeRecord& mode);
    /// Stores the modes that came with a network; a mode of the same name is replaced and keeps its number.
    static bool saveImported(const std::vector<host::OperatingMode>& modes);
    static QVector<OperatingModeRecord> list();
    /// Number of a mode by its name; 0 when there is none.
    static int numberOf(const QString& name);
    static bool remove(int sysNo);
};
