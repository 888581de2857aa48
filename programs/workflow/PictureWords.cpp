#include "programs/workflow/PictureWords.h"

#include <algorithm>
#include <cmath>

#include "platform/host/Text.h"
#include "programs/workflow/ResultTable.h"

namespace {

/// Four digits, but no more than three behind the point.
QString figure(double value) {
    const int whole = value >= 1 ? int(std::floor(std::log10(value))) + 1 : 1;
    return QString::number(value, 'f', std::clamp(4 - whole, 0, 3));
}

QPair<int, int> order(const PictureInk& ink) { return {int(ink.kind), ink.number}; }

}  // namespace

PictureWords::PictureWords(const PictureData& data, bool secondary)
    : data_(data),
      secondary_(secondary),
      factor_(secondary ? data.relay.toSecondary : 1),
      unit_(unitOf(data.relay.impedance ? kImpedance : kCurrent)) {}

QString PictureWords::value(double primary) const { return figure(shown(primary)) + " " + unit_; }

QString PictureWords::stage(const PictureStage& stage) const {
    const QString time = stage.time ? QString::number(*stage.time, 'f', 2) + " s" : Text::tr("时间未知");
    return stageName(stage.PNo) + " " + value(stage.value) + " " + time;
}

QString PictureWords::neighbour(const PictureNeighbour& at) const {
    QString text = at.name();
    if (data_.relay.impedance && at.branch.z) text += " " + value(std::abs(*at.branch.z));
    if (at.relay.RNo == 0) return text + Text::tr("，没有同类保护");
    if (!at.comparable()) return text;
    return data_.relay.impedance ? text + Text::tr("，助增系数 %1").arg(figure(1 / *at.share))
                                 : text + Text::tr("，分支系数 %1").arg(figure(*at.share));
}

QString PictureWords::fault(const PictureFault& fault) const {
    QStringList lines{value(fault.value) + "  " + fault.note};
    if (!fault.fault.isEmpty()) lines << fault.fault + Text::tr("，") + fault.mode;
    return lines.join('\n');
}

QString PictureWords::axis(const QString& quantity) const {
    return quantity + " / " + unit_ + (secondary_ ? Text::tr("（二次）") : Text::tr("（一次）"));
}

void PictureWords::head(PictureScene& scene, const QString& kind, int part) const {
    scene.title = kind + "  " + data_.relay.label;
    scene.subtitle = data_.caseName + "  " + data_.typeName + (part > 0 ? "  " + stageName(part) : QString());
    for (const PictureFinding& finding : data_.findings) scene.findings << finding.sentence;
    if (secondary_ && !scene.findings.isEmpty()) scene.findings << Text::tr("（以上为一次值）");
    scene.notes += data_.notes;
    std::stable_sort(scene.legend.begin(), scene.legend.end(),
                     [](const auto& a, const auto& b) { return order(a.ink) < order(b.ink); });
}
