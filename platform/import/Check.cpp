#include <array>
#include <cmath>
#include <unordered_set>

#include "platform/import/Import.h"
#include "platform/import/Islands.h"
#include "platform/import/Names.h"

namespace import {

namespace {

constexpr double smallestReactance = 1e-6;  ///< per unit, in place of an impedance that is zero

/// Findings of one sort, told in one line with their count and the first names.
class Collected {
  public:
    void add(const std::string& name) {
        if (count_++ < 5) names_ += (names_.empty() ? "" : "、") + name;
    }
    void tell(Report& report, Finding::Kind kind, const std::string& subject, const std::string& text) const {
        if (count_ > 0) report.add(kind, subject, text + "：" + names_ + (count_ > 5 ? " 等" : ""), count_);
    }

  private:
    int count_ = 0;
    std::string names_;
};

void came(const host::NetworkModel& model, Report& report) {
    const std::array<std::pair<const char*, std::size_t>, 13> counts{{{"厂站", model.stations.size()},
                                                                      {"节点", model.nodes.size()},
                                                                      {"线路", model.lines.size()},
                                                                      {"两绕组变压器", model.transformers2.size()},
                                                                      {"三绕组变压器", model.transformers3.size()},
                                                                      {"发电机", model.generators.size()},
                                                                      {"并联电容器电抗器", model.shunts.size()},
                                                                      {"负荷", model.loads.size()},
                                                                      {"开关", model.switches.size()},
                                                                      {"互感", model.mutuals.size()},
                                                                      {"基础方案", model.schemes.size()},
                                                                      {"潮流作业", model.loadFlow.size()},
                                                                      {"运行方式", model.modes.size()}}};
    std::vector<Finding> first;
    for (const auto& [subject, count] : counts)
        if (count > 0) first.push_back({Finding::Kind::Came, subject, "导入", static_cast<int>(count)});
    report.findings.insert(report.findings.begin(), first.begin(), first.end());
}

/// Names of one kind: fit for the tables and unique.
class NameCheck {
  public:
    explicit NameCheck(std::string kind, int maxLength = maxNameLength) : kind_(std::move(kind)), max_(maxLength) {}
    void operator()(const std::string& name) {
        if (const std::string why = whyNoName(name, max_); !why.empty())
            throw ImportError("", 0, kind_ + "“" + name + "”：" + why);
        if (!names_.insert(name).second) throw ImportError("", 0, kind_ + "“" + name + "”重名");
    }
    [[nodiscard]] bool knows(const std::string& name) const { return names_.contains(name); }

  private:
    std::string kind_;
    int max_;
    std::unordered_set<std::string> names_;
};

NameCheck checkNames(const host::NetworkModel& model) {
    NameCheck nodes("节点"), others[] = {NameCheck("厂站"),     NameCheck("线路"),
                                         NameCheck("变压器"),   NameCheck("变压器"),
                                         NameCheck("发电机"),   NameCheck("电容器电抗器"),
                                         NameCheck("开关"),     NameCheck("基础方案", maxSchemeLength),
                                         NameCheck("运行方式"), NameCheck("潮流作业")};
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
        if (!nodes.knows(node)) throw ImportError("", 0, "“" + element + "”：没有节点“" + node + "”");
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

/// \throws ImportError for an impedance that is not finite
void repair(const std::string& name, double r, double& x, Collected& zero) {
    if (!std::isfinite(r) || !std::isfinite(x)) throw ImportError("", 0, "“" + name + "”：阻抗不是有限的数");
    if (std::hypot(r, x) >= smallestReactance) return;
    x = smallestReactance;
    zero.add(name);
}

void checkLines(host::NetworkModel& model, Report& report) {
    Collected zero, zero0, noX0, smallR0;
    for (auto& line : model.lines) {
        if (line.x0 == 0)
            noX0.add(line.name);
        else if (line.r0 < line.r1)
            smallR0.add(line.name);
        repair(line.name, line.r1, line.x1, zero);
        repair(line.name, line.r0, line.x0, zero0);
    }
    zero.tell(report, Finding::Kind::Changed, "线路", "正序阻抗为零，改为 j1e-6");
    noX0.tell(report, Finding::Kind::Suspicious, "线路", "x0 = 0");
    zero0.tell(report, Finding::Kind::Changed, "线路", "零序阻抗为零，改为 j1e-6");
    smallR0.tell(report, Finding::Kind::Suspicious, "线路", "r0 < r1");
}

void checkTransformers(host::NetworkModel& model, Report& report) {
    Collected zero, noX0;
    for (auto& t : model.transformers2) {
        if (t.x0 == 0) noX0.add(t.name);
        repair(t.name, t.r1, t.x1, zero), repair(t.name, t.r0, t.x0, zero);
    }
    for (auto& t : model.transformers3)
        for (int w = 0; w < 3; ++w) repair(t.name, t.r1[w], t.x1[w], zero), repair(t.name, t.r0[w], t.x0[w], zero);
    noX0.tell(report, Finding::Kind::Suspicious, "变压器", "x0 = 0");
    zero.tell(report, Finding::Kind::Changed, "变压器", "阻抗为零，改为 j1e-6");
}

void checkSources(host::NetworkModel& model, Report& report) {
    Collected zero, noX0;
    for (auto& g : model.generators) {
        repair(g.name, g.r1, g.x1, zero);
        if (g.grounded && g.x0 == 0) noX0.add(g.name);
        if (g.grounded) repair(g.name, g.r0, g.x0, zero);
    }
    zero.tell(report, Finding::Kind::Changed, "发电机", "阻抗为零，改为 j1e-6");
    noX0.tell(report, Finding::Kind::Suspicious, "发电机", "中性点接地而 x0 = 0");
}

void checkIslands(const host::NetworkModel& model, Report& report) {
    Collected dead, floating;
    const Islands islands(model);
    for (const std::string& node : islands.withoutSource()) dead.add(node);
    for (const std::string& node : islands.withoutGround()) floating.add(node);
    dead.tell(report, Finding::Kind::Suspicious, "孤岛", "没有电源，以其首个节点表示");
    floating.tell(report, Finding::Kind::Suspicious, "孤岛", "有线路而没有中性点接地，以其首个节点表示");
}

}  // namespace

void check(host::NetworkModel& model, const Options&, Report& report) {
    const NameCheck nodes = checkNames(model);
    checkReferences(model, nodes);
    if (model.nodes.empty()) throw ImportError("", 0, "网络没有节点");
    if (model.schemes.empty()) throw ImportError("", 0, "网络没有基础方案");
    came(model, report);
    checkLines(model, report);
    checkTransformers(model, report);
    checkSources(model, report);
    checkIslands(model, report);
}

}  // namespace import
