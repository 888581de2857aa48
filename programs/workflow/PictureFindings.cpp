#include "programs/workflow/PictureFindings.h"

#include <algorithm>

#include "platform/host/Text.h"
#include "programs/workflow/PictureData.h"
#include "programs/workflow/ResultTable.h"

namespace {

constexpr qsizetype kMostNames = 4;  // in one note

QString valueText(const PictureData& data, double value) {
    return QString::number(value, 'f', data.relay.impedance ? 2 : 1) + " " +
           unitOf(data.relay.impedance ? kImpedance : kCurrent);
}

QString seconds(double time) { return QString::number(time, 'f', 2) + " s"; }

PictureFinding overreach(const PictureData& data, const PictureStep& step) {
    const double reach = data.depth(step.to);
    const QString text =
        data.relay.impedance ? Text::tr("%1伸出本线路末端：%2 > %3") : Text::tr("%1在本线路末端故障时会动作：%2 < %3");
    return {-1, *data.lineEnd, reach, step.time,
            text.arg(stageName(step.PNo), valueText(data, reach), valueText(data, *data.lineEnd))};
}

PictureFinding missingStep(const PictureData& data, int neighbour, const PictureGap& gap) {
    const QString text =
        Text::tr("%1与%2的%3时差 %4")
            .arg(stageName(gap.PNo), data.neighbours[neighbour].name(), stageName(gap.CoPNo), seconds(gap.difference));
    const double time = *data.relay.stage(gap.PNo)->time;
    return {neighbour, data.depth(gap.from), data.depth(gap.to), time,
            gap.wanted ? text + " < " + seconds(*gap.wanted) : text};
}

/// Where the comparison with the neighbours begins. With no current at the line's end the reach of an instantaneous
/// stage is taken for it, since it cannot be judged.
double beginning(const PictureData& data, const QVector<PictureStep>& own) {
    if (data.lineEnd) return data.depth(*data.lineEnd);
    double end = 0;
    for (const PictureStep& step : own)
        if (isInstantaneous(step.time)) end = std::max(end, step.to);
    return end;
}

void compare(PictureData& data) {
    const QVector<PictureStep> own = data.steps();
    if (data.lineEnd)
        for (const PictureStep& step : overreaching(own, data.depth(*data.lineEnd)))
            data.findings.append(overreach(data, step));
    const double begin = beginning(data, own);
    for (int at = 0; at < data.neighbours.size(); ++at) {
        const PictureNeighbour& neighbour = data.neighbours[at];
        if (!neighbour.comparable()) continue;
        const double start = data.relay.impedance ? std::max(begin, std::abs(neighbour.branch.start)) : begin;
        for (const PictureGap& gap : gaps(own, data.steps(neighbour), start, data.timeSteps))
            data.findings.append(missingStep(data, at, gap));
    }
    const auto shortfall = [](const PictureFinding& finding) { return finding.neighbour < 0 ? 0 : 1; };
    std::stable_sort(data.findings.begin(), data.findings.end(),
                     [&](const auto& a, const auto& b) { return shortfall(a) < shortfall(b); });
}

/// The first of many names, and how many they are.
QString listed(const QStringList& names) {
    const QString first = names.mid(0, kMostNames).join(Text::tr("、"));
    return names.size() > kMostNames ? Text::tr("%1等 %2 处").arg(first).arg(names.size()) : first;
}

void noteNeighbours(PictureData& data) {
    QStringList unknown, opposed;
    for (const PictureNeighbour& neighbour : data.neighbours) {
        if (!neighbour.relay.missing.isEmpty())
            data.notes << neighbour.name() + ": " + neighbour.relay.missing.join(Text::tr("，"));
        if (neighbour.relay.stages.isEmpty()) continue;
        if (!neighbour.share) unknown << neighbour.name();
        if (neighbour.share && *neighbour.share == 0) opposed << neighbour.name();
    }
    if (!opposed.isEmpty()) data.notes << Text::tr("电流方向与本保护相反，不需配合: %1").arg(listed(opposed));
    if (!unknown.isEmpty()) data.notes << Text::tr("没有分支系数，按 1 画，不校核时差: %1").arg(listed(unknown));
}

void noteMissing(PictureData& data) {
    for (const QString& sentence : data.relay.missing) data.notes << sentence;
    if (!data.noLines.isEmpty()) data.notes << data.noLines;
    if (data.lines && data.neighbours.isEmpty()) data.notes << Text::tr("本线路对侧没有其他线路和变压器");
    if (data.relay.impedance && data.faults.isEmpty()) data.notes << Text::tr("没有算出故障时的测量阻抗");
    if (!data.relay.impedance && !data.lineEnd && !data.relay.stages.isEmpty())
        data.notes << Text::tr("没有算出本线路末端短路时的电流，不校核一段是否超越");
}

}  // namespace

void addFindings(PictureData& data) {
    compare(data);
    noteMissing(data);
    noteNeighbours(data);
}
