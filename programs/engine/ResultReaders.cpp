#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include "exchange/FileNames.h"
#include "exchange/ResultFiles.h"
#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/engine/BulkUpdate.h"
#include "programs/engine/CRelayFaultCal.h"
#include "programs/engine/RunInputs.h"
#include "programs/engine/WorkFiles.h"
#include "programs/frame/Messages.h"

namespace {

/// Takes values over into columns and tells once per file when one does not fit.
class Values {
  public:
    explicit Values(const char* file) : file_(file) {}
    ~Values() {
        if (refused_) ReportError(QString(file_) + Text::tr("中有不能采用的数值，按0处理"), 1);
    }
    Values(const Values&) = delete;
    Values& operator=(const Values&) = delete;
    double take(double value) { return storable(value, refused_); }
    /// Numbers of the tables have no sign.
    int take(int value) {
        refused_ = refused_ || value < 0;
        return std::max(value, 0);
    }

  private:
    const char* file_;
    bool refused_ = false;
};

void tellUnreadable(const std::string& text, const char* file, std::size_t first, std::size_t end) {
    const int bad = exchange::unreadableLines(text, first, end);
    if (bad > 0) ReportError(QString(file) + Text::tr("中有") + QString::number(bad) + Text::tr("行不能识别"), 1);
}

/// The text of a result file; tells when lines of it do not say what they belong to, with fields `first` to `end`.
std::optional<std::string> readResults(const QString& workDir, const char* file, std::size_t first, std::size_t end) {
    auto text = work::read(workDir, file);
    if (text) tellUnreadable(*text, file, first, end);
    return text;
}

using RowKey = std::tuple<int, int, int, QString>;  // RNo, PNo, RuleNo, Cdz

/// New values of setting rows by their keys, the last line for a row winning.
std::map<RowKey, double> settingValues(const std::vector<exchange::SettingResult>& results, const RuleData& rules) {
    Values values(exchange::file::kSettingResults);
    std::map<RowKey, double> settings;
    for (const exchange::SettingResult& r : results) {
        const SettingRule* rule = r.ruleNo == 0 ? nullptr : rules.rule(r.ruleNo);
        if (!rule) continue;
        for (qsizetype k = 0; k < rule->outputs.size(); ++k) {
            const double value = static_cast<std::size_t>(k) < r.values.size() ? values.take(r.values[k]) : 0.0;
            settings[{r.rno, r.pno, r.ruleNo, rule->outputs[k]}] = value;
        }
    }
    return settings;
}

/// The rows of the table that the values belong to, as (`ID`, `Rdz`).
QVector<QVariantList> rowsFor(const std::map<RowKey, double>& settings, RunInputs& inputs) {
    QVector<QVariantList> rows;
    for (const auto& [key, value] : settings) {
        const auto& [rno, pno, ruleNo, cdz] = key;
        if (const int id = inputs.settingRowId(rno, pno, ruleNo, cdz)) rows.push_back({id, value});
    }
    return rows;
}

constexpr int kCoefficientRelay = 8;
const QStringList kCoefficientColumns{"FzNo",  "MINo",  "MJNo",   "MIDNo",  "MSide",  "BINo",
                                      "BJNo",  "BIDNo", "NLRNo",  "Fz1",    "NSel1a", "NSel1b",
                                      "NSys1", "Fz0",   "NSel0a", "NSel0b", "NSys0",  "Case_No"};

QVector<QVariantList> coefficientRows(const std::string& file, int caseNo) {
    tellUnreadable(file, exchange::file::kCoefficients, 0, 1);
    auto coefficients = exchange::parseCoefficients(file);
    std::ranges::stable_sort(coefficients, {}, [](const auto& r) { return std::pair(r.fzNo, r.nlRNo); });
    Values values(exchange::file::kCoefficients);
    QVector<QVariantList> rows;
    for (const exchange::CoefficientResult& r : coefficients) {
        if (r.fzNo == 0) continue;
        rows.push_back({values.take(r.fzNo), values.take(r.mINo), values.take(r.mJNo), values.take(r.mIdNo),
                        values.take(r.mSide), values.take(r.bINo), values.take(r.bJNo), values.take(r.bIdNo),
                        values.take(r.nlRNo), values.take(r.fz1), values.take(r.nSel1a), values.take(r.nSel1b),
                        values.take(r.nSys1), values.take(r.fz0), values.take(r.nSel0a), values.take(r.nSel0b),
                        values.take(r.nSys0), caseNo});
    }
    return rows;
}

bool insertCoefficients(const QVector<QVariantList>& rows) {
    return rows.isEmpty() || sql::insertRows({}, "RLY_KFINF", kCoefficientColumns, rows);
}

/// Takes the rows of the same main branches and relays out of the table.
bool removeCoefficients(const QVector<QVariantList>& rows, int caseNo) {
    constexpr qsizetype kAtOnce = 1000;
    for (qsizetype from = 0; from < rows.size(); from += kAtOnce) {
        QVariantList keys{caseNo};
        for (const QVariantList& row : rows.mid(from, kAtOnce)) keys << row[0] << row[kCoefficientRelay];
        if (!sql::Query().exec("DELETE FROM RLY_KFINF WHERE Case_No=? AND (FzNo,NLRNo) IN (" +
                                   QStringList(keys.size() / 2, "(?,?)").join(',') + ")",
                               keys))
            return false;
    }
    return true;
}

}  // namespace

