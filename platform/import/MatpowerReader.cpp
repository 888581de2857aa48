#include <cmath>
#include <unordered_map>

#include "platform/host/Text.h"
#include "platform/import/Import.h"
#include "platform/import/InputFile.h"
#include "platform/import/MatpowerText.h"
#include "platform/import/Names.h"
#include "platform/import/SequenceDefaults.h"

namespace import {

namespace {

constexpr double baseMva = 100;
constexpr double defaultBaseKv = 110;       ///< for a bus whose base voltage is 0
constexpr double smallestImpedance = 1e-6;  ///< per unit; a branch below it becomes this reactance
constexpr double smallestShuntMvar = 1e-9;  ///< below it there is no shunt

/// Machines have no short-circuit data in this format: Xd'' = X2 = 0.20, X0 = 0.10 on 1.1 max(Pmax, 10) MVA, grounded.
constexpr double machineX1 = 0.20, machineX0 = 0.10, machineMargin = 1.1, smallestMachineMw = 10;

/// Columns of the matrices, from 0.
enum Bus { BusNumber, BusType, Pd, Qd, Gs, Bs, Area, Vm, Va, BaseKv };
enum Gen { GenBus, Pg, Qg, Qmax, Qmin, Vg, MBase, GenStatus, Pmax };
enum BranchColumn { From, To, R, X, B, RateA, RateB, RateC, Ratio, Angle, Status };

std::string numbered(std::string prefix, int number) { return prefix += std::to_string(number); }

class CaseReader {
  public:
    CaseReader(CaseText text, std::string file, const Options& options, Report& report)
        : case_(std::move(text)),
          file_(std::move(file)),
          report_(report),
          nodes_(options, report),
          stations_(options, report),
          lines_(options, report),
          transformers_(options, report) {}

    host::NetworkModel read() {
        model_.schemes.push_back({"基础方案", {}});
        model_.loadFlow.push_back({1, "潮流1", "基础方案", {}, {}});
        for (std::size_t row = 0; row < case_.bus.rows(); ++row) addBus(row);
        for (std::size_t row = 0; row < case_.branch.rows(); ++row) addBranch(row);
        for (std::size_t row = 0; row < case_.gen.rows(); ++row) addGenerator(row);
        tell();
        return std::move(model_);
    }

  private:
    void addBus(std::size_t row) {
        const int number = whole(case_.bus, row, BusNumber);
        if (buses_.contains(number))
            fail(case_.bus, row, Text::say("节点号 ") + std::to_string(number) + Text::say(" 重复"));
        const bool isolated = whole(case_.bus, row, BusType) == 4;
        isolated_ += isolated;
        buses_[number] = isolated ? dropped : static_cast<int>(model_.nodes.size());
        if (isolated) return;
        host::Node node;
        const bool hasName = row < case_.busNames.size();
        node.name =
            nodes_.give(hasName ? case_.busNames[row] : numbered("BUS", number), QT_TRANSLATE_NOOP("Text", "节点"));
        node.bus = node.name, node.physicalBus = true;
        node.station = stations_.give(node.name, QT_TRANSLATE_NOOP("Text", "厂站"));
        node.baseKv = real(case_.bus, row, BaseKv);
        if (node.baseKv <= 0) node.baseKv = defaultBaseKv, ++noBaseKv_;
        model_.stations.push_back({node.station});
        model_.loadFlow[0].nodes.push_back({node.name, real(case_.bus, row, Vm), real(case_.bus, row, Va)});
        addAtBus(row, number, node.name, node.baseKv);
        model_.nodes.push_back(std::move(node));
    }

    void addAtBus(std::size_t row, int number, const std::string& node, double baseKv) {
        const double p = real(case_.bus, row, Pd), q = real(case_.bus, row, Qd);
        if (p != 0 || q != 0) model_.loads.push_back({numbered("LD", number), node, p, q});
        conductances_ += real(case_.bus, row, Gs) != 0;
        const double b = real(case_.bus, row, Bs);
        if (std::abs(b) < smallestShuntMvar) return;
        host::Shunt shunt;
        shunt.name = numbered("SH", number), shunt.node = node;
        shunt.x1 = -baseMva / b, shunt.x0 = shunt.x1;
        shunt.ratedMvar = std::abs(b), shunt.ratedKv = baseKv;
        model_.shunts.push_back(std::move(shunt));
    }

