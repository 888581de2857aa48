#include "programs/workflow/PictureData.h"

#include <QSet>
#include <cmath>

#include "platform/host/Text.h"
#include "platform/sql/Placeholders.h"
#include "platform/sql/Sql.h"
#include "programs/frame/TableNames.h"
#include "programs/workflow/PictureCoefficients.h"
#include "programs/workflow/PictureFindings.h"

namespace {

struct Standing {
    Location at;
    int RNo = 0, RTypeNo = 0;
};

QSet<int> relations(int caseNo, int rNo) {
    QSet<int> found;
    sql::Query query;
    query.exec("SELECT DISTINCT CoRNo FROM RLY_CASERLYCOP WHERE Case_No=? AND RNo=?", {caseNo, rNo});
    while (query.next()) found.insert(query.number(0));
    return found;
}

/// The relays at the branches, and those that the relay coordinates with wherever they stand.
QVector<Standing> standingAt(const QVector<PictureBranch>& branches, const QSet<int>& related) {
    QVariantList values;
    for (const PictureBranch& branch : branches) values << branch.at.ID_Name;
    const qsizetype names = values.size();
    for (const int rNo : related) values << rNo;
    if (values.isEmpty()) return {};
    QStringList conditions;
    if (names > 0) conditions << "ID_Name IN (" + sql::placeholders(names) + ")";
    if (!related.isEmpty()) conditions << "RNo IN (" + sql::placeholders(related.size()) + ")";
    QVector<Standing> found;
    sql::Query query;
    query.exec(
        "SELECT ID_Name,I_Name,J_Name,Side,RNo,RTypeNo FROM RLY_RUD WHERE " + conditions.join(" OR ") + " ORDER BY RNo",
        values);
    while (query.next())
        found.append(
            {{query.text(0), query.text(1), query.text(2), query.number(3)}, query.number(4), query.number(5)});
    return found;
}

/// The relays of one branch: of the relay's own type, and those that it coordinates with.
QVector<int> relaysAt(const PictureBranch& branch, const QVector<Standing>& standing, int rTypeNo,
                      const QSet<int>& related) {
    QVector<int> relays;
    for (const Standing& relay : standing)
        if (relay.at == branch.at && (relay.RTypeNo == rTypeNo || related.contains(relay.RNo)))
            relays.append(relay.RNo);
    return relays;
}

double scaleOf(const PictureNeighbour& neighbour, double ownKv, const PictureNetwork& network) {
    const double kv = network.baseKv(neighbour.branch.at.node());
    if (kv <= 0 || ownKv <= 0) return 1;
    return neighbour.relay.impedance ? (ownKv / kv) * (ownKv / kv) : kv / ownKv;
}

/// Adds the neighbours of a relay whose lines stand already.
class Neighbours {
  public:
    Neighbours(int caseNo, PictureData& data, const PictureNetwork& network)
        : case_(caseNo),
          data_(data),
          network_(network),
          coefficients_(caseNo, data.relay.RNo, data.relay.RTypeNo),
          related_(relations(caseNo, data.relay.RNo)) {}

    void add() {
        const QVector<Standing> standing = standingAt(data_.lines->behind, related_);
        QVector<int> all;
        QVector<QPair<const PictureBranch*, int>> places;
        for (const PictureBranch& branch : data_.lines->behind) {
            const QVector<int> at = relaysAt(branch, standing, data_.relay.RTypeNo, related_);
            for (const int rNo : at.isEmpty() ? QVector<int>{0} : at) places.append({&branch, rNo});
            all += at;
        }
        const auto relays = pictureRelays(case_, all);
        for (const auto& [branch, rNo] : places) append(*branch, relays.value(rNo));
        tellElsewhere(standing, all);
    }

