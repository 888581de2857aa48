#include "programs/workflow/RulesWithoutResult.h"

#include <QFile>
#include <QRegularExpression>
#include <QSaveFile>

#include "platform/host/Text.h"
#include "platform/import/CsvTable.h"
#include "platform/import/Import.h"
#include "platform/sql/Sql.h"
#include "programs/frame/LocationLabel.h"
#include "programs/frame/RelayTypes.h"
#include "programs/frame/TableNames.h"

namespace RulesWithoutResult {

namespace {

struct KnownReason {
    const char* engine;
    const char* text;
};
constexpr KnownReason kReasons[] = {
    {"the part of that relay is not set yet", QT_TRANSLATE_NOOP("Text", "与之配合的段还没有定值")},
    {"the relay feeds nothing into that branch", QT_TRANSLATE_NOOP("Text", "保护对相邻支路没有助增，或电流方向相反")},
    {"a fault that the relay does not see", QT_TRANSLATE_NOOP("Text", "规定的故障下保护没有电流")},
    {"no branch coefficient for that main branch", QT_TRANSLATE_NOOP("Text", "没有分支系数")},
    {"the network does not have its element", QT_TRANSLATE_NOOP("Text", "保护所在元件不在网络中")},
    {"RELAY.R1 does not have the relay", QT_TRANSLATE_NOOP("Text", "保护没有参加计算")},
    {"the program did not end well", QT_TRANSLATE_NOOP("Text", "计算程序没有正常结束")},
    {"the program did not start", QT_TRANSLATE_NOOP("Text", "计算程序不能启动")},
    {"is too large for a setting", QT_TRANSLATE_NOOP("Text", "结果超出定值的范围")},
};
/// The general reason, told only where no other is known.
constexpr KnownReason kNoCandidate = {"has no candidate",
                                      QT_TRANSLATE_NOOP("Text", "没有适合的故障、相邻支路或配合保护")};

QString fileOf(const QString& workDir, int caseNo) { return workDir + "NORESULT." + QString::number(caseNo); }

QVector<RuleWithoutResult> parsed(const QByteArray& bytes, const QString& name) {
    QVector<RuleWithoutResult> rules;
    const auto table = import::parseCsv(bytes.toStdString(), name.toStdString());
    for (const import::CsvRecord& record : table.records) {
        if (record.cells.size() != 4) continue;
        const auto number = [&](size_t cell) { return QString::fromStdString(record.cells[cell]).toInt(); };
        rules.append({number(0), number(1), number(2), QString::fromStdString(record.cells[3])});
    }
    return rules;
}

}  // namespace

std::optional<RuleWithoutResult> read(const QString& line) {
    static const QRegularExpression form("^relay (\\d+), part (\\d+), rule (\\d+): no result: (.+)$");
    const auto found = form.match(line);
    if (!found.hasMatch()) return std::nullopt;
    return RuleWithoutResult{found.captured(1).toInt(), found.captured(2).toInt(), found.captured(3).toInt(),
                             found.captured(4)};
}

QString reasonText(const QString& reason) {
    QStringList texts;
    for (const KnownReason& known : kReasons)
        if (reason.contains(known.engine)) texts.append(Text::tr(known.text));
    if (texts.isEmpty() && reason.contains(kNoCandidate.engine)) texts.append(Text::tr(kNoCandidate.text));
    return texts.isEmpty() ? Text::tr("其他原因（") + reason + "）" : texts.join("，");
}

bool store(const QString& workDir, int caseNo, const QVector<RuleWithoutResult>& rules) {
    std::string text;
    import::appendCsv(text, {"relay", "part", "rule", "reason"});
    for (const RuleWithoutResult& rule : rules)
        import::appendCsv(text, {std::to_string(rule.RNo), std::to_string(rule.PNo), std::to_string(rule.RuleNo),
                                 rule.reason.toStdString()});
    QSaveFile file(fileOf(workDir, caseNo));
    return file.open(QIODevice::WriteOnly) && file.write(text.data(), qint64(text.size())) == qint64(text.size()) &&
           file.commit();
}

QVector<RuleWithoutResult> load(const QString& workDir, int caseNo) {
    QFile file(fileOf(workDir, caseNo));
    if (!file.open(QIODevice::ReadOnly)) return {};
    try {
        return parsed(file.readAll(), file.fileName());
    } catch (const import::ImportError&) {
        return {};
    }
}

Wording::Wording(int rTypeNo) {
    const int rType = readRelayTypes().value(rTypeNo).RType;
    sql::Query relays;
    relays.exec("SELECT RNo,ID_Name,I_Name,J_Name,Side,RTypeCode FROM RLY_RUD WHERE RTypeNo=?", {rTypeNo});
    while (relays.next())
        places_.insert(
            relays.number(0),
            locationLabel(rType, relays.text(1), relays.text(2), relays.text(3), relays.number(4)).trimmed() + " " +
                relays.text(5));
    sql::Query rules(tables::ruleConnection);
    rules.exec("SELECT RuleNo,Note FROM RULEINF");
    while (rules.next()) notes_.insert(rules.number(0), rules.text(1));
}

QString Wording::name(int rNo, int pNo, int ruleNo) const {
    return places_.value(rNo, Text::tr("保护") + QString::number(rNo)) + " " + QString::number(pNo) +
           Text::tr(" 段 整定原则 ") + QString::number(ruleNo) + " " + notes_.value(ruleNo);
}

QString Wording::operator()(const RuleWithoutResult& rule) const {
    return name(rule.RNo, rule.PNo, rule.RuleNo) + Text::tr(" 没有结果: ") + reasonText(rule.reason);
}

}  // namespace RulesWithoutResult
