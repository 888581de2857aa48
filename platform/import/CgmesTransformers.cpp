#include <algorithm>
#include <array>

#include "platform/import/CgmesElements.h"

#include "platform/host/Text.h"

namespace import::cgmes {

using enum Finding::Kind;
using host::Grounding;

namespace {

/// One end with its impedances in ohm on its own rated voltage.
struct WindingEnd {
    const CimObject* object = nullptr;
    const CimObject* terminal = nullptr;
    host::Winding winding;
    double r = 0, x = 0, r0 = 0, x0 = 0;
};

Grounding groundingOf(const CimObject& end) {
    const std::string_view kind = end.text("PowerTransformerEnd.connectionKind");
    if (kind == "WindingConnection.D") return Grounding::Delta;
    const bool neutral = kind == "WindingConnection.Yn" || kind == "WindingConnection.Zn";
    return end.flag("TransformerEnd.grounded", neutral) ? Grounding::Grounded : Grounding::Isolated;
}

WindingEnd endOf(const Context& c, const CimObject& object) {
    WindingEnd end{&object, c.cim.follow(object, "TransformerEnd.Terminal"), {}, 0, 0, 0, 0};
    if (!end.terminal) c.cim.fail(object, Text::say("没有端子"));
    end.winding.node = c.nodes.nodeOf(*end.terminal);
    end.winding.ratedKv = c.cim.number(object, "PowerTransformerEnd.ratedU", 0);
    if (end.winding.ratedKv <= 0) end.winding.ratedKv = c.nodes.baseKv(end.winding.node);
    end.winding.ratedMva = c.cim.number(object, "PowerTransformerEnd.ratedS", 0);
    end.winding.grounding = groundingOf(object);
    end.winding.rn = c.cim.number(object, "TransformerEnd.rground", 0);
    end.winding.xn = c.cim.number(object, "TransformerEnd.xground", 0);
    end.r = c.cim.number(object, "PowerTransformerEnd.r", 0), end.x = c.cim.number(object, "PowerTransformerEnd.x", 0);
    end.r0 = c.cim.number(object, "PowerTransformerEnd.r0", 0);
    end.x0 = c.cim.number(object, "PowerTransformerEnd.x0", 0);
    return end;
}

/// Ends by their transformer, in the order of endNumber; the terminal of an end is the one it names.
std::unordered_map<std::string_view, std::vector<const CimObject*>> endsByTransformer(const CimStore& cim) {
    std::unordered_map<std::string_view, std::vector<const CimObject*>> ends;
    for (const CimObject* end : cim.all("PowerTransformerEnd"))
        ends[end->text("PowerTransformerEnd.PowerTransformer")].push_back(end);
    for (auto& [transformer, list] : ends)
        std::stable_sort(list.begin(), list.end(), [&](const CimObject* a, const CimObject* b) {
            return cim.number(*a, "TransformerEnd.endNumber", 0) < cim.number(*b, "TransformerEnd.endNumber", 0);
        });
    return ends;
}

/// Tap changers by the end they sit on.
struct Taps {
    std::unordered_map<std::string_view, const CimObject*> ratio, phase;

