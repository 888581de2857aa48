#include "programs/reports/BookText.h"

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/frame/Messages.h"

namespace {

constexpr int kField = 12;

const QString kIndent(6, ' ');
const QString kValueIndent(12, ' ');
const QString kTableIndent(15, ' ');

QString number(double value) { return QString::number(value, 'f', 6); }

QString fields(const QStringList& texts) {
    QString line = kTableIndent;
    for (const QString& text : texts) line += text.leftJustified(kField);
    return line;
}

QString dashes(int count) { return kTableIndent + QString(count, '-'); }

/// 1 over a branch coefficient.
QString assist(double coefficient) { return coefficient == 0 ? QStringLiteral("∞") : number(1.0 / coefficient); }

class TextBook {
  public:
    explicit TextBook(const BookContent& book) : book_(book), sensitivity_(book.request.sensitivity) {}

    QString write(const QDateTime& at) {
        writeHead(at);
        int relay = -1;
        for (const BookPart& part : book_.parts) {
            if (part.RNo != relay) lines({kIndent + part.label + book_.request.typeText, {}});
            relay = part.RNo;
            lines({kIndent + "段号：  " + QString::number(part.PNo), {}, "------------", {}});
            for (const BookRule& rule : part.rules) writeRule(part, rule);
            if (!sensitivity_) writeSummary(part);
        }
        return text_;
    }

  private:
    void line(const QString& text) { text_ += text + "\r\n"; }
    void lines(const QStringList& texts) {
        for (const QString& text : texts) line(text);
    }

    void writeHead(const QDateTime& at) {
        lines({bookTitle(sensitivity_),
               {},
               kIndent + "作业名：  " + book_.request.caseName + "    计算日期：  " + at.toString("yyyy.MM.dd") +
                   "    计算时间：  " + at.toString("hh:mm:ss.z"),
               kIndent + "保护类型：  " + book_.request.typeText,
               {}});
    }

    void writeRule(const BookPart& part, const BookRule& rule) {
        lines({kIndent + (sensitivity_ ? "灵敏度参量计算规则：  " : "整定规则：  ") + rule.Note,
               kIndent + "计算公式：  " + rule.Formula,
               {}});
        if (!rule.parameters.isEmpty()) writeParameters(rule);
        if (!rule.variables.isEmpty()) writeVariables(rule);
        if (rule.hasCoefficients()) writeCoefficients(part, rule);
        line(kIndent + (sensitivity_ ? "灵敏度参量计算结果：" : "定值计算结果："));
        for (const BookResult& result : rule.results)
            line(kValueIndent + (sensitivity_ ? result.Cdz : result.DspCdz) + "=" + number(result.Rdz));
        lines({{}, "------------", {}});
    }

    void writeParameters(const BookRule& rule) {
        lines({kIndent + "参数：  ", kValueIndent + "参数组 " + QString::number(rule.ParNo)});
        for (const BookParameter& parameter : rule.parameters) line(kIndent + parameter.C + "=" + number(parameter.K));
        line({});
    }

    /// A variable without a value has none here either.
    void writeValue(const BookVariable& variable) {
        const auto value = variable.shown();
        line(kValueIndent + variable.Cin + "=" + (value ? number(*value) : QString()));
    }

    void writeVariables(const BookRule& rule) {
        line(kIndent + "故障量和需要的元件参数：  ");
        for (const BookVariable& variable : rule.variables) {
            if (variable.isCoefficient()) continue;
            writeValue(variable);
            if (variable.ofFault()) writeFaults(variable);
            if (variable.ofElement()) writeElements(variable);
            if (variable.ofRelay()) writeRelays(variable);
        }
    }

    void writeFaults(const BookVariable& variable) {
        lines({kTableIndent + "故障设置和运行方式信息：",
               kTableIndent +
                   "运行方式        故障类型        ID_Name     I_Name      J_Name     k%          R           X",
               dashes(8 * kField)});
        for (const BookDecision& decided : variable.faults) {
            for (const BookFault& fault : decided.faults) line(fields(QStringList{decided.mode} + textsOf(fault)));
            if (const auto& out = decided.outage)
                line(fields({decided.mode, "检修 ", out->ID_Name, bookElementKind(out->Flg)}));
        }
    }

    static QStringList textsOf(const BookFault& fault) {
        const BookElement& at = fault.element;
        return {bookFaultKind(fault.FType),   at.ID_Name, at.I_Name, at.J_Name,
                QString::number(fault.K_Loc), fault.R,    fault.X};
    }

