#include <algorithm>

#include "programs/reports/BookPages.h"
#include "programs/reports/BookText.h"
#include "programs/reports/BookWords.h"
#include "programs/reports/FormulaNumbers.h"

namespace {

QString relayAnchor(int rNo) { return "r" + QString::number(rNo); }
QString partAnchor(const BookPart& part) { return relayAnchor(part.RNo) + "p" + QString::number(part.PNo); }
QString ruleAnchor(const BookPart& part, int ruleNo) { return partAnchor(part) + "n" + QString::number(ruleNo); }

QString escaped(const QString& text) { return text.trimmed().toHtmlEscaped(); }
QString tagged(const char* tag, const QString& inner, const QString& attributes = {}) {
    const QString name = tag;
    return "<" + name + (attributes.isEmpty() ? "" : " " + attributes) + ">" + inner + "</" + name + ">";
}
QString heading(const char* tag, const QString& anchor, const QString& text) {
    return tagged(tag, text, "id=\"" + anchor + "\"") + "\n";
}
QString link(const QString& anchor, const QString& text) {
    return tagged("a", text.toHtmlEscaped(), "href=\"#" + anchor + "\"");
}
QString cell(const QString& inner) { return tagged("td", inner); }
QString figure(const QString& inner) { return tagged("td", inner, "class=\"figure\""); }

/// A table of rows that are given as their cells.
QString table(const QStringList& header, const QStringList& rows) {
    QString head;
    for (const QString& text : header) head += tagged("th", text.toHtmlEscaped());
    QString body = tagged("thead", tagged("tr", head)) + "\n<tbody>\n";
    for (const QString& row : rows) body += tagged("tr", row) + "\n";
    return "<div class=\"table\"><table>" + body + "</tbody></table></div>\n";
}

class Body {
  public:
    explicit Body(const BookPages& pages)
        : pages_(pages), book_(pages.content), sensitivity_(pages.content.request.sensitivity) {
        for (const BookPart& part : book_.parts) {
            if (!relays_.contains(part.RNo)) order_.append(part.RNo);
            relays_[part.RNo].append(&part);
        }
        for (QVector<const BookPart*>& parts : relays_)
            std::stable_sort(parts.begin(), parts.end(), [](const auto* a, const auto* b) { return a->PNo < b->PNo; });
    }

    QString write(const QDateTime& at) {
        writeHead(at);
        writeContents();
        writeOverview();
        for (const int relay : order_) writeRelay(relay);
        return text_;
    }

  private:
    void writeHead(const QDateTime& at) {
        text_ += tagged("h1", bookTitle(sensitivity_)) + "\n";
        text_ += tagged("p",
                        "作业 " + tagged("b", escaped(book_.request.caseName)) + " · " +
                            escaped(book_.request.typeText) + " · 计算书日期 " + at.toString("yyyy-MM-dd hh:mm") +
                            " · 保护 " + QString::number(order_.size()) + " 套",
                        "class=\"facts\"") +
                 "\n";
    }

    [[nodiscard]] QString nameOf(int relay) const { return relays_[relay][0]->label + book_.request.typeText; }

    void writeContents() {
        text_ += heading("h2", "contents", "目录") + "<ul>\n" + tagged("li", link("overview", overviewTitle())) + "\n";
        for (const int relay : order_) {
            QString parts;
            for (const BookPart* part : relays_[relay])
                parts += " · " + link(partAnchor(*part), QString::number(part->PNo) + " 段");
            text_ += tagged("li", link(relayAnchor(relay), nameOf(relay)) + (sensitivity_ ? "" : parts)) + "\n";
        }
        text_ += "</ul>\n";
    }

    [[nodiscard]] QString overviewTitle() const { return sensitivity_ ? "参量一览" : "定值一览"; }

    void writeOverview() {
        QStringList rows;
        for (const int relay : order_)
            for (const BookPart* part : relays_[relay])
                sensitivity_ ? addParameters(*part, rows) : addSettings(*part, rows);
        text_ += heading("h2", "overview", overviewTitle());
        text_ += sensitivity_ ? table({"保护", "参量", "数值", "计算规则"}, rows)
                              : table({"保护", "段", "定值", "一次值", "二次值", "整定规则", "灵敏度"}, rows);
    }

