#pragma once

#include <QString>
#include <QVector>
#include <optional>

#include "programs/workflow/RulesWithoutResult.h"

/// A setting of a relay part as a case has it.
struct ResultRow {
    int RNo = 0;
    QString RTypeCode;
    QString label;  ///< place of the relay
    int PNo = 0;
    QString Cdz;
    QString DspCdz;
    int VType = 0;
    double oldPrimary = 0;
    double primary = 0;
    double secondary = 0;
    int RuleNo = 0;  ///< rule that decided; 0 when the value stems from no rule
    QString ruleNote;
    QString reason;          ///< why the setting has no value; empty when it has one
    bool lacksTime = false;  ///< the operating time of a part that otherwise has a setting: it must not go for 0 s
    std::optional<double> sensitivity;
    bool sensitivityOpen = false;  ///< there is a check, but its parameters have never been computed

    /// A value of 0 counts only when a rule gave it.
    [[nodiscard]] bool hasValue() const { return primary != 0 || RuleNo != 0; }
};

/// The settings of the case that stands in RLY_RLYOBJ_TEM, in order of calculation, parts of a relay together.
/// \param withoutResult  of the run that made them; they give the reasons
QVector<ResultRow> resultTable(int caseNo, int rTypeNo, const QVector<RuleWithoutResult>& withoutResult = {});

/// Kinds of settings, `VType`.
inline constexpr int kCurrent = 1, kImpedance = 2, kVoltage = 3, kTime = 4;

/// Unit of a setting by its kind, "A", "ohm", "V", "s" or nothing.
QString unitOf(int vType);