    void writeElements(const BookVariable& variable) {
        lines({kTableIndent + "ID_Name     I_Name      J_Name", dashes(30)});
        for (const BookElement& element : variable.elements)
            if (!element.ID_Name.isEmpty()) line(fields({element.ID_Name, element.I_Name, element.J_Name}));
    }

    void writeRelays(const BookVariable& variable) {
        lines({kTableIndent + "支路和保护的配合信息：", kTableIndent + "ID_Name     I_Name      J_Name      Side",
               dashes(4 * kField)});
        for (const Location& at : variable.relays)
            line(fields({at.ID_Name, at.I_Name, at.J_Name, QString::number(at.Side)}));
    }

    void writeCoefficients(const BookPart& part, const BookRule& rule) {
        QString opened;
        for (const BookVariable& variable : rule.variables) {
            if (!variable.isCoefficient()) continue;
            const QString heading = variable.isAssist() ? "助增系数:" : "分支系数:";
            if (heading != opened) line(kIndent + heading);
            opened = heading;
            writeValue(variable);
        }
        lines({kTableIndent + "序网        分支系数    助增系数    运行方式        故障类型          ID_Name     "
                              "I_Name      J_Name      k%          R           X",
               dashes(11 * kField)});
        for (const BookCoefficient& coefficient : book_.coefficients.value(part.RNo)) {
            writeSequence("正序        ", coefficient.positive);
            writeSequence("零序        ", coefficient.zero);
        }
    }

    void writeSequence(const QString& name, const BookCoefficient::Sequence& sequence) {
        const QStringList head{number(sequence.Fz), assist(sequence.Fz), sequence.decided.mode};
        const auto row = [&](const QStringList& texts) {
            line(kTableIndent + name + fields(head + texts).mid(kTableIndent.size()) + " ");
        };
        for (const BookFault& fault : sequence.decided.faults) row(textsOf(fault));
        if (const auto& out = sequence.decided.outage) row({"检修 ", out->ID_Name + bookElementKind(out->Flg)});
    }

    void writeSummary(const BookPart& part) {
        line(kIndent + "本段的定值确定为：");
        for (const BookSetting& setting : part.settings) {
            line(kValueIndent + setting.DspCdz + "=" + number(setting.primary) + " （一次值）      " +
                 number(setting.secondary) + " （二次值）");
            for (const BookSensitivity& check : setting.sensitivities) writeSensitivity(setting, check);
            line({});
        }
        lines({"------------", {}, {}});
    }

    void writeSensitivity(const BookSetting& setting, const BookSensitivity& check) {
        lines({kValueIndent + "用  " + check.Note + "  校验" + setting.DspCdz + "的灵敏度",
               kValueIndent + check.Cdz + "=" + number(check.parameter)});
        if (check.Klm >= 0)
            line(kValueIndent + "Klm=" + number(check.Klm));
        else if (check.Klm > -1.5)
            line(kValueIndent + "参量值不能为0，请重新计算灵敏度校验用参量值，灵敏度＝定值/参量值");
        else
            line(kValueIndent + "定值不能为0，请重新计算定值，灵敏度＝参量值/定值");
    }

    const BookContent& book_;
    bool sensitivity_;
    QString text_;
};

}  // namespace

QString bookText(const BookContent& book, const QDateTime& at) { return TextBook(book).write(at); }

QByteArray bookBytes(const QString& text) {
    if (sql::fitsGbk(text)) return sql::toGbk(text);
    QString fitting, strange;
    for (const uint code : text.toUcs4()) {
        const QString character = QString::fromUcs4(reinterpret_cast<const char32_t*>(&code), 1);
        const bool fits = sql::fitsGbk(character);
        fitting += fits ? character : QString("?");
        if (!fits && !strange.contains(character)) strange += character;
    }
    ReportError(Text::tr("计算书中有GBK字符集以外的字符，写成“?”: ") + strange, 1);
    return sql::toGbk(fitting);
}

QString bookTitle(bool sensitivity) { return sensitivity ? "灵敏度参量计算书" : "继电保护整定计算书"; }

QString bookFaultKind(int fType) {
    static const QString kinds[] = {{},
                                    "三相短路接地",
                                    "单相短路接地",
                                    "两相短路          ",
                                    "两相短路接地",
                                    "三相断线          ",
                                    "单相断线          ",
                                    "两相断线"};
    return fType >= 1 && fType <= 7 ? kinds[fType] : QString();
}

QString bookElementKind(int flg) {
    static const QString kinds[] = {{},       " 交流线", " 两绕组变压器", " 三绕组变压器", " 并联电容器", " 并联电抗器",
                                    " 发电机"};
    return flg >= 1 && flg <= 6 ? kinds[flg] : QString();
}
