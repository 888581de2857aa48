#include <array>
#include <cmath>
#include <unordered_map>
#include <unordered_set>

#include "platform/host/Text.h"
#include "platform/import/Import.h"
#include "platform/import/Islands.h"
#include "platform/import/Names.h"
#include "platform/import/Tally.h"

namespace import {

using enum Finding::Kind;

namespace {

constexpr double smallestReactance = 1e-6;  ///< per unit, in place of an impedance that is zero
constexpr double largestImpedance = 1e12;   ///< per unit; more is a slip, and squares of it would soon overflow
constexpr double smallestKv = 1e-3, largestKv = 1e4;
constexpr double smallestMva = 1e-6, largestMva = 1e9;
constexpr double largestValue = 1e9;  ///< charging per unit, currents A, lengths km

void came(const host::NetworkModel& model, Report& report) {
    const std::array<std::pair<std::string, std::size_t>, 13> counts{
        {{Text::say("厂站"), model.stations.size()},
         {Text::say("节点"), model.nodes.size()},
         {Text::say("线路"), model.lines.size()},
         {Text::say("两绕组变压器"), model.transformers2.size()},
         {Text::say("三绕组变压器"), model.transformers3.size()},
         {Text::say("发电机"), model.generators.size()},
         {Text::say("并联电容器电抗器"), model.shunts.size()},
         {Text::say("负荷"), model.loads.size()},
         {Text::say("开关"), model.switches.size()},
         {Text::say("互感"), model.mutuals.size()},
         {Text::say("基础方案"), model.schemes.size()},
         {Text::say("潮流作业"), model.loadFlow.size()},
         {Text::say("运行方式"), model.modes.size()}}};
    std::vector<Finding> first;
    for (const auto& [subject, count] : counts)
        if (count > 0) first.push_back({Finding::Kind::Came, subject, Text::say("导入"), static_cast<int>(count)});
    report.findings.insert(report.findings.begin(), first.begin(), first.end());
}

/// Names of one kind: fit for the tables and unique.
class NameCheck {
  public:
    explicit NameCheck(std::string kind, int maxLength = maxNameLength) : kind_(std::move(kind)), max_(maxLength) {}
    void operator()(const std::string& name) {
        if (const std::string why = whyNoName(name, max_); !why.empty())
            throw ImportError("", 0, kind_ + "“" + name + "”：" + why);
        if (!names_.insert(name).second) throw ImportError("", 0, kind_ + "“" + name + Text::say("”重名"));
    }
    [[nodiscard]] bool knows(const std::string& name) const { return names_.contains(name); }