    void addBranch(std::size_t row) {
        const int f = busOf(case_.branch, row, From), t = busOf(case_.branch, row, To);
        if (whole(case_.branch, row, Status) != 1) return void(++outOfService_);
        if (f == dropped || t == dropped) return void(++outOfService_);
        if (f == t) fail(case_.branch, row, Text::say("支路两端是同一节点"));
        const host::Node& i = model_.nodes[static_cast<std::size_t>(f)];
        const host::Node& j = model_.nodes[static_cast<std::size_t>(t)];
        if (real(case_.branch, row, Ratio) != 0 || i.baseKv != j.baseKv)
            addTransformer(row, i, j);
        else
            addLine(row, i, j);
    }

    struct Series {
        double r = 0, x = 0;
    };
    Series series(std::size_t row) {
        const double scale = baseMva / case_.baseMva;
        Series z{real(case_.branch, row, R) * scale, real(case_.branch, row, X) * scale};
        if (std::hypot(z.r, z.x) < smallestImpedance) z = {0, smallestImpedance}, ++zero_;
        return z;
    }

    void addLine(std::size_t row, const host::Node& i, const host::Node& j) {
        host::Line line;
        const Series z = series(row);
        line.name = lines_.give(branchName("LN", row), QT_TRANSLATE_NOOP("Text", "线路")), line.i = i.name,
        line.j = j.name;
        line.r1 = z.r, line.x1 = z.x, line.b1 = real(case_.branch, row, B) * case_.baseMva / baseMva;
        line.r0 = line.x0 = NAN, line.b0 = line.b1;
        line.ratedA = line.maxLoadA = ratedAmpere(row, i.baseKv);
        noRating_ += line.ratedA == 0;
        model_.lines.push_back(std::move(line));
    }

    void addTransformer(std::size_t row, const host::Node& i, const host::Node& j) {
        host::Transformer2 t;
        const Series z = series(row);
        const double rating = real(case_.branch, row, RateA) > 0 ? real(case_.branch, row, RateA) : baseMva;
        t.name = transformers_.give(branchName("TR", row), QT_TRANSLATE_NOOP("Text", "变压器"));
        t.i = {i.name, i.baseKv, rating, host::Grounding::Grounded};
        t.j = {j.name, j.baseKv, rating, host::Grounding::Grounded};
        t.r1 = z.r, t.x1 = z.x, t.r0 = t.x0 = NAN;
        if (const double ratio = real(case_.branch, row, Ratio); ratio != 0) t.tapRatio = ratio;
        t.phaseShift = real(case_.branch, row, Angle), t.phaseShifter = t.phaseShift != 0;
        t.maxLoadA = ratedAmpere(row, i.baseKv);
        model_.transformers2.push_back(std::move(t));
    }

    void addGenerator(std::size_t row) {
        const int bus = busOf(case_.gen, row, GenBus);
        const int count = ++machinesAt_[bus];
        if (real(case_.gen, row, GenStatus) <= 0 || bus == dropped) return void(++outOfService_);
        const host::Node& node = model_.nodes[static_cast<std::size_t>(bus)];
        host::Generator g;
        g.name = numbered(numbered("G", whole(case_.gen, row, GenBus)) + "-", count);
        g.node = node.name, g.kind = "generator", g.grounded = true;
        g.ratedMva = machineMargin * std::max(real(case_.gen, row, Pmax), smallestMachineMw), g.ratedKv = node.baseKv;
        g.x1 = machineX1 * baseMva / g.ratedMva, g.x0 = machineX0 * baseMva / g.ratedMva;
        g.pMw = real(case_.gen, row, Pg), g.qMvar = real(case_.gen, row, Qg);
        model_.loadFlow[0].generators.push_back({g.name, g.pMw, g.qMvar});
        model_.generators.push_back(std::move(g));
    }

