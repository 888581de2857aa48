#pragma once

#include <QHash>
#include <QVector>
#include <optional>

/// How far a stage reaches into the network and when it acts. `depth` grows with the distance: ohm for an impedance
/// stage; the reciprocal of the current for a current stage, which acts on all larger currents.
struct ReachingStage {
    int PNo = 0;
    double depth = 0;
    std::optional<double> time;  ///< s
};

/// The fastest stage over a stretch.
struct PictureStep {
    int PNo = 0;
    double from = 0, to = 0;
    double time = 0;
};

/// Stages one behind the other: over each stretch the fastest that reaches it. Stages without a time are left out.
QVector<PictureStep> staircase(QVector<ReachingStage> stages);

/// A stretch where a relay acts too early against one that it has to wait for.
struct PictureGap {
    int PNo = 0;    ///< its part
    int CoPNo = 0;  ///< the part of the other
    double from = 0, to = 0;
    double difference = 0;         ///< s
    std::optional<double> wanted;  ///< time step that the difference falls short of; nothing: there is no step to wait
};

/// The stretches behind `end` where the time between the relay's steps and the other's is below the step of the
/// relay's part, or not above 0 where the part has none. Instantaneous stages are told by overreaching() instead.
QVector<PictureGap> gaps(const QVector<PictureStep>& own, const QVector<PictureStep>& other, double end,
                         const QHash<int, double>& timeSteps);

/// Instantaneous stages that reach beyond the end of the line.
QVector<PictureStep> overreaching(const QVector<PictureStep>& own, double end);

/// Faster than any stage that waits for another.
bool isInstantaneous(double time);
