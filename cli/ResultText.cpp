#include "cli/ResultText.h"

#include <nlohmann/json.hpp>

#include "cli/TextTable.h"
#include "platform/import/CsvTable.h"

namespace cli {

namespace {

/// Decimals of primary and secondary values by the kind of the setting.
int primaryDecimals(int vType) { return vType == kCurrent ? 1 : vType == kTime ? 2 : 3; }
int secondaryDecimals(int vType) { return vType == kTime ? 2 : 3; }

QString rounded(const ResultRow& row, double value, int decimals) {
    return row.hasValue() ? QString::number(value, 'f', decimals) : QString("-");
}

QString sensitivityText(const ResultRow& row) {
    return row.sensitivity && row.hasValue() ? QString::number(*row.sensitivity, 'f', 2) : QString("-");
}

QString ruleText(const ResultRow& row) {
    if (row.lacksTime) return "错误: " + row.reason;
    if (!row.reason.isEmpty()) return row.reason;
    return row.RuleNo == 0 ? QString("-") : QString::number(row.RuleNo) + " " + row.ruleNote;
}

}  // namespace

void printTable(const QVector<ResultRow>& rows) {
    TextTable table({"保护类型", "安装位置", "段", "定值", "一次值", "二次值", "单位", "灵敏度", "决定的原则"},
                    {2, 4, 5, 7});
    int last = -1;
    for (const ResultRow& row : rows) {
        const bool first = row.RNo != last;
        table.add({first ? row.RTypeCode : QString(), first ? row.label.trimmed() : QString(), QString::number(row.PNo),
                   row.DspCdz, rounded(row, row.primary, primaryDecimals(row.VType)),
                   rounded(row, row.secondary, secondaryDecimals(row.VType)), unitOf(row.VType), sensitivityText(row),
                   ruleText(row)});
        last = row.RNo;
    }
    table.print();
}

void printCsv(const QVector<ResultRow>& rows) {
    std::string text;
    import::appendCsv(text, {"relay", "type", "location", "part", "setting", "primary", "secondary", "unit",
                             "sensitivity", "rule", "rule_note", "reason"});
    for (const ResultRow& row : rows)
        import::appendCsv(
            text,
            {std::to_string(row.RNo), row.RTypeCode.toStdString(), row.label.trimmed().toStdString(),
             std::to_string(row.PNo), row.Cdz.toStdString(), number(row.primary).toStdString(),
             number(row.secondary).toStdString(), unitOf(row.VType).toStdString(),
             row.sensitivity ? number(*row.sensitivity).toStdString() : "",
             row.RuleNo != 0 ? std::to_string(row.RuleNo) : "", row.ruleNote.toStdString(), row.reason.toStdString()});
    print(QString::fromStdString(text));
}

void printJson(const QVector<ResultRow>& rows) {
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (const ResultRow& row : rows) {
        nlohmann::ordered_json object = {{"relay", row.RNo},
                                         {"type", row.RTypeCode.toStdString()},
                                         {"location", row.label.trimmed().toStdString()},
                                         {"part", row.PNo},
                                         {"setting", row.Cdz.toStdString()},
                                         {"unit", unitOf(row.VType).toStdString()},
                                         {"primary", row.primary},
                                         {"secondary", row.secondary},
                                         {"previous", row.oldPrimary},
                                         {"rule", row.RuleNo},
                                         {"rule_note", row.ruleNote.toStdString()},
                                         {"reason", row.reason.toStdString()}};
        if (row.sensitivity) object["sensitivity"] = *row.sensitivity;
        array.push_back(object);
    }
    print(QString::fromStdString(array.dump(1)) + "\n");
}

}  // namespace cli
