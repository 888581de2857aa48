#include <algorithm>
#include <cmath>

#include "cli/FaultsVerb.h"

namespace cli {

namespace {

using engines::Condition;
using engines::FaultKind;

struct KindName {
    const char* code;
    FaultKind kind;
};
constexpr KindName kKinds[] = {{"3ph", FaultKind::ThreePhaseGround}, {"1ph", FaultKind::PhaseAGround},
                               {"2ph", FaultKind::PhaseBC},          {"2phg", FaultKind::PhaseBCGround},
                               {"open3", FaultKind::OpenABC},        {"open1", FaultKind::OpenA},
                               {"open2", FaultKind::OpenBC}};

/// Impedance of an open phase, per unit.
constexpr double kOpen = 99999.9999;

QString text(const std::string& value) { return QString::fromStdString(value); }

bool kindOf(const QString& code, FaultKind& kind) {
    for (const KindName& name : kKinds) {
        if (code != name.code) continue;
        kind = name.kind;
        return true;
    }
    return false;
}

/// Where the last sign before a place stands that is not one of an exponent; 0 when there is none.
qsizetype signBefore(const QString& word, qsizetype place) {
    for (qsizetype k = place - 1; k > 0; --k)
        if ((word[k] == '+' || word[k] == '-') && word[k - 1].toLower() != 'e') return k;
    return 0;
}

QString percentText(double percent) { return QString::number(percent, 'g', 6) + "%"; }

/// Makes conditions of the words of a call.
class CaseFinder {
  public:
    CaseFinder(Context& context, const FaultsWish& wish, const FaultsNetwork& network)
        : context_(context), wish_(wish), network_(network) {}

    bool find(std::vector<FaultsCase>& cases) {
        if (!parseImpedance(wish_.zf, ohm_))
            return context_.stop(BadInput, "--zf 应为 R+jX（欧姆）：" + text(wish_.zf));
        if (!wish_.conditions.empty()) return findTogether(cases);
        if (std::ranges::find(wish_.kinds, "simultaneous") != wish_.kinds.end())
            return context_.stop(BadInput, "同时故障请用 --condition 逐个给出");
        const auto kinds = faultKinds(wish_);
        const bool someOpen = std::any_of(kinds.begin(), kinds.end(), engines::isSeries);
        if (someOpen && (wish_.branches.empty() || !wish_.buses.empty()))
            return context_.stop(BadInput, "断线只能在支路上，请给出 --branch 和 --at");
        return findAtBuses(kinds, cases) && findOnBranches(kinds, cases);
    }

  private:
    bool findAtBuses(const std::vector<FaultKind>& kinds, std::vector<FaultsCase>& cases) {
        for (const std::string& name : wish_.buses)
            for (const FaultKind kind : kinds) {
                Condition condition;
                if (!atBus(text(name), kind, condition)) return context_.stop(BadInput, "网络中没有母线" + text(name));
                cases.push_back({text(name), kindCode(kind), {condition}});
            }
        return true;
    }

    bool findOnBranches(const std::vector<FaultKind>& kinds, std::vector<FaultsCase>& cases) {
        const auto& percents = wish_.percents;
        if (percents.size() > 1 && percents.size() != wish_.branches.size())
            return context_.stop(BadInput, "--at 应给出一个，或与 --branch 一样多");
        for (std::size_t k = 0; k < wish_.branches.size(); ++k) {
            const QString name = text(wish_.branches[k]);
            const double percent = percents.empty() ? 50 : percents[percents.size() == 1 ? 0 : k];
            for (const FaultKind kind : kinds) {
                Condition condition;
                if (!onBranch(name, percent, kind, condition)) return refuseBranch(name);
                cases.push_back({name + "@" + percentText(percent), kindCode(kind), {condition}});
            }
        }
        return true;
    }

    bool findTogether(std::vector<FaultsCase>& cases) {
        FaultsCase together{{}, "simultaneous", {}};
        for (const std::string& word : wish_.conditions) {
            Condition condition;
            if (!parseCondition(text(word), condition)) return false;
            together.conditions.push_back(condition);
            together.place += (together.place.isEmpty() ? "" : " + ") + text(word);
        }
        cases.push_back(together);
        return true;
    }