  private:
    std::string kind_;
    int max_;
    std::unordered_set<std::string> names_;
};

NameCheck checkNames(const host::NetworkModel& model) {
    NameCheck nodes(Text::say("节点")),
        others[] = {NameCheck(Text::say("厂站")),     NameCheck(Text::say("线路")),
                    NameCheck(Text::say("变压器")),   NameCheck(Text::say("变压器")),
                    NameCheck(Text::say("发电机")),   NameCheck(Text::say("电容器电抗器")),
                    NameCheck(Text::say("开关")),     NameCheck(Text::say("基础方案"), maxSchemeLength),
                    NameCheck(Text::say("运行方式")), NameCheck(Text::say("潮流作业"))};
    for (const auto& n : model.nodes) nodes(n.name);
    NameCheck withStars = nodes;
    for (const auto& t : model.transformers3) withStars(t.star);
    for (const auto& e : model.stations) others[0](e.name);
    for (const auto& e : model.lines) others[1](e.name);
    for (const auto& e : model.transformers2) others[2](e.name);
    for (const auto& e : model.transformers3) others[3](e.name);
    for (const auto& e : model.generators) others[4](e.name);
    for (const auto& e : model.shunts) others[5](e.name);
    for (const auto& e : model.switches) others[6](e.name);
    for (const auto& e : model.schemes) others[7](e.name);
    for (const auto& e : model.modes) others[8](e.name);
    for (const auto& e : model.loadFlow) others[9](e.name);
    return nodes;
}

void checkReferences(const host::NetworkModel& model, const NameCheck& nodes) {
    const auto need = [&](const std::string& element, const std::string& node) {
        if (!nodes.knows(node)) throw ImportError("", 0, "“" + element + Text::say("”：没有节点“") + node + "”");
    };
    for (const auto& e : model.lines) need(e.name, e.i), need(e.name, e.j);
    for (const auto& e : model.transformers2) need(e.name, e.i.node), need(e.name, e.j.node);
    for (const auto& e : model.transformers3)
        for (const auto& w : e.winding) need(e.name, w.node);
    for (const auto& e : model.generators) need(e.name, e.node);
    for (const auto& e : model.shunts) need(e.name, e.node);
    for (const auto& e : model.loads) need(e.name, e.node);
    for (const auto& e : model.switches) need(e.name, e.i), need(e.name, e.j);
}

/// An impedance that is zero becomes the smallest reactance.
/// \throws ImportError for one that is not finite or beyond every measure
void repair(Tally& tally, const char* kind, const std::string& name, double& r, double& x) {
    if (!std::isfinite(r) || !std::isfinite(x)) throw ImportError("", 0, "“" + name + Text::say("”：阻抗不是有限的数"));
    if (std::hypot(r, x) > largestImpedance) throw ImportError("", 0, "“" + name + Text::say("”：阻抗过大"));
    if (std::hypot(r, x) >= smallestReactance) return;
    r = 0, x = smallestReactance;
    tally.note(Changed, Text::say(kind), Text::say("阻抗为零，改为 j1e-6"), name);
}

void checkLines(host::NetworkModel& model, Tally& tally) {
    for (auto& line : model.lines) {
        for (const double value : {line.b1, line.b0, line.ratedA, line.maxLoadA, line.lengthKm})
            if (std::abs(value) > largestValue)
                throw ImportError("", 0, Text::say("线路“") + line.name + Text::say("”：数值超出范围"));
        if (line.x0 == 0)
            tally.note(Suspicious, Text::say("线路"), "x0 = 0", line.name);
        else if (line.r1 > 0 && line.r0 < line.r1)
            tally.note(Suspicious, Text::say("线路"), "r0 < r1", line.name);
        repair(tally, QT_TRANSLATE_NOOP("Text", "线路"), line.name, line.r1, line.x1);
        repair(tally, QT_TRANSLATE_NOOP("Text", "线路零序"), line.name, line.r0, line.x0);
    }
}

/// What the calculation would refuse. \pre  lines are checked
void checkMutuals(host::NetworkModel& model, Tally& tally) {
    std::unordered_map<std::string, double> z0;
    for (const auto& line : model.lines) z0[line.name] = std::hypot(line.r0, line.x0);
    std::erase_if(model.mutuals, [&](const host::Mutual& m) {
        const auto fail = [&](const std::string& what) {
            throw ImportError("", 0, "“" + m.first + Text::say("”与“") + m.second + Text::say("”的互感：") + what);
        };
        if (m.first == m.second) fail(Text::say("线路与自身不能有互感"));
        if (!z0.contains(m.first) || !z0.contains(m.second)) fail(Text::say("没有这条线路"));
        if (!(m.firstFrom < m.firstTo) || !(m.secondFrom < m.secondTo)) fail(Text::say("耦合段没有长度"));
        const double zm = std::hypot(m.r0, m.x0);
        if (!(zm * zm < z0[m.first] * z0[m.second])) fail(Text::say("不小于线路本身的零序阻抗"));
        if (zm == 0) tally.note(Changed, Text::say("互感"), Text::say("为零，不导入"), m.first);
        return zm == 0;
    });
}

void checkTransformers(host::NetworkModel& model, Tally& tally) {
    for (auto& t : model.transformers2) {
        if (std::abs(t.maxLoadA) > largestValue)
            throw ImportError("", 0, Text::say("变压器“") + t.name + Text::say("”：数值超出范围"));
        if (t.x0 == 0) tally.note(Suspicious, Text::say("变压器"), "x0 = 0", t.name);
        repair(tally, QT_TRANSLATE_NOOP("Text", "变压器"), t.name, t.r1, t.x1);
        repair(tally, QT_TRANSLATE_NOOP("Text", "变压器零序"), t.name, t.r0, t.x0);
    }
    for (auto& t : model.transformers3)
        for (int w = 0; w < 3; ++w) {
            repair(tally, QT_TRANSLATE_NOOP("Text", "三绕组变压器支路"), t.name, t.r1[w], t.x1[w]);
            repair(tally, QT_TRANSLATE_NOOP("Text", "三绕组变压器零序支路"), t.name, t.r0[w], t.x0[w]);
        }
}

void checkVoltages(host::NetworkModel& model, Tally& tally) {
    for (const auto& node : model.nodes)
        if (!(node.baseKv >= smallestKv && node.baseKv <= largestKv))
            throw ImportError("", 0,
                              Text::say("节点“") + node.name + Text::say("”：基准电压不在 0.001 至 10000 kV 之间"));
    for (auto& flow : model.loadFlow)
        for (auto& state : flow.nodes) {
            if (state.vMag > 0) continue;
            state.vMag = 1;
            tally.note(Changed, Text::say("潮流作业"), Text::say("电压不大于 0，改为 1"), state.node);
        }
}

/// \throws ImportError for a rating that is known and beyond every measure
void checkRatings(const host::NetworkModel& model) {
    const auto within = [](double low, double value, double high) {
        return value == 0 || std::isnan(value) || (value >= low && value <= high);
    };
    const auto rated = [&](const std::string& name, double mva, double kv) {
        if (!within(smallestMva, mva, largestMva) || !within(smallestKv, kv, largestKv))
            throw ImportError("", 0, "“" + name + Text::say("”：额定容量或额定电压超出范围"));
    };
    for (const auto& t : model.transformers2)
        for (const auto* w : {&t.i, &t.j}) rated(t.name, w->ratedMva, w->ratedKv);
    for (const auto& t : model.transformers3)
        for (const auto& w : t.winding) rated(t.name, w.ratedMva, w.ratedKv);
    for (const auto& g : model.generators) rated(g.name, g.ratedMva, g.ratedKv);
    for (const auto& s : model.shunts) rated(s.name, s.ratedMvar, s.ratedKv);
}

void checkSources(host::NetworkModel& model, Tally& tally) {
    for (auto& g : model.generators) {
        repair(tally, QT_TRANSLATE_NOOP("Text", "发电机"), g.name, g.r1, g.x1);
        if (!g.grounded) continue;
        if (g.x0 == 0) tally.note(Suspicious, Text::say("发电机"), Text::say("中性点接地而 x0 = 0"), g.name);
        repair(tally, QT_TRANSLATE_NOOP("Text", "发电机零序"), g.name, g.r0, g.x0);
    }
}

void checkShunts(const host::NetworkModel& model) {
    for (const auto& s : model.shunts)
        if (!(std::abs(s.x1) <= largestImpedance) || std::hypot(s.r0, s.x0) > largestImpedance)
            throw ImportError("", 0, "“" + s.name + Text::say("”：阻抗不是有限的数或过大"));
}

/// Voltages that do not belong together, as a slip of a unit or of a node makes them.
class VoltageCheck {
  public:
    VoltageCheck(const host::NetworkModel& model, Tally& tally) : tally_(tally) {
        for (const auto& node : model.nodes) baseKv_[node.name] = node.baseKv;
        for (const auto& line : model.lines)
            if (!near(baseKv_.at(line.i), baseKv_.at(line.j)))
                tally_.note(Suspicious, Text::say("线路"), Text::say("两端基准电压不同"), line.name);
        for (const auto& t : model.transformers2) winding(t.name, t.i), winding(t.name, t.j);
        for (const auto& t : model.transformers3)
            for (const auto& w : t.winding) winding(t.name, w);
        for (const auto& g : model.generators)
            if (!near(g.ratedKv, baseKv_.at(g.node)))
                tally_.note(Suspicious, Text::say("发电机"), Text::say("额定电压与节点基准电压相差过大"), g.name);
    }

