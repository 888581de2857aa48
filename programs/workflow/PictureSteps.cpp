#include "programs/workflow/PictureSteps.h"

#include <algorithm>

namespace {

constexpr double kInstantaneous = 0.1;   // s
constexpr double kTimeNoise = 0.0005;    // s, values are stored with six digits
constexpr double kDepthNoise = 1.00001;  // settings and impedances are rounded

std::optional<PictureGap> gapBetween(const PictureStep& own, const PictureStep& other, double end,
                                     const QHash<int, double>& timeSteps) {
    const double from = std::max({own.from, other.from, end}), to = std::min(own.to, other.to);
    if (to <= from * kDepthNoise || isInstantaneous(own.time)) return std::nullopt;
    const auto wanted = timeSteps.constFind(own.PNo);
    const bool known = wanted != timeSteps.constEnd();
    const double difference = own.time - other.time;
    if (known ? difference >= *wanted - kTimeNoise : difference > kTimeNoise) return std::nullopt;
    return PictureGap{own.PNo, other.PNo, from, to, difference, known ? std::optional<double>(*wanted) : std::nullopt};
}

}  // namespace

bool isInstantaneous(double time) { return time < kInstantaneous; }

QVector<PictureStep> staircase(QVector<ReachingStage> stages) {
    stages.removeIf([](const ReachingStage& stage) { return !stage.time || stage.depth <= 0; });
    std::stable_sort(stages.begin(), stages.end(),
                     [](const ReachingStage& a, const ReachingStage& b) { return *a.time < *b.time; });
    QVector<PictureStep> steps;
    double reached = 0;
    for (const ReachingStage& stage : stages) {
        if (stage.depth <= reached) continue;
        steps.append({stage.PNo, reached, stage.depth, *stage.time});
        reached = stage.depth;
    }
    return steps;
}

QVector<PictureGap> gaps(const QVector<PictureStep>& own, const QVector<PictureStep>& other, double end,
                         const QHash<int, double>& timeSteps) {
    QVector<PictureGap> found;
    for (const PictureStep& step : own)
        for (const PictureStep& against : other)
            if (const auto gap = gapBetween(step, against, end, timeSteps)) found.append(*gap);
    return found;
}

QVector<PictureStep> overreaching(const QVector<PictureStep>& own, double end) {
    QVector<PictureStep> found;
    for (const PictureStep& step : own)
        if (isInstantaneous(step.time) && step.to > end * kDepthNoise) found.append(step);
    return found;
}