  private:
    void append(const PictureBranch& branch, const PictureRelay& relay) {
        PictureNeighbour neighbour{branch, relay, 1, coefficients_.of(branch.idNo, branch.at.Side, relay.RNo)};
        if (relay.impedance != data_.relay.impedance) neighbour.relay.stages.clear();
        neighbour.scale = scaleOf(neighbour, data_.lines->kv, network_);
        data_.neighbours.append(neighbour);
    }
    void tellElsewhere(const QVector<Standing>& standing, const QVector<int>& drawn) {
        for (const Standing& relay : standing)
            if (related_.contains(relay.RNo) && !drawn.contains(relay.RNo))
                data_.notes << Text::tr("与之配合的%1不在本线路对侧，没有画").arg(relay.at.ID_Name);
    }

    int case_;
    PictureData& data_;
    const PictureNetwork& network_;
    PictureCoefficients coefficients_;
    QSet<int> related_;
};

Location placeOf(int rNo) {
    sql::Query query;
    query.exec("SELECT ID_Name,I_Name,J_Name,Side FROM RLY_RUD WHERE RNo=?", {rNo});
    if (!query.next()) return {};
    return {query.text(0), query.text(1), query.text(2), query.number(3)};
}

QHash<int, QPair<int, int>> groupsInForce(int caseNo, int rNo) {
    QHash<int, QPair<int, int>> groups;
    sql::Query query;
    query.exec("SELECT PNo,RuleNo,ParNo FROM RLY_CASEINF WHERE Case_No=? AND RNo=? AND PValid=1 AND RValid=1",
               {caseNo, rNo});
    while (query.next()) groups[query.number(1)] = {query.number(0), query.number(2)};
    return groups;
}

/// The largest time step of the rules in force, by part.
QHash<int, double> timeSteps(int caseNo, int rNo) {
    QHash<int, double> steps;
    const auto groups = groupsInForce(caseNo, rNo);
    sql::Query query(tables::ruleConnection);
    query.exec("SELECT RuleNo,ParNo,K FROM PARAINF WHERE C='dt'");
    while (query.next()) {
        const auto group = groups.constFind(query.number(0));
        if (group == groups.constEnd() || group->second != query.number(1)) continue;
        steps[group->first] = std::max(steps.value(group->first), query.real(2));
    }
    return steps;
}

/// The largest current that a first stage has to avoid, a short circuit that its rules have computed.
std::optional<double> currentAtEnd(const QVector<PictureFault>& faults) {
    for (const PictureFault& fault : faults)
        if (fault.PNo == 1 && fault.shortCircuit) return fault.value;
    return std::nullopt;
}

}  // namespace

double PictureNeighbour::seen(double value) const {
    const double part = comparable() ? *share : 1;
    return relay.impedance ? std::abs(branch.start) + value * scale / part : value * scale * part;
}

QVector<PictureStep> PictureData::steps() const {
    QVector<ReachingStage> stages;
    for (const PictureStage& stage : relay.stages) stages.append({stage.PNo, depth(stage.value), stage.time});
    return staircase(stages);
}

QVector<PictureStep> PictureData::steps(const PictureNeighbour& neighbour) const {
    QVector<ReachingStage> stages;
    for (const PictureStage& stage : neighbour.relay.stages)
        stages.append({stage.PNo, depth(neighbour.seen(stage.value)), stage.time});
    return staircase(stages);
}

PictureData readPictureData(int caseNo, int rNo, const PictureNetwork& network) {
    PictureData data;
    data.relay = pictureRelays(caseNo, {rNo}).value(rNo);
    data.caseName =
        sql::scalar({}, "SELECT Case_Name FROM RLY_CASE_RLY WHERE Case_No=?", {caseNo}, QString()).toString();
    data.typeName = sql::scalar({}, "SELECT RTypeCode FROM RLY_RUD WHERE RNo=?", {rNo}, QString()).toString();
    if (data.relay.RNo == 0) return data;
    data.lines = network.around(placeOf(rNo), &data.noLines);
    if (data.lines) Neighbours(caseNo, data, network).add();
    data.faults = pictureFaults(caseNo, rNo, data.relay.impedance, network);
    data.timeSteps = timeSteps(caseNo, rNo);
    if (!data.relay.impedance)
        data.lineEnd = currentAtEnd(data.faults);
    else if (data.lines)
        data.lineEnd = data.lines->end;
    addFindings(data);
    return data;
}
