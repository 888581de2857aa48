#include "programs/workflow/SensitivityParameters.h"

#include <QHash>
#include <algorithm>
#include <cmath>

#include "platform/host/Text.h"
#include "platform/sql/Placeholders.h"
#include "platform/sql/Sql.h"
#include "programs/engine/Sensitivity.h"
#include "programs/frame/LocationLabel.h"
#include "programs/frame/Messages.h"
#include "programs/frame/RelayTypes.h"

namespace {

constexpr int kStoredTable = 120;
constexpr double kSmallest = 5e-7;  // the column has six places: less would be stored as 0
constexpr double kLargest = 9999999.999999;

}  // namespace

SensitivityParameters::SensitivityParameters(int rTypeNo, int caseNo, const QString& workDir)
    : rTypeNo_(rTypeNo),
      caseNo_(caseNo),
      input_(rTypeNo, workDir, caseNo),
      session_("WinDlgEnsureKlmP", {{"RLY_FKLM", kStoredTable}}, "_TEM") {}

bool SensitivityParameters::open() {
    return session_.open(Text::tr("，不能确认灵敏度参量")) && takeSensitivityResults(caseNo_) && read();
}

bool SensitivityParameters::read() {
    places_.clear();
    const int rType = readRelayTypes().value(rTypeNo_).RType;
    QHash<Location, qsizetype> known;
    sql::Query query;
    const bool read = query.exec(
        "SELECT t.ID_Name,t.I_Name,t.J_Name,t.Side,t.RuleNo,t.Note,f.RFault,b.RFault FROM RLY_RDZTEM t"
        " LEFT JOIN RLY_FKLM f ON f.ID_Name=t.ID_Name AND f.I_Name=t.I_Name AND f.J_Name=t.J_Name AND f.Side=t.Side"
        " AND f.RuleNo=t.RuleNo"
        " LEFT JOIN RLY_FKLM_TEM b ON b.ID_Name=t.ID_Name AND b.I_Name=t.I_Name AND b.J_Name=t.J_Name AND"
        " b.Side=t.Side AND b.RuleNo=t.RuleNo WHERE t.Case_No=? ORDER BY t.ID",
        {caseNo_});
    while (query.next()) {
        const Location at{query.text(0), query.text(1), query.text(2), query.number(3)};
        if (!known.contains(at)) {
            known.insert(at, places_.size());
            places_.append({at, locationLabel(rType, at.ID_Name, at.I_Name, at.J_Name, at.Side).trimmed(), {}});
        }
        places_[known.value(at)].parameters.append(
            {query.number(4), query.text(5), query.raw(6), query.raw(7), !query.isNull(6)});
    }
    for (Place& place : places_)
        std::stable_sort(place.parameters.begin(), place.parameters.end(),
                         [](const Parameter& a, const Parameter& b) { return a.RuleNo < b.RuleNo; });
    return read;
}

bool SensitivityParameters::isUsable(const QString& value) {
    bool ok = false;
    const double number = value.trimmed().toDouble(&ok);
    return ok && std::isfinite(number) && number >= kSmallest && number <= kLargest;
}

bool SensitivityParameters::Place::lacksValue() const {
    return std::any_of(parameters.begin(), parameters.end(), [](const auto& one) { return one.lacksValue(); });
}

int SensitivityParameters::SavePara(int place, const QStringList& values) {
    if (place < 0 || place >= places_.size()) return -1;
    QVector<Parameter> typed = places_[place].parameters;
    QVariantList byRule;
    QVariantList rules;
    for (qsizetype at = 0; at < typed.size(); ++at) {
        if (!typed[at].isStored) continue;
        const QString text = values.value(at).trimmed();
        if (text == typed[at].value && typed[at].lacksValue()) continue;
        typed[at].value = text;
        if (!isUsable(text)) {
            ReportError(Text::tr("参量类型错误或数值小于等于零"), 0);
            return int(at);
        }
        byRule << typed[at].RuleNo << typed[at].value.toDouble();
        rules << typed[at].RuleNo;
    }
    if (rules.isEmpty()) return -1;
    const Location& at = places_[place].at;
    const bool stored =
        sql::Query().exec("UPDATE RLY_FKLM SET RFault=CASE RuleNo" + QString(" WHEN ? THEN ?").repeated(rules.size()) +
                              " END WHERE ID_Name=? AND I_Name=? AND J_Name=? AND Side=? AND RuleNo IN (" +
                              sql::placeholders(rules.size()) + ")",
                          byRule + QVariantList{at.ID_Name, at.I_Name, at.J_Name, at.Side} + rules);
    if (!stored) return notStored;
    places_[place].parameters = typed;
    return -1;
}

void SensitivityParameters::tellMissing() const {
    const auto count = std::count_if(places_.begin(), places_.end(), [](const Place& p) { return p.lacksValue(); });
    if (count > 0)
        ReportError(
            Text::tr("有参量没有算出值的保护位置: ") + QString::number(count) + Text::tr(" 处，其灵敏度没有结果"), 1);
}

bool SensitivityParameters::confirm() {
    if (!session_.commit()) return false;
    tellMissing();
    input_.BuildSensitivityRows();
    return true;
}

bool SensitivityParameters::cancel() { return !session_.isOpen() || session_.restore(); }
