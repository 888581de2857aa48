#include "programs/workflow/StepPicture.h"

#include <algorithm>
#include <cmath>

#include "platform/host/Text.h"
#include "programs/workflow/PictureWords.h"

namespace {

using Form = PictureShape::Form;
using Kind = PictureInk::Kind;

constexpr double kFarthest = 3;  // times the largest reach of the relay; steps behind it are open
constexpr int kLift = 3, kLifts = 5;
constexpr qsizetype kMostNames = 8;
constexpr double kLowest = 1.0;  // s, of the time axis' top

class Staircase {
  public:
    Staircase(const PictureData& data, const PictureChoice& choice)
        : data_(data), choice_(choice), words_(data, choice.secondary) {
        scene_.logX = !data.relay.impedance;
        scene_.xTitle = words_.axis(data.relay.impedance ? Text::tr("测量阻抗") : Text::tr("流过本保护的电流"));
        scene_.yTitle = Text::tr("动作时间 / s");
        setRange();
    }

    PictureScene draw() {
        for (int at = 0; at < data_.neighbours.size(); ++at)
            if (choice_.neighbour < 0 || choice_.neighbour == at) add(data_.neighbours[at], at);
        addOwn();
        for (const PictureFinding& finding : data_.findings) add(finding);
        addEnd();
        if (!data_.relay.impedance)
            for (const PictureFault& fault : data_.faults) add(fault);
        return std::move(scene_);
    }

  private:
    /// Edges of a step on the axis. A current step goes on to the largest currents.
    [[nodiscard]] double edge(double depth) const {
        if (data_.relay.impedance) return std::min(words_.shown(depth), scene_.right);
        return depth > 0 ? std::min(words_.shown(1 / depth), scene_.right) : scene_.right;
    }
    [[nodiscard]] bool cutOff(double depth) const {
        return data_.relay.impedance && words_.shown(depth) > scene_.right;
    }

    void setRange() {
        double smallest = 1e300, largest = 0, latest = 0;
        const auto take = [&](double value) {
            smallest = std::min(smallest, value);
            largest = std::max(largest, value);
        };
        for (const PictureStage& stage : data_.relay.stages) take(stage.value);
        if (data_.lineEnd) take(*data_.lineEnd);
        if (data_.relay.impedance && data_.lines) largest = std::min(largest, 4 * reachAround());
        for (const PictureStage& stage : data_.relay.stages) latest = std::max(latest, stage.time.value_or(0));
        const double own = largest;
        for (int at = 0; at < data_.neighbours.size(); ++at) {
            if (choice_.neighbour >= 0 && choice_.neighbour != at) continue;
            const PictureNeighbour& neighbour = data_.neighbours[at];
            for (const PictureStage& stage : neighbour.relay.stages) {
                if (neighbour.seen(stage.value) < kFarthest * own) take(neighbour.seen(stage.value));
                latest = std::max(latest, stage.time.value_or(0));
            }
        }
        scene_.left = data_.relay.impedance ? 0 : words_.shown(smallest * 0.7);
        scene_.right = words_.shown(largest * (data_.relay.impedance ? 1.08 : 2));
        scene_.top = std::max(latest, kLowest) * 1.12;
        scene_.bottom = -0.02 * scene_.top;
    }
    /// Ohm up to the ends of the lines behind, as the relay measures them.
    [[nodiscard]] double reachAround() const {
        double farthest = 2 * data_.lines->end.value_or(0);
        for (const PictureNeighbour& neighbour : data_.neighbours)
            if (neighbour.branch.z) farthest = std::max(farthest, neighbour.seen(std::abs(*neighbour.branch.z)));
        return farthest;
    }

    /// The line of steps from the relay outwards; upright between them.
    void addSteps(const QVector<PictureStep>& steps, double from, PictureShape shape) {
        for (const PictureStep& step : steps) {
            if (edge(step.to) == edge(step.from) || (from > 0 && step.to <= from)) continue;
            shape.points.append({edge(std::max(step.from, from)), step.time});
            shape.points.append({edge(step.to), step.time});
        }
        if (shape.points.isEmpty()) return;
        shape.openEnd = cutOff(steps.last().to);
        if (!data_.relay.impedance) {
            std::reverse(shape.points.begin(), shape.points.end());
            shape.openEnd = true;
        }
        scene_.shapes.append(shape);
    }

