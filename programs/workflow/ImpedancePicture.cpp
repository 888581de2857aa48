#include "programs/workflow/ImpedancePicture.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/host/Text.h"
#include "programs/workflow/PictureWords.h"

namespace {

using Form = PictureShape::Form;
using Kind = PictureInk::Kind;

constexpr double kFarthest = 4;      // times the lines around; stages beyond it are cut off
constexpr double kArcSpread = 30;    // degrees to both sides of the line's angle
constexpr qsizetype kMostNames = 8;  // of neighbours without a choice
constexpr double kDegrees = 180 / std::numbers::pi;

QPointF point(Impedance z) { return {z.real(), z.imag()}; }

class Plane {
  public:
    Plane(const PictureData& data, const PictureChoice& choice)
        : data_(data), choice_(choice), words_(data, choice.secondary), line_(*data.lines->own.first().z) {
        scene_.equalScales = true;
        scene_.xTitle = words_.axis("R");
        scene_.yTitle = words_.axis("X");
        limit_ = kFarthest * extent();
    }

    PictureScene draw() {
        for (auto stage = data_.relay.stages.rbegin(); stage != data_.relay.stages.rend(); ++stage) add(*stage);
        for (int at = 0; at < data_.neighbours.size(); ++at)
            if (choice_.neighbour < 0 || choice_.neighbour == at) add(data_.neighbours[at], at);
        addOwn();
        for (const PictureFault& fault : data_.faults) add(fault);
        limitNames();
        setRange();
        return std::move(scene_);
    }

  private:
    [[nodiscard]] Impedance shown(Impedance z) const { return {words_.shown(z.real()), words_.shown(z.imag())}; }
    [[nodiscard]] Impedance along(double magnitude, Impedance direction) const {
        return direction * (magnitude / std::abs(direction));
    }

    /// Length of the lines around the relay, ohm primary.
    [[nodiscard]] double extent() const {
        double longest = 0;
        for (const PictureNeighbour& neighbour : data_.neighbours)
            if (neighbour.branch.z && !neighbour.branch.transformer)
                longest = std::max(longest, std::abs(*neighbour.branch.z));
        return std::abs(line_) + std::max(longest, std::abs(line_));
    }

    void addShape(PictureShape shape) {
        for (const QPointF& at : std::as_const(shape.points)) cover(at);
        scene_.shapes.append(std::move(shape));
    }
    void cover(QPointF at) {
        const double farthest = words_.shown(limit_);
        scene_.left = std::min(scene_.left, std::max(at.x(), -farthest));
        scene_.right = std::max(scene_.right, std::min(at.x(), farthest));
        scene_.bottom = std::min(scene_.bottom, std::max(at.y(), -farthest));
        scene_.top = std::max(scene_.top, std::min(at.y(), farthest));
    }
    /// A circle through `start` with the diameter `reach` along `direction`.
    void addCircle(Impedance start, double reach, Impedance direction, PictureShape shape) {
        const QPointF centre = point(shown(start + along(reach / 2, direction)));
        shape.form = Form::Circle;
        shape.points = {centre};
        shape.radius = words_.shown(reach / 2);
        for (const int side : {-1, 1}) {
            cover(centre + QPointF(side * shape.radius, 0));
            cover(centre + QPointF(0, side * shape.radius));
        }
        scene_.shapes.append(std::move(shape));
    }

    void add(const PictureStage& stage) {
        const PictureInk ink{Kind::Stage, stage.PNo};
        const QString text = words_.stage(stage);
        PictureShape shape{.ink = ink, .tip = text};
        shape.width = stage.PNo == choice_.part ? 3 : 1.8;
        addCircle(0, stage.value, line_, shape);
        scene_.labels.append({point(shown(along(std::min(stage.value, limit_ * 0.95), line_))), text, ink});
        scene_.legend.append({text, ink, Form::Circle});
    }

    void addOwn() {
        for (const PictureBranch& branch : data_.lines->own) {
            const bool first = &branch == &data_.lines->own.first();
            if (!branch.z) continue;
            const QString text = QString("%1 %2 ∠%3°")
                                     .arg(branch.at.ID_Name, words_.value(std::abs(*branch.z)),
                                          QString::number(std::arg(*branch.z) * kDegrees, 'f', 1));
            PictureShape shape{.points = {point(shown(branch.start)), point(shown(branch.start + *branch.z))},
                               .ink = {Kind::Line},
                               .tip = text};
            shape.width = first ? 4 : 2.5;
            addShape(shape);
            if (first) scene_.legend.append({Text::tr("本线路 ") + text, shape.ink});
        }
    }

