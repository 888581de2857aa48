#pragma once

#include <QHash>
#include <QStringList>
#include <QVector>
#include <optional>

#include "programs/workflow/PictureFaults.h"
#include "programs/workflow/PictureNetwork.h"
#include "programs/workflow/PictureStages.h"
#include "programs/workflow/PictureSteps.h"

/// A branch behind the line's far end and the relay there that looks away.
struct PictureNeighbour {
    PictureBranch branch;
    PictureRelay relay;           ///< RNo 0: none that the relay could coordinate with
    double scale = 1;             ///< its values at the voltage of the relay in hand
    std::optional<double> share;  ///< branch coefficient; 0: its currents oppose those of the relay

    [[nodiscard]] QString name() const { return relay.RNo ? relay.label : branch.at.ID_Name; }
    /// A share that a value can be carried over with.
    [[nodiscard]] bool comparable() const { return share.value_or(0) > 0; }
    /// A value of its relay as the relay in hand measures it: a reach from the start of its branch on, ohm, through
    /// the infeed, or a current. Without a comparable share as if all current came through the relay in hand.
    [[nodiscard]] double seen(double value) const;
};

/// A fault of the coordination: a stretch without its time step, or an overreach. The first names a neighbour.
struct PictureFinding {
    int neighbour = -1;       ///< place among the neighbours, -1 an overreach
    double from = 0, to = 0;  ///< as the relay measures it, ohm or A
    double time = 0;          ///< of the relay's step
    QString sentence;
};

/// All that the pictures of a relay are drawn from. Values are primary, at the relay's voltage.
struct PictureData {
    PictureRelay relay;  ///< RNo 0: there is no such relay
    QString caseName;
    QString typeName;
    std::optional<PictureLines> lines;
    QString noLines;  ///< why there are none
    QVector<PictureNeighbour> neighbours;
    QVector<PictureFault> faults;
    QHash<int, double> timeSteps;      ///< dt of the rules in force, by part
    std::optional<double> lineEnd;     ///< ohm up to the line's end, or the largest current of a short circuit there
    QVector<PictureFinding> findings;  ///< worst first
    QStringList notes;                 ///< what is missing and why

    /// How far a value reaches, see ReachingStage; and back.
    [[nodiscard]] double depth(double value) const { return relay.impedance ? value : 1 / value; }
    /// Steps of the relay itself, and of a neighbour as the relay sees it.
    [[nodiscard]] QVector<PictureStep> steps() const;
    [[nodiscard]] QVector<PictureStep> steps(const PictureNeighbour& neighbour) const;
};

/// \param network  of the case \param rNo  a relay of any type
PictureData readPictureData(int caseNo, int rNo, const PictureNetwork& network);