    void addParameters(const BookPart& part, QStringList& rows) const {
        for (const BookRule& rule : part.rules)
            for (const BookResult& result : rule.results)
                rows.append(cell(link(partAnchor(part), part.label)) + cell(escaped(result.Cdz)) +
                            figure(rule.withoutResult()
                                       ? "没有结果"
                                       : link(ruleAnchor(part, rule.RuleNo), shownNumber(result.Rdz))) +
                            cell(link(ruleAnchor(part, rule.RuleNo), rule.Note)));
    }

    void addSettings(const BookPart& part, QStringList& rows) const {
        for (const BookSetting& setting : part.settings) {
            rows.append(cell(link(relayAnchor(part.RNo), part.label)) +
                        cell(link(partAnchor(part), QString::number(part.PNo))) + cell(escaped(setting.DspCdz)) +
                        valueCells(part, setting) + cell(sensitivityWords(part, setting)));
        }
    }

    [[nodiscard]] const ResultRow row(const BookPart& part, const BookSetting& setting) const {
        return pages_.table.value({{part.RNo, part.PNo}, setting.Cdz});
    }

    /// Primary and secondary value and the rule that decided; the reason where there is no value.
    [[nodiscard]] QString valueCells(const BookPart& part, const BookSetting& setting) const {
        const ResultRow decided = row(part, setting);
        if (setting.primary == 0 && decided.RuleNo == 0)
            return figure("—") + figure("—") + cell(escaped(decided.reason.isEmpty() ? "没有结果" : decided.reason));
        const QString primary = quantityWords(setting.primary, setting.unit);
        const QString secondary = quantityWords(setting.secondary, setting.unit);
        if (decided.RuleNo == 0) return figure(primary) + figure(secondary) + cell("不由本次计算的规则得出");
        const QString rule = ruleAnchor(part, decided.RuleNo);
        return figure(link(rule, primary)) + figure(link(rule, secondary)) +
               cell(link(rule, QString::number(decided.RuleNo) + " " + decided.ruleNote));
    }

    [[nodiscard]] QString sensitivityWords(const BookPart& part, const BookSetting& setting) const {
        if (setting.sensitivities.isEmpty()) return {};
        if (row(part, setting).sensitivityOpen) return "参量未计算";
        const BookSensitivity& check = setting.sensitivities[0];
        if (check.Klm >= 0) return tagged("b", shownNumber(check.Klm)) + klmNumbers(check, setting);
        return check.Klm > -1.5 ? "参量值为 0，没有灵敏度" : "定值为 0，没有灵敏度";
    }

    [[nodiscard]] QString parameterWords(const BookPart& part, const BookSetting& setting,
                                         const BookSensitivity& check) const {
        return row(part, setting).sensitivityOpen ? "—" : escaped(check.Cdz) + " = " + shownNumber(check.parameter);
    }

    /// Parameter over setting or the other way round, whichever gives the figure.
    static QString klmNumbers(const BookSensitivity& check, const BookSetting& setting) {
        const Expression parameter = Expression::of(check.parameter), value = Expression::of(setting.primary);
        for (const auto& parts : {std::vector{parameter, value}, std::vector{value, parameter}}) {
            const Expression quotient{Expression::Kind::Quotient, parts, 0, 0};
            if (quotient.gives(check.Klm)) return " = " + quotient.text();
        }
        return {};
    }

    void writeRelay(int relay) {
        text_ += heading("h2", relayAnchor(relay), escaped(nameOf(relay)));
        for (const BookPart* part : relays_[relay]) writePart(*part);
        if (std::any_of(relays_[relay].begin(), relays_[relay].end(), &Body::usesCoefficients))
            writeCoefficients(relay);
    }

    static bool usesCoefficients(const BookPart* part) {
        return std::any_of(part->rules.begin(), part->rules.end(),
                           [](const auto& rule) { return rule.hasCoefficients(); });
    }

    void writePart(const BookPart& part) {
        text_ += heading("h3", partAnchor(part), sensitivity_ ? "灵敏度参量" : QString::number(part.PNo) + " 段");
        if (!sensitivity_) writeSettings(part);
        for (const BookRule& rule : part.rules) writeRule(part, rule);
    }

