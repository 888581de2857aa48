#pragma once

#include <QList>
#include <QString>
#include <QVector>
#include <array>

#include "programs/frame/StageColumns.h"

/// A case, a row of RLY_CASE_RLY.
struct CaseNode {
    int Case_No = -1;
    QString Case_Name;
    int RTypeNo = 0;
    QString RTypeCode;
    int Mlf = 0;           ///< 1 stands on a load-flow case, 0 on a scheme
    int Case_lf = -1;      ///< load-flow case number; -1 on a scheme
    QString Scheme = " ";  ///< scheme name; one blank on a load-flow case
    int NPara = 0;
    int LGup = 0;
    QString Note;
    std::array<int, kStages> PartFlg = {1, 1, 1, 1, 1};
};

/// One setting of one relay as the editor shows it; values are texts, as typed.
struct CaseSettingRow {
    int RNo = 0;
    QString Cdz;
    QString label;    ///< place of the relay
    QString station;  ///< power station or substation at the relay's end; empty when the network names none
    QString DspCdz;
    int VType = 0;  ///< kind of value: unitOf() has its unit
    std::array<QString, kStages> newValue;
    std::array<QString, kStages> oldValue;

    /// The same setting of the same relay, whatever its values.
    [[nodiscard]] bool isSameSetting(const CaseSettingRow& other) const {
        return RNo == other.RNo && Cdz == other.Cdz && label == other.label && station == other.station &&
               DspCdz == other.DspCdz && VType == other.VType;
    }
    bool operator==(const CaseSettingRow&) const = default;
};

/// What the editor shows of a case, and what a save takes.
struct CaseForm {
    QString name;
    QString note;
    bool onLoadFlow = false;
    QString source;       ///< name of the load-flow case or of the scheme
    bool primary = true;  ///< the values are primary, else secondary
    QVector<CaseSettingRow> rows;
    QList<int> bigSys;    ///< numbers of the maximum operating modes
    QList<int> smallSys;  ///< numbers of the minimum operating modes
    std::array<int, kStages> PartFlg = {1, 1, 1, 1, 1};
    bool operator==(const CaseForm&) const = default;
};