    void add(const PictureNeighbour& neighbour, int number) {
        if (!neighbour.branch.z) return;
        const Impedance start = neighbour.branch.start, end = start + *neighbour.branch.z;
        const PictureInk ink{Kind::Neighbour, number};
        const QString text = words_.neighbour(neighbour);
        PictureShape shape{.points = {point(shown(start)), point(shown(end))}, .ink = ink, .tip = text};
        shape.width = 2.2;
        shape.dashed = neighbour.branch.transformer;
        addShape(shape);
        scene_.labels.append({point(shown(end)), neighbour.branch.at.ID_Name, ink});
        scene_.legend.append({text, ink, Form::Line, shape.dashed});
        for (const PictureStage& stage : neighbour.relay.stages) addStage(neighbour, stage, ink);
    }
    /// As the relay in hand sees it, through the infeed: a circle when the neighbour was chosen, else its end.
    void addStage(const PictureNeighbour& neighbour, const PictureStage& stage, PictureInk ink) {
        const double reach = neighbour.seen(stage.value) - std::abs(neighbour.branch.start);
        const Impedance start = neighbour.branch.start, direction = *neighbour.branch.z;
        PictureShape shape{.ink = ink, .tip = neighbour.name() + " " + words_.stage(stage)};
        shape.width = 1.3;
        shape.dashed = !neighbour.comparable();
        if (choice_.neighbour >= 0) {
            addCircle(start, reach, direction, shape);
            const double end = std::min(reach, limit_ * 0.9);
            scene_.labels.append({point(shown(start + along(end, direction))), words_.stage(stage), ink});
        } else if (reach < limit_) {
            shape.form = Form::Mark;
            shape.points = {point(shown(start + along(reach, direction)))};
            scene_.shapes.append(shape);
        }
    }

    void add(const PictureFault& fault) {
        const PictureInk ink{Kind::Fault};
        const double angle = std::arg(line_) * kDegrees;
        const QString text = words_.fault(fault);
        const bool outside = fault.value > limit_;
        if (!outside) {
            PictureShape shape{.form = Form::Arc, .points = {{0, 0}}, .ink = ink, .tip = text};
            shape.radius = words_.shown(fault.value);
            shape.fromAngle = angle - kArcSpread;
            shape.toAngle = angle + kArcSpread;
            shape.dashed = true;
            scene_.shapes.append(shape);
            cover(point(shown(along(fault.value, line_))));
        }
        scene_.legend.append(
            {Text::tr("测量阻抗 ") + text + (outside ? Text::tr("（图外）") : ""), ink, Form::Arc, true});
    }

    /// Only the first names stand in a picture of many neighbours.
    void limitNames() {
        if (choice_.neighbour >= 0 || data_.neighbours.size() <= kMostNames) return;
        const auto further = [](const PictureInk& ink) {
            return ink.kind == Kind::Neighbour && ink.number >= kMostNames;
        };
        scene_.labels.removeIf([&](const PictureLabel& label) { return further(label.ink); });
        scene_.legend.removeIf([&](const PictureLegendEntry& entry) { return further(entry.ink); });
        scene_.legend.append(
            {Text::tr("另有 %1 条支路").arg(data_.neighbours.size() - kMostNames), {Kind::Neighbour, int(kMostNames)}});
    }

    void setRange() {
        const double margin = 0.06 * std::max(scene_.right - scene_.left, scene_.top - scene_.bottom);
        scene_.left -= margin;
        scene_.right += margin;
        scene_.bottom -= margin;
        scene_.top += margin;
    }

    const PictureData& data_;
    const PictureChoice& choice_;
    PictureWords words_;
    Impedance line_;
    double limit_ = 0;
    PictureScene scene_{.right = 0, .top = 0};
};

QString whyEmpty(const PictureData& data) {
    if (data.relay.RNo == 0) return Text::tr("没有选定保护");
    if (!data.relay.impedance) return Text::tr("该保护没有阻抗定值，没有阻抗平面图");
    return data.lines ? QString() : data.noLines;
}

}  // namespace

PictureScene impedancePicture(const PictureData& data, const PictureChoice& choice) {
    PictureScene scene;
    const QString empty = whyEmpty(data);
    if (empty.isEmpty()) scene = Plane(data, choice).draw();
    scene.empty = empty;
    if (empty.isEmpty() && !data.relay.stages.isEmpty()) {
        scene.notes << Text::tr("画法: 各段按过原点、直径为定值、沿线路阻抗角的圆画");
        if (!data.faults.isEmpty()) scene.notes << Text::tr("测量阻抗只算出大小，画成圆弧");
    }
    PictureWords(data, choice.secondary).head(scene, Text::tr("阻抗平面图"), choice.part);
    return scene;
}