bool CRelayFaultCal::ReadSettingResults() {
    const auto text = readResults(workDir_, exchange::file::kSettingResults, 1, 4);
    if (!text) return false;
    const auto settings = settingValues(exchange::parseSettingResults(*text), rules());
    return updateByKey("RLY_RDZTEM", {"ID", "Rdz"}, rowsFor(settings, inputs()));
}

bool CRelayFaultCal::ReadFaultResults() {
    const auto text = readResults(workDir_, exchange::file::kFaultResults, 0, 4);
    if (!text) return false;
    Values values(exchange::file::kFaultResults);
    QVector<QVariantList> rows;
    for (const exchange::FaultResult& r : exchange::parseFaultResults(*text))
        rows.push_back({values.take(r.nCal), values.take(r.rno), values.take(r.pno), values.take(r.ruleNo),
                        values.take(r.rmNo), values.take(r.nSela), values.take(r.nSelb), values.take(r.nSelc),
                        values.take(r.nSys), caseNo_});
    return rows.isEmpty() ||
           sql::insertRows({}, "RLY_FAULTINF",
                           {"NCal", "RNo", "PNo", "RuleNo", "RMNo", "NSela", "NSelb", "NSelc", "NSys", "Case_No"},
                           rows);
}

void CRelayFaultCal::keepBranchCoefs() {
    if (!work::exists(workDir_, exchange::file::kCoefficients)) return;
    if (const auto text = work::read(workDir_, exchange::file::kCoefficients)) coefficients_.take(*text);
}

bool CRelayFaultCal::storeBranchCoefs() {
    const CoefficientLines lines = std::exchange(coefficients_, {});
    return lines.isEmpty() || insertCoefficients(coefficientRows(lines.file(), caseNo_));
}

bool CRelayFaultCal::ReadBranchCoefResults() {
    const auto text = work::read(workDir_, exchange::file::kCoefficients);
    if (text) coefficients_.take(*text);
    return storeBranchCoefs() && text;
}

bool CRelayFaultCal::replaceBranchCoefs() {
    coefficients_.clear();
    keepBranchCoefs();
    const CoefficientLines lines = std::exchange(coefficients_, {});
    if (lines.isEmpty()) return true;
    const QVector<QVariantList> rows = coefficientRows(lines.file(), caseNo_);
    return removeCoefficients(rows, caseNo_) && insertCoefficients(rows);
}

bool CRelayFaultCal::ReadPhaseResults() {
    const auto text = readResults(workDir_, exchange::file::kPhaseResults, 0, 3);
    if (!text) return false;
    Values values(exchange::file::kPhaseResults);
    QVector<QVariantList> rows;
    for (const exchange::PhaseResult& r : exchange::parsePhaseResults(*text))
        rows.push_back({values.take(r.nCal), values.take(r.rno), values.take(r.pno), caseNo_});
    return rows.isEmpty() || sql::insertRows({}, "RLY_RRNPH", {"NCal", "RNo", "PNo", "Case_No"}, rows);
}

bool CRelayFaultCal::ReadVariableResults() {
    const auto text = readResults(workDir_, exchange::file::kVariableResults, 0, 4);
    if (!text) return false;
    Values values(exchange::file::kVariableResults);
    QVector<QVariantList> rows;
    for (const exchange::VariableResult& r : exchange::parseVariableResults(*text)) {
        int varNo = 0;
        for (double value : r.values)
            rows.push_back({values.take(r.nCal), values.take(r.rno), values.take(r.pno), values.take(r.ruleNo),
                            values.take(value), ++varNo, caseNo_});
    }
    return rows.isEmpty() ||
           sql::insertRows({}, "RLY_RRVIN", {"NCal", "RNo", "PNo", "RuleNo", "V", "VarNo", "Case_No"}, rows);
}
