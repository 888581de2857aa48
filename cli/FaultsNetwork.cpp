#include <QTemporaryDir>
#include <cmath>

#include "cli/CaseVerbs.h"
#include "cli/FaultsVerb.h"
#include "engines/network/RealTimeReader.h"
#include "exchange/TextFile.h"
#include "platform/host/BaseTables.h"
#include "platform/rtdb/Records.h"
#include "platform/rtdb/dbCursor.h"
#include "platform/sql/Sql.h"
#include "programs/engine/CCaseCal.h"
#include "programs/engine/CNetDataCal.h"
#include "programs/study/ModeStore.h"

namespace cli {

namespace {

using engines::BranchIndex;
using engines::ModeChange;

constexpr double kCutImpedance = 9999999;

std::size_t at(int i) { return static_cast<std::size_t>(i); }
QString text(const std::string& value) { return QString::fromStdString(value); }

/// The network source that is meant. \return false with the exit code set
bool chooseSource(Context& context, const FaultsWish& wish, CaseForm& form) {
    form.onLoadFlow = !wish.loadFlow.empty();
    form.source = text(form.onLoadFlow ? wish.loadFlow : wish.scheme);
    if (form.source.isEmpty())
        form.source = sql::scalar({}, "SELECT SchName FROM CDB_SCHEMEINFBAK ORDER BY Order_No LIMIT 1").toString();
    if (form.source.isEmpty()) return context.stop(BadInput, "工程中没有网络，请先用 import 读入");
    if (CaseStore::hasSource(form)) return true;
    return context.stop(BadInput, (form.onLoadFlow ? "没有潮流作业" : "没有方案") + form.source);
}

/// Carries the network from the tables into a real-time file of its own, so that nobody's working state changes.
class NetworkBuilder {
  public:
    NetworkBuilder(Context& context, const FaultsWish& wish, FaultsNetwork& result)
        : context_(context), wish_(wish), result_(result) {}

    bool build() {
        CaseForm form;
        if (!chooseSource(context_, wish_, form) || !transfer(form) || !read()) return false;
        nameElements();
        return change() && correct();
    }

  private:
    bool transfer(const CaseForm& form) {
        QString error;
        file_ = folder_.filePath("faults.rtdb");
        if (!realTime_.open(file_, &error)) return context_.stop(Internal, error);
        const bool flow = form.onLoadFlow;
        const int number = flow ? CaseStore::loadFlowNumber(form) : 0;
        if (!CNetDataCal().ConvertCaseData(number, flow ? QString(" ") : form.source, flow ? 1 : 0, &realTime_))
            return context_.stop(Internal, "网络没有转换成功");
        CCaseCal topology;
        topology.setDatabase(&realTime_);
        topology.AnalyzeTopology();
        return realTime_.commit() || context_.stop(Internal, {});
    }

    bool read() {
        try {
            result_.network = engines::buildNetwork(engines::readRealTimeTables(file_.toStdString()));
        } catch (const exchange::FormatError& error) {
            return context_.stop(BadInput, "网络数据不能计算：" + text(error.what()));
        }
        return !result_.network.buses.empty() || context_.stop(BadInput, "网络中没有母线");
    }

    void nameElements() {
        const engines::Network& network = result_.network;
        for (const auto& bus : network.buses)
            result_.busNames.push_back(sql::fromGbk(QByteArray::fromStdString(bus.name)));
        result_.branchNames.resize(network.branches.size());
        for (int s = 0; s < static_cast<int>(network.sources.size()); ++s) {
            result_.sourceNames.push_back(sql::fromGbk(QByteArray::fromStdString(network.sources[at(s)].name)));
            result_.sources.insert(result_.sourceNames.back(), s);
        }
        dbCursor<norvdb::nd> nodes(realTime_);
        nodes.select();
        while (nodes.next())
            if (const auto bus = network.bus({nodes->ibs}); bus.value >= 0) result_.buses.insert(nodes->id, bus.value);
        dbCursor<norvdb::ln> lines(realTime_);
        lines.select();
        while (lines.next()) nameBranch(lines->id.chopped(3), lines->id_no, lines->id);
        dbCursor<norvdb::xf> transformers(realTime_);
        transformers.select();
        while (transformers.next()) {
            const QString suffix = transformers->id.section('_', -1);
            const QString name = transformers->id.chopped(suffix.size() + 1);
            nameBranch(transformers->kind > 30 ? name + ":" + QString::number(transformers->kind - 30) : name,
                       transformers->id_no, transformers->id);
        }
    }

    /// \param id  the name with the suffix of its kind, by which namesakes of other kinds are called
    void nameBranch(const QString& name, int idNo, const QString& id) {
        idNo_.insert(id, idNo);
        const auto found = result_.network.branchById.find(idNo);
        if (found == result_.network.branchById.end()) return;
        const QString& own = result_.branches.contains(name) ? id : name;
        result_.branches.insert(own, found->second);
        result_.branchNames[at(found->second)] = own;
    }

