#pragma once

#include <QString>
#include <QVector>
#include <optional>

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
    bool ruled = false;  ///< a rule in force gives this setting
    std::optional<double> sensitivity;
};

/// The settings of the case that stands in RLY_RLYOBJ_TEM, in order of calculation, parts of a relay together.
QVector<ResultRow> resultTable(int caseNo, int rTypeNo);

/// Unit of a setting by its kind, "A", "ohm", "V", "s" or nothing.
QString unitOf(int vType);
