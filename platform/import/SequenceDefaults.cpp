#include "platform/import/SequenceDefaults.h"

#include <cmath>

#include "platform/host/Text.h"

namespace import {

namespace {

bool complete(double& r0, double& x0, double r, double x) {
    if (!std::isnan(r0) && !std::isnan(x0)) return false;
    if (std::isnan(r0)) r0 = r;
    if (std::isnan(x0)) x0 = x;
    return true;
}

int completeWindings(host::Transformer3& t) {
    int count = 0;
    for (int w = 0; w < 3; ++w) count += complete(t.r0[w], t.x0[w], t.r1[w], t.x1[w]);
    return count > 0;
}

/// Without a path to ground the zero-sequence impedance of a machine does not matter.
bool completeMachine(host::Generator& g) {
    return complete(g.r0, g.x0, g.grounded ? g.r1 : 0, g.grounded ? g.x1 / 2 : 0) && g.grounded;
}

void tell(const Options& options, Report& report, const std::string& kind, int count, const std::string& rule) {
    if (count == 0) return;
    if (!options.defaultSequenceData)
        throw ImportError(
            "", 0, kind + Text::say("：") + std::to_string(count) + Text::say(" 个没有零序数据，未允许使用缺省值"));
    report.add(Finding::Kind::Defaulted, kind, Text::say("没有零序数据，取 ") + rule, count);
}

}  // namespace

void completeSequenceData(host::NetworkModel& model, const Options& options, Report& report) {
    int lines = 0, transformers = 0, machines = 0, shunts = 0;
    for (auto& line : model.lines) lines += complete(line.r0, line.x0, 3 * line.r1, 3 * line.x1);
    for (auto& t : model.transformers2) transformers += complete(t.r0, t.x0, t.r1, t.x1);
    for (auto& t : model.transformers3) transformers += completeWindings(t);
    for (auto& g : model.generators) machines += completeMachine(g);
    for (auto& s : model.shunts) shunts += complete(s.r0, s.x0, 0, s.x1) && s.grounded;
    tell(options, report, Text::say("线路"), lines, "R0 + jX0 = 3 (R1 + jX1)");
    tell(options, report, Text::say("变压器"), transformers, "Z0 = Z1");
    tell(options, report, Text::say("发电机"), machines, "R0 + jX0 = R1 + jX1 / 2");
    tell(options, report, Text::say("并联电抗器"), shunts, "X0 = X1");
}

}  // namespace import