    bool change() {
        if (!wish_.mode.empty() && !addMode(text(wish_.mode))) return false;
        for (const std::string& name : wish_.outages)
            if (!takeOut(text(name))) return context_.stop(BadInput, "网络中没有元件" + text(name));
        return true;
    }

    bool addMode(const QString& name) {
        for (const OperatingModeRecord& mode : ModeStore::list()) {
            if (mode.SysName != name) continue;
            for (const ModeRow& row : mode.rows)
                if (!addRow(row))
                    return context_.stop(BadInput, "运行方式" + name + "改动的" + row.ID_Name + "不在网络中");
            return true;
        }
        return context_.stop(BadInput, "没有运行方式" + name);
    }

    bool addRow(const ModeRow& row) {
        ModeChange change;
        change.bus.value = result_.buses.value(row.I_Name, -1);
        change.second.value = result_.buses.value(row.J_Name, -1);
        if (row.I_Name != row.J_Name) change.branch.value = branchOf(row.ID_Name, change.second.value);
        if (change.bus.value < 0 || (row.I_Name != row.J_Name && change.branch.value < 0)) return false;
        change.sequence = row.M10 == 1 ? engines::Sequence::Positive : engines::Sequence::Zero;
        change.z = {row.R.toDouble(), row.X.toDouble()};
        change.cut =
            row.Flg == 1 || std::abs(change.z.real()) >= kCutImpedance || std::abs(change.z.imag()) >= kCutImpedance;
        const double kv = result_.network.buses[at(change.bus.value)].baseKv;
        if (row.UNIT == 1) change.z *= 100 / (kv * kv);
        result_.changes.push_back(change);
        return true;
    }

    /// A line or transformer by its name; of a three-winding one the winding at a bus.
    int branchOf(const QString& name, int secondBus) const {
        if (const int branch = result_.branches.value(name, -1); branch >= 0) return branch;
        for (int winding = 1; winding <= 3; ++winding) {
            const int branch = result_.branches.value(name + ":" + QString::number(winding), -1);
            if (branch >= 0 && result_.network.branches[at(branch)].to.value == secondBus) return branch;
        }
        return -1;
    }

    bool takeOut(const QString& name) {
        if (const int source = result_.sources.value(name, -1); source >= 0) {
            sourcesOut_.append(name);
            return true;
        }
        bool found = false;
        for (const QString& branch : {name, name + ":1", name + ":2", name + ":3"}) {
            const int index = result_.branches.value(branch, -1);
            if (index < 0) continue;
            found = true;
            for (const auto sequence : {engines::Sequence::Positive, engines::Sequence::Zero})
                result_.changes.push_back({{index}, {}, {}, sequence, {}, true});
        }
        return found;
    }

    /// Name plates, charging, and last the sources that are out, since that renumbers them.
    bool correct() {
        if (wish_.iec() || wish_.charging) {
            const auto model = host::loadNetwork();
            if (!model) return context_.stop(Internal, "不能读取工程的网络");
            applyPlates(namePlates(*model, idNo_));
        }
        auto& sources = result_.network.sources;
        std::erase_if(sources, [&](const engines::Source& source) {
            return sourcesOut_.contains(sql::fromGbk(QByteArray::fromStdString(source.name)));
        });
        result_.sourceNames.clear();
        for (const auto& source : sources)
            result_.sourceNames.push_back(sql::fromGbk(QByteArray::fromStdString(source.name)));
        return true;
    }

    void applyPlates(engines::NamePlates plates) {
        if (wish_.iec()) {
            result_.factors = engines::applyIec60909(result_.network, plates, result_.method);
            for (ModeChange& change : result_.changes)
                if (change.branch.value >= 0)
                    change.z /= std::pow(result_.network.branches[at(change.branch.value)].ratio, 2);
        }
        if (!wish_.charging) return;
        std::erase_if(plates.lines, [&](const engines::LinePlate& plate) { return isCut(plate.idNo); });
        result_.charging = engines::addZeroSequenceCharging(result_.network, plates);
    }

    bool isCut(int idNo) const {
        return std::any_of(result_.changes.begin(), result_.changes.end(), [&](const ModeChange& change) {
            return change.cut && change.branch.value >= 0 &&
                   result_.network.branches[at(change.branch.value)].idNo == idNo;
        });
    }

    Context& context_;
    const FaultsWish& wish_;
    FaultsNetwork& result_;
    QTemporaryDir folder_;
    QString file_;
    dbDatabase realTime_;
    QHash<QString, int> idNo_;
    QStringList sourcesOut_;
};

}  // namespace

double FaultsNetwork::factorAt(engines::BusIndex bus) const {
    return iec && bus.value >= 0 ? method.voltageFactor(network.buses[at(bus.value)].baseKv) : prefault;
}

bool loadFaultsNetwork(Context& context, const FaultsWish& wish, FaultsNetwork& result) {
    return NetworkBuilder(context, wish, result).build();
}

}  // namespace cli