    /// KIND@BUS or KIND@BRANCH:PERCENT.
    bool parseCondition(const QString& word, Condition& condition) {
        const QString place = word.section('@', 1);
        FaultKind kind{};
        if (!kindOf(word.section('@', 0, 0), kind) || place.isEmpty())
            return context_.stop(BadInput, "--condition 应为 类型@母线 或 类型@支路:百分数：" + word);
        if (!engines::isSeries(kind) && atBus(place, kind, condition)) return true;
        bool isNumber = false;
        const double percent = place.section(':', -1).toDouble(&isNumber);
        const QString name = place.section(':', 0, -2);
        if (!isNumber || !onBranch(name, percent, kind, condition))
            return context_.stop(BadInput, "网络中没有这个位置：" + place);
        return true;
    }

    bool atBus(const QString& name, FaultKind kind, Condition& condition) {
        condition.bus.value = network_.buses.value(name, -1);
        if (condition.bus.value < 0) return false;
        setKind(condition, condition.bus, kind);
        return true;
    }

    bool onBranch(const QString& name, double percent, FaultKind kind, Condition& condition) {
        condition.branch.value = network_.branches.value(name, -1);
        if (condition.branch.value < 0 || !(percent >= 0 && percent <= 100)) return false;
        condition.percent = percent;
        const auto& branch = network_.network.branches[static_cast<std::size_t>(condition.branch.value)];
        setKind(condition, percent <= 50 ? branch.from : branch.to, kind);
        return true;
    }

    void setKind(Condition& condition, engines::BusIndex base, FaultKind kind) const {
        const double kv = network_.network.buses[static_cast<std::size_t>(base.value)].baseKv;
        condition.kind = kind;
        condition.z = engines::isSeries(kind) ? engines::Complex{kOpen, kOpen} : ohm_ * (100 / (kv * kv));
        condition.group = 1;
    }

    bool refuseBranch(const QString& name) {
        const bool known = network_.branches.contains(name);
        return context_.stop(BadInput, known ? "--at 应在 0 到 100 之间" : "网络中没有支路" + name);
    }

    Context& context_;
    const FaultsWish& wish_;
    const FaultsNetwork& network_;
    engines::Complex ohm_;
};

}  // namespace

QString kindCode(FaultKind kind) {
    for (const KindName& name : kKinds)
        if (name.kind == kind) return name.code;
    return {};
}

std::vector<FaultKind> faultKinds(const FaultsWish& wish) {
    std::vector<FaultKind> kinds;
    for (const std::string& code : wish.kinds) {
        FaultKind kind{};
        if (kindOf(text(code), kind)) kinds.push_back(kind);
    }
    if (kinds.empty()) kinds = {kKinds[0].kind, kKinds[1].kind, kKinds[2].kind, kKinds[3].kind};
    return kinds;
}

bool parseImpedance(const std::string& value, engines::Complex& ohm) {
    const QString word = text(value);
    const qsizetype j = word.indexOf('j');
    bool realGiven = true, imaginaryGiven = true;
    if (j < 0) {
        ohm = {word.toDouble(&realGiven), 0};
    } else {
        // The sign before j belongs to X, which may stand on either side of it: 5+j3, 5+3j, j3, 3j.
        const qsizetype sign = signBefore(word, j);
        const QString front = word.mid(sign, j - sign), after = word.mid(j + 1);
        ohm.real(sign > 0 ? word.left(sign).toDouble(&realGiven) : 0);
        ohm.imag((front + after).toDouble(&imaginaryGiven));
        if (!after.isEmpty() && !front.isEmpty() && front != "+" && front != "-") return false;
    }
    return realGiven && imaginaryGiven && std::isfinite(ohm.real()) && std::isfinite(ohm.imag());
}

bool findBranchEnd(const FaultsNetwork& network, const QString& word, engines::BranchEnd& end) {
    const QString side = word.section(':', -1).toUpper();
    end.branch.value = network.branches.value(word.section(':', 0, -2), -1);
    end.end = side == "J" ? engines::End::J : engines::End::I;
    return end.branch.value >= 0 && (side == "I" || side == "J");
}

bool findFaultsCases(Context& context, const FaultsWish& wish, const FaultsNetwork& network,
                     std::vector<FaultsCase>& cases) {
    return CaseFinder(context, wish, network).find(cases);
}

}  // namespace cli