    explicit Taps(const CimStore& cim) {
        for (const CimObject* tap : cim.all("RatioTapChanger"))
            ratio[tap->text("RatioTapChanger.TransformerEnd")] = tap;
        for (const char* className : {"PhaseTapChangerLinear", "PhaseTapChangerSymmetrical",
                                      "PhaseTapChangerAsymmetrical", "PhaseTapChangerTabular"})
            for (const CimObject* tap : cim.all(className)) phase[tap->text("PhaseTapChanger.TransformerEnd")] = tap;
    }
};

double stepsFromNeutral(const CimStore& cim, const CimObject& tap) {
    const double neutral = cim.number(tap, "TapChanger.neutralStep", 0);
    return cim.number(tap, "TapChanger.step", cim.number(tap, "TapChanger.normalStep", neutral)) - neutral;
}

double ratioOf(const CimStore& cim, const CimObject& tap) {
    return 1 + stepsFromNeutral(cim, tap) * cim.number(tap, "RatioTapChanger.stepVoltageIncrement", 0) / 100;
}

bool inService(const Context& c, const CimObject& object, const std::vector<WindingEnd>& ends) {
    const bool connected =
        std::all_of(ends.begin(), ends.end(), [](const WindingEnd& e) { return CgmesNodes::connected(*e.terminal); });
    if (!connected) c.tally.note(Changed, Text::say("变压器"), Text::say("有一侧断开，按退出运行导入"), object.name());
    return connected && c.inService(object);
}

/// Whether an exchange says nothing about the zero sequence of its transformers: no impedance and no grounded winding.
bool saysNothing(const std::vector<WindingEnd>& ends) {
    return std::all_of(ends.begin(), ends.end(), [](const WindingEnd& e) {
        return e.r0 == 0 && e.x0 == 0 && e.winding.grounding != Grounding::Grounded;
    });
}

void addTwoWinding(Context& c, const CimObject& object, const std::vector<WindingEnd>& ends, const Taps& taps,
                   NameGiver& names) {
    host::Transformer2 t;
    t.i = ends[0].winding, t.j = ends[1].winding;
    if (t.i.node == t.j.node)
        return c.tally.note(Changed, Text::say("变压器"), Text::say("两侧是同一节点，不导入"), object.name());
    t.name = names.give(object.name(), QT_TRANSLATE_NOOP("Text", "变压器"));
    const double ohm = c.ohmBase(t.i.node);
    const double ratio = t.i.ratedKv / t.j.ratedKv, square = ratio * ratio;
    t.r1 = (ends[0].r + ends[1].r * square) / ohm, t.x1 = (ends[0].x + ends[1].x * square) / ohm;
    t.r0 = (ends[0].r0 + ends[1].r0 * square) / ohm, t.x0 = (ends[0].x0 + ends[1].x0 * square) / ohm;
    if (t.r0 == 0 && t.x0 == 0) t.r0 = t.x0 = NAN;
    t.tapRatio = ratio * c.nodes.baseKv(t.j.node) / c.nodes.baseKv(t.i.node);
    for (std::size_t e = 0; e < 2; ++e) {
        if (const auto tap = taps.ratio.find(ends[e].object->id); tap != taps.ratio.end()) {
            t.tapChanger = true;
            t.tapRatio *= e == 0 ? ratioOf(c.cim, *tap->second) : 1 / ratioOf(c.cim, *tap->second);
        }
        if (const auto tap = taps.phase.find(ends[e].object->id); tap != taps.phase.end()) {
            t.tapChanger = t.phaseShifter = true;
            t.phaseShift = stepsFromNeutral(c.cim, *tap->second) *
                           c.cim.number(*tap->second, "PhaseTapChangerLinear.stepPhaseShiftIncrement", 0);
        }
    }
    t.unit = object.flag("PowerTransformer.isPartOfGeneratorUnit", false);
    t.maxLoadA = CurrentLimits(c.cim).at(*ends[0].terminal);
    t.inService = inService(c, object, ends);
    c.model.transformers2.push_back(std::move(t));
}

void addThreeWinding(Context& c, const CimObject& object, const std::vector<WindingEnd>& ends, const Taps& taps,
                     NameGiver& names) {
    host::Transformer3 t;
    t.name = names.give(object.name(), QT_TRANSLATE_NOOP("Text", "变压器"));
    t.star = c.nodes.starName(t.name);
    const double ohm = c.ohmBase(ends[0].winding.node);
    for (std::size_t w = 0; w < 3; ++w) {
        const double ratio = ends[0].winding.ratedKv / ends[w].winding.ratedKv, scale = ratio * ratio / ohm;
        t.winding[w] = ends[w].winding;
        t.r1[w] = ends[w].r * scale, t.x1[w] = ends[w].x * scale;
        t.r0[w] = ends[w].r0 * scale, t.x0[w] = ends[w].x0 * scale;
        t.tapChanger |= taps.ratio.contains(ends[w].object->id) || taps.phase.contains(ends[w].object->id);
    }
    const bool unknown =
        std::all_of(ends.begin(), ends.end(), [](const WindingEnd& e) { return e.r0 == 0 && e.x0 == 0; });
    for (std::size_t w = 0; unknown && w < 3; ++w) t.r0[w] = t.x0[w] = NAN;
    t.inService = inService(c, object, ends);
    c.model.transformers3.push_back(std::move(t));
}

}  // namespace

void readTransformers(Context& c) {
    NameGiver names(c.options, c.report);
    const Taps taps(c.cim);
    const auto endObjects = endsByTransformer(c.cim);
    std::vector<std::pair<const CimObject*, std::vector<WindingEnd>>> transformers;
    for (const CimObject* object : c.cim.all("PowerTransformer")) {
        const auto found = endObjects.find(object->id);
        const std::size_t count = found == endObjects.end() ? 0 : found->second.size();
        if (count != 2 && count != 3)
            c.cim.fail(*object, Text::say("有 ") + std::to_string(count) + Text::say(" 个绕组，只能是 2 或 3"));
        transformers.push_back({object, {}});
        for (const CimObject* end : found->second) transformers.back().second.push_back(endOf(c, *end));
    }
    const bool noZeroSequence =
        std::all_of(transformers.begin(), transformers.end(), [](const auto& t) { return saysNothing(t.second); });
    for (auto& [object, ends] : transformers) {
        if (noZeroSequence) {
            c.tally.note(Defaulted, Text::say("变压器"), Text::say("没有零序数据和接地方式，星形侧按中性点直接接地"),
                         object->name());
            for (WindingEnd& end : ends)
                if (end.winding.grounding == Grounding::Isolated) end.winding.grounding = Grounding::Grounded;
        }
        if (ends.size() == 2)
            addTwoWinding(c, *object, ends, taps, names);
        else
            addThreeWinding(c, *object, ends, taps, names);
    }
}

}  // namespace import::cgmes