    void writeSettings(const BookPart& part) {
        QStringList rows, checks;
        for (const BookSetting& setting : part.settings) {
            rows.append(cell(escaped(setting.DspCdz)) + valueCells(part, setting));
            for (const BookSensitivity& check : setting.sensitivities)
                checks.append(cell(escaped(setting.DspCdz)) + cell(escaped(check.Note)) +
                              figure(parameterWords(part, setting, check)) + cell(sensitivityWords(part, setting)));
        }
        text_ += table({"定值", "一次值", "二次值", "整定规则"}, rows);
        if (!checks.isEmpty()) text_ += table({"校验", "灵敏度参量", "参量值", "灵敏度"}, checks);
    }

    void writeRule(const BookPart& part, const BookRule& rule) {
        const QString number = QString::number(rule.RuleNo) + "  ";
        text_ += heading("h4", ruleAnchor(part, rule.RuleNo),
                         tagged("span", number, "class=\"number\"") + escaped(rule.Note));
        text_ += tagged("p", "计算公式  " + tagged("code", escaped(rule.Formula))) + "\n";
        writeResults(part, rule);
        if (!rule.variables.isEmpty()) writeVariables(rule);
        if (!rule.parameters.isEmpty()) writeParameters(rule);
        if (rule.hasCoefficients())
            text_ += tagged("p", link(relayAnchor(part.RNo) + "k", "这套保护的分支系数明细")) + "\n";
    }

    void writeResults(const BookPart& part, const BookRule& rule) {
        if (rule.withoutResult()) {
            const QString reason = pages_.reasons.value({{part.RNo, part.PNo}, rule.RuleNo});
            text_ +=
                tagged("p", "没有结果" + (reason.isEmpty() ? "" : "：" + escaped(reason)), "class=\"none\"") + "\n";
            return;
        }
        QString results;
        for (const BookResult& result : rule.results) {
            const QString numbers = numbersBehind(rule, result), value = shownNumber(result.Rdz);
            const QString middle = numbers.isEmpty() || numbers == value ? "" : " = " + escaped(numbers);
            results += tagged("p",
                              escaped(result.DspCdz) + "  " +
                                  tagged("code", escaped(result.Cdz) + middle + " = " +
                                                     tagged("b", quantityWords(result.Rdz, result.unit))),
                              "class=\"result\"") +
                       "\n";
        }
        text_ += results;
    }

    void writeVariables(const BookRule& rule) {
        QStringList rows;
        for (const BookVariable& variable : rule.variables) {
            QStringList choices;
            for (const QString& words : choiceWords(variable, book_.RType)) choices.append(escaped(words));
            rows.append(cell(escaped(variable.Cin)) + figure(quantityWords(variable.shown(), variable.unit)) +
                        cell(choices.join("<br/>")));
        }
        text_ += table({"故障量和元件参数", "数值", "由何而来"}, rows);
    }

    void writeParameters(const BookRule& rule) {
        QStringList texts;
        for (const BookParameter& parameter : rule.parameters)
            texts.append(tagged("code", escaped(parameter.C) + " = " + shownNumber(parameter.K)));
        text_ += tagged("p", "参数组 " + QString::number(rule.ParNo) + "：" + texts.join("，")) + "\n";
    }

    void writeCoefficients(int relay) {
        text_ += heading("h3", relayAnchor(relay) + "k", "分支系数");
        QStringList rows;
        for (const BookCoefficient& coefficient : book_.coefficients.value(relay)) {
            addSequence("正序", coefficient.positive, rows);
            addSequence("零序", coefficient.zero, rows);
        }
        text_ += rows.isEmpty() ? tagged("p", "这次计算没有留下这套保护的分支系数明细。", "class=\"none\"") + "\n"
                                : table({"序网", "分支系数", "助增系数", "主干支路的故障"}, rows);
    }

    static void addSequence(const QString& name, const BookCoefficient::Sequence& sequence, QStringList& rows) {
        if (sequence.decided.faults.isEmpty()) return;
        rows.append(cell(name) + figure(shownNumber(sequence.Fz)) +
                    figure(sequence.Fz == 0 ? "∞" : shownNumber(1 / sequence.Fz)) +
                    cell(escaped(decisionWords(sequence.decided))));
    }

    const BookPages& pages_;
    const BookContent& book_;
    bool sensitivity_;
    QVector<int> order_;
    QHash<int, QVector<const BookPart*>> relays_;
    QString text_;
};

}  // namespace

QString bookBody(const BookPages& pages, const QDateTime& at) { return Body(pages).write(at); }