  private:
    static bool near(double kv, double baseKv) { return kv == 0 || std::abs(kv / baseKv - 1) <= farthest; }
    void winding(const std::string& name, const host::Winding& w) {
        if (!near(w.ratedKv, baseKv_.at(w.node)))
            tally_.note(Suspicious, Text::say("变压器"), Text::say("额定电压与节点基准电压相差过大"), name);
    }

    static constexpr double farthest = 0.25;
    Tally& tally_;
    std::unordered_map<std::string, double> baseKv_;
};

void checkIslands(const host::NetworkModel& model, Tally& tally) {
    const Islands islands(model);
    for (const std::string& node : islands.withoutSource())
        tally.note(Suspicious, Text::say("孤岛"), Text::say("没有电源，以其首个节点表示"), node);
    for (const std::string& node : islands.withoutGround())
        tally.note(Suspicious, Text::say("孤岛"), Text::say("有线路而没有中性点接地，以其首个节点表示"), node);
}

}  // namespace

void check(host::NetworkModel& model, const Options&, Report& report) {
    const NameCheck nodes = checkNames(model);
    checkReferences(model, nodes);
    if (model.nodes.empty()) throw ImportError("", 0, Text::say("网络没有节点"));
    if (model.schemes.empty()) throw ImportError("", 0, Text::say("网络没有基础方案"));
    came(model, report);
    Tally tally;
    checkVoltages(model, tally);
    checkRatings(model);
    checkLines(model, tally);
    checkMutuals(model, tally);
    checkTransformers(model, tally);
    checkSources(model, tally);
    checkShunts(model);
    const VoltageCheck voltages(model, tally);
    checkIslands(model, tally);
    tally.tell(report);
}

}  // namespace import