    void addOwn() {
        PictureShape line{.ink = {Kind::Line}, .tip = data_.relay.label};
        line.width = 2.2;
        addSteps(data_.steps(), 0, line);
        for (const PictureStep& step : data_.steps()) {
            const PictureStage& stage = *data_.relay.stage(step.PNo);
            const PictureInk ink{Kind::Stage, step.PNo};
            PictureShape shape{.points = {{edge(step.from), step.time}, {edge(step.to), step.time}},
                               .ink = ink,
                               .tip = words_.stage(stage)};
            shape.width = step.PNo == choice_.part ? 6 : 4;
            scene_.shapes.append(shape);
            scene_.labels.append({(shape.points[0] + shape.points[1]) / 2, words_.stage(stage), ink});
            scene_.legend.append({words_.stage(stage), ink});
        }
    }

    void add(const PictureNeighbour& neighbour, int number) {
        const auto steps = data_.steps(neighbour);
        if (steps.isEmpty()) return;
        const PictureInk ink{Kind::Neighbour, number};
        PictureShape shape{.ink = ink, .tip = tip(neighbour)};
        shape.width = 1.8;
        shape.dashed = !neighbour.comparable();
        shape.lift = kLift * (1 + number % kLifts);
        addSteps(steps, data_.relay.impedance ? std::abs(neighbour.branch.start) : 0, shape);
        if (choice_.neighbour >= 0) addStageNames(neighbour, steps, ink);
        if (choice_.neighbour < 0 && number > kMostNames) return;
        const bool further = choice_.neighbour < 0 && number == kMostNames;
        scene_.legend.append({further ? Text::tr("另有 %1 条支路").arg(data_.neighbours.size() - kMostNames)
                                      : words_.neighbour(neighbour),
                              ink, Form::Line, shape.dashed});
    }
    [[nodiscard]] QString tip(const PictureNeighbour& neighbour) const {
        QStringList lines{words_.neighbour(neighbour)};
        for (const PictureStage& stage : neighbour.relay.stages) lines << words_.stage(stage);
        return lines.join('\n');
    }
    void addStageNames(const PictureNeighbour& neighbour, const QVector<PictureStep>& steps, PictureInk ink) {
        for (const PictureStep& step : steps)
            scene_.labels.append({{edge(step.to), step.time}, words_.stage(*neighbour.relay.stage(step.PNo)), ink});
    }

    void add(const PictureFinding& finding) {
        if (choice_.neighbour >= 0 && finding.neighbour >= 0 && finding.neighbour != choice_.neighbour) return;
        const double from = edge(data_.depth(finding.from)), to = edge(data_.depth(finding.to));
        PictureShape band{.form = Form::Band,
                          .points = {{from, scene_.bottom}, {to, scene_.top}},
                          .ink = {Kind::Bad},
                          .tip = finding.sentence};
        scene_.shapes.prepend(band);
        PictureShape line{
            .points = {{from, finding.time}, {to, finding.time}}, .ink = {Kind::Bad}, .tip = finding.sentence};
        line.width = 6;
        scene_.shapes.append(line);
        scene_.labels.append({{from, finding.time}, finding.sentence, {Kind::Bad}});
    }

    void addUpright(double value, const PictureInk& ink, const QString& text, const QString& tip) {
        const double x = words_.shown(value);
        if (x < scene_.left || x > scene_.right) return;
        PictureShape shape{.points = {{x, scene_.bottom}, {x, scene_.top}}, .ink = ink, .tip = tip};
        shape.width = 1.2;
        shape.dashed = true;
        scene_.shapes.append(shape);
        scene_.labels.append({{x, scene_.top * 0.97}, text, ink});
    }
    void addEnd() {
        if (!data_.relay.impedance || !data_.lineEnd) return;
        const QString text = Text::tr("本线路末端 ") + words_.value(*data_.lineEnd);
        addUpright(*data_.lineEnd, {Kind::Quiet}, text, text);
    }
    void add(const PictureFault& fault) {
        const QString text = words_.fault(fault);
        addUpright(fault.value, {Kind::Fault}, words_.value(fault.value), text);
        scene_.legend.append({text, {Kind::Fault}, Form::Line, true});
    }

    const PictureData& data_;
    const PictureChoice& choice_;
    PictureWords words_;
    PictureScene scene_;
};

QString whyEmpty(const PictureData& data) {
    if (data.relay.RNo == 0) return Text::tr("没有选定保护");
    if (data.steps().isEmpty()) return Text::tr("没有可画的段: ") + data.relay.missing.join(Text::tr("，"));
    return {};
}

}  // namespace

PictureScene stepPicture(const PictureData& data, const PictureChoice& choice) {
    PictureScene scene;
    const QString empty = whyEmpty(data);
    if (empty.isEmpty()) scene = Staircase(data, choice).draw();
    scene.empty = empty;
    PictureWords(data, choice.secondary).head(scene, Text::tr("时间配合图"), choice.part);
    return scene;
}