    void tell() {
        using enum Finding::Kind;
        const auto add = [this](Finding::Kind kind, const std::string& subject, const std::string& text, int count) {
            if (count > 0) report_.add(kind, subject, text, count);
        };
        const int machines = static_cast<int>(model_.generators.size());
        add(Defaulted, Text::say("发电机"),
            Text::say("没有短路数据，取 X\" = 0.20、X0 = 0.10，容量 1.1 max(Pmax, 10) MVA，中性点接地"), machines);
        add(Defaulted, Text::say("变压器"), Text::say("没有接线方式，两侧按中性点直接接地"),
            static_cast<int>(model_.transformers2.size()));
        add(Defaulted, Text::say("节点"), Text::say("基准电压为 0，取 110 kV"), noBaseKv_);
        const int lines = static_cast<int>(model_.lines.size());
        add(Defaulted, Text::say("线路"), Text::say("最大负荷电流取额定电流"), lines - noRating_);
        add(Missing, Text::say("线路"), Text::say("没有长度"), lines);
        add(Missing, Text::say("线路"), Text::say("没有额定电流"), noRating_);
        add(Missing, Text::say("节点"), Text::say("并联电导不导入"), conductances_);
        add(Changed, Text::say("支路"), Text::say("阻抗小于 1e-6，改为 j1e-6"), zero_);
        add(Changed, Text::say("节点"), Text::say("孤立节点不导入"), isolated_);
        add(Changed, Text::say("支路和发电机"), Text::say("未投入，不导入"), outOfService_);
    }

    /// A name by the two bus numbers; the second and further circuits of a pair carry their number.
    std::string branchName(const std::string& kind, std::size_t row) {
        const std::string name =
            kind + std::to_string(whole(case_.branch, row, From)) + "-" + std::to_string(whole(case_.branch, row, To));
        const int circuit = ++circuits_[name];
        return circuit == 1 ? name : numbered(name + "#", circuit);
    }

    double ratedAmpere(std::size_t row, double baseKv) const {
        return real(case_.branch, row, RateA) * 1000 / (std::sqrt(3.0) * baseKv);
    }

    double real(const CaseMatrix& m, std::size_t row, int column) const {
        const double value = m.at(row, static_cast<std::size_t>(column));
        if (!std::isfinite(value))
            fail(m, row, Text::say("第 ") + std::to_string(column + 1) + Text::say(" 列不是有限的数"));
        return value;
    }
    int whole(const CaseMatrix& m, std::size_t row, int column) const {
        const double value = real(m, row, column);
        if (value != std::floor(value) || std::abs(value) > 1e9)
            fail(m, row, Text::say("第 ") + std::to_string(column + 1) + Text::say(" 列不是整数"));
        return static_cast<int>(value);
    }
    int busOf(const CaseMatrix& m, std::size_t row, int column) const {
        const auto found = buses_.find(whole(m, row, column));
        if (found == buses_.end()) fail(m, row, Text::say("没有节点 ") + std::to_string(whole(m, row, column)));
        return found->second;
    }
    [[noreturn]] void fail(const CaseMatrix& m, std::size_t row, const std::string& what) const {
        throw ImportError(file_, m.lines[row], what);
    }

    static constexpr int dropped = -1;
    CaseText case_;
    std::string file_;
    Report& report_;
    NameGiver nodes_, stations_, lines_, transformers_;
    host::NetworkModel model_;
    std::unordered_map<int, int> buses_;  ///< bus number to place in the model's nodes
    std::unordered_map<int, int> machinesAt_;
    std::unordered_map<std::string, int> circuits_;
    int isolated_ = 0, outOfService_ = 0, noBaseKv_ = 0, noRating_ = 0, conductances_ = 0, zero_ = 0;
};

}  // namespace

host::NetworkModel readMatpower(const std::filesystem::path& file, const Options& options, Report& report) {
    const std::string name = file.filename().string();
    options.tell(0, Text::say("读算例"));
    host::NetworkModel model = CaseReader(parseCase(readInput(file), name), name, options, report).read();
    model.name = file.stem().string();
    options.tell(80, Text::say("检查"));
    completeSequenceData(model, options, report);
    check(model, options, report);
    options.tell(100, Text::say("读入完成"));
    return model;
}

}  // namespace import
