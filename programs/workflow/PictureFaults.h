#pragma once

#include <QString>
#include <QVector>

class PictureNetwork;

/// What a rule found at the relay in a fault: the magnitude of the measured impedance, ohm, or of a current, A,
/// primary. The engine gives no angles.
struct PictureFault {
    int PNo = 0;  ///< part whose rule it is; 0 of a sensitivity check, which is for all
    int RuleNo = 0;
    double value = 0;
    QString note;   ///< what the rule is for
    QString fault;  ///< "单相接地短路 青白I 100%"; empty when the fault is not known any more
    QString mode;   ///< operating mode; empty as above
    bool shortCircuit = false;
};

/// The faults of the relay's rules and sensitivity checks that have been computed, largest first.
/// \param impedances  measured impedances, else currents
QVector<PictureFault> pictureFaults(int caseNo, int rNo, bool impedances, const PictureNetwork& network);
