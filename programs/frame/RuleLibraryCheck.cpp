#include <QMap>
#include <QSet>

#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/frame/RuleLibrary.h"

namespace {

/// What the lines of one rule may name.
struct RuleNames {
    int ruleNo = 0;
    int outputs = 0;
    QMap<int, int> modeOfVariable;  ///< VarNo -> ModeNo
    QSet<int> parameters;           ///< KNo of group 1
    QSet<int> temporaries;          ///< set so far
};

class LibraryCheck {
  public:
    explicit LibraryCheck(const QString& connection) : connection_(connection) {}

    QStringList run() {
        checkReferences();
        checkCounts();
        readRules();
        checkModeLines();
        checkRuleLines();
        return faults_;
    }

  private:
    void expectNone(const QString& statement, const QString& what) {
        sql::Query query(connection_);
        if (!query.exec(statement)) faults_ << Text::tr("查询失败：") + query.errorText();
        while (query.next()) faults_ << what + "：" + query.text(0);
    }

    void checkReferences() {
        expectNone("SELECT DISTINCT RuleNo FROM RTYPERULE WHERE RuleNo NOT IN (SELECT RuleNo FROM RULEINF)",
                   Text::tr("RTYPERULE 中的规则不存在"));
        expectNone("SELECT RuleNo FROM RULEINF WHERE RuleNo NOT IN (SELECT RuleNo FROM RTYPERULE)",
                   Text::tr("规则不属于任何保护类型"));
        expectNone(
            "SELECT a.RuleNo FROM RTYPERULE a JOIN RTYPE b ON b.RTypeNo=a.RTypeNo AND b.DzNo=1 "
            "WHERE a.RTypeNo>0 AND (a.RPartNo<1 OR a.RPartNo>b.NPart)",
            Text::tr("规则的段号超出保护类型的段数"));
        expectNone("SELECT RuleNo FROM RULEINF WHERE PRTypeNo>0 AND PRTypeNo NOT IN (SELECT RTypeNo FROM RTYPE)",
                   Text::tr("被配合的保护类型不存在"));
        expectNone(
            "SELECT a.RuleNo FROM RTYPERULE a JOIN VAROUT o ON o.RuleNo=a.RuleNo WHERE a.RTypeNo>0 AND NOT EXISTS "
            "(SELECT 1 FROM RTYPE t WHERE t.RTypeNo=a.RTypeNo AND t.Cdz=o.Cdz)",
            Text::tr("规则的输出不是该保护类型的定值"));
        expectNone("SELECT DISTINCT RuleNo FROM RMU WHERE PatNo>0 AND PatNo NOT IN (SELECT PatNo FROM RPRM)",
                   Text::tr("故障模板不存在"));
        expectNone(
            "SELECT DISTINCT a.RuleNo FROM MODEINF a WHERE a.ModeNo BETWEEN 1 AND 20 AND NOT EXISTS "
            "(SELECT 1 FROM RMU u WHERE u.RuleNo=a.RuleNo AND u.ModeNo=a.ModeNo AND u.PatNo>0)",
            Text::tr("故障计算没有模板"));
        expectNone(
            "SELECT CONCAT(RTypeNo,' ',PNo) FROM USEFKLM WHERE RuleNo NOT IN (SELECT RuleNo FROM RULEINF WHERE "
            "RuleNo<100) OR DRuleNo NOT IN (SELECT RuleNo FROM RULEINF WHERE RuleNo<100) OR KlmFlg NOT IN (1,2)",
            Text::tr("灵敏度校验的规则或方式有误"));
        expectNone("SELECT PatNo FROM RPRM WHERE LType NOT IN (1,2,3) OR FType NOT BETWEEN 1 AND 7 OR K_Loc>100",
                   Text::tr("故障模板的位置或类型有误"));
        expectNone("SELECT n FROM (SELECT 1 n UNION SELECT 2) w WHERE n NOT IN (SELECT PatNo FROM FZPRM)",
                   Text::tr("缺少分支系数模板"));
        expectNone("SELECT RuleNo FROM RULEINF WHERE RuleNo<100 AND PRTypeNo<>0",
                   Text::tr("灵敏度规则不能与保护类型配合"));
        expectNone("SELECT RuleNo FROM RULEINF WHERE SFlg>3", Text::tr("运行方式标志有误"));
    }

    void checkCounts() {
        const QString form =
            "SELECT RuleNo FROM RULEINF r WHERE r.%1<>(SELECT COUNT(%2) FROM %3 x WHERE x.RuleNo=r.RuleNo%4)";
        expectNone(form.arg("NumMode", "DISTINCT x.ModeNo", "MODEINF", ""), Text::tr("NumMode 与 MODEINF 不符"));
        expectNone(form.arg("NVarin", "*", "VARIN", ""), Text::tr("NVarin 与 VARIN 不符"));
        expectNone(form.arg("NPar", "*", "PARAINF", " AND x.ParNo=1"), Text::tr("NPar 与 PARAINF 不符"));
        expectNone(form.arg("NRule", "*", "RULE", ""), Text::tr("NRule 与 RULE 不符"));
        expectNone(form.arg("NOutPut", "*", "VAROUT", ""), Text::tr("NOutPut 与 VAROUT 不符"));
    }

    void readRules() {
        sql::Query query(connection_);
        query.exec("SELECT RuleNo,NOutPut FROM RULEINF");
        while (query.next()) rules_[query.number(0)] = {query.number(0), query.number(1), {}, {}, {}};
        query.exec("SELECT RuleNo,VarNo,ModeNo FROM VARIN");
        while (query.next()) rules_[query.number(0)].modeOfVariable[query.number(1)] = query.number(2);
        query.exec("SELECT RuleNo,KNo FROM PARAINF WHERE ParNo=1");
        while (query.next()) rules_[query.number(0)].parameters << query.number(1);
    }

    void fault(int ruleNo, const QString& what) { faults_ << Text::tr("规则 %1：%2").arg(ruleNo).arg(what); }

    /// \param mode  the mode of a mode line, or -1 in a rule line
    void checkOperand(const RuleNames& rule, const QString& code, int mode) {
        if (code.isEmpty()) return;
        bool ok = false;
        const int n = code.mid(1).toInt(&ok);
        const QChar kind = code.at(0);
        const bool known =
            ok && ((kind == 'I' && rule.modeOfVariable.contains(n)) || (kind == 'K' && rule.parameters.contains(n)) ||
                   (kind == 'T' && rule.temporaries.contains(n)));
        if (!known) return fault(rule.ruleNo, Text::tr("操作数 ") + code + Text::tr(" 没有定义"));
        if (kind != 'I' || mode < 0) return;
        const int own = rule.modeOfVariable[n];
        if (own != 0 && own > mode) fault(rule.ruleNo, Text::tr("变量 ") + code + Text::tr(" 不属于这个计算"));
    }

    void checkModeLines() {
        sql::Query query(connection_);
        query.exec("SELECT RuleNo,ModeNo,SelVar1,SelVar2,Nop,Y,Note,ItemNo FROM MODEINF ORDER BY RuleNo,ModeNo,ItemNo");
        int lastRule = -1, lastMode = -1;
        while (query.next()) {
            RuleNames& rule = rules_[query.number(0)];
            const int mode = query.number(1);
            const bool opens = rule.ruleNo != lastRule || mode != lastMode;
            checkOperand(rule, query.text(2), mode);
            checkOperand(rule, query.text(3), mode);
            if (query.number(4) < 1 || query.number(4) > 11) fault(rule.ruleNo, Text::tr("运算号有误"));
            if ((opens && mode >= 1 && mode <= 20) == query.text(6).isEmpty())
                fault(rule.ruleNo, Text::tr("计算说明应当只写在故障计算的第一步"));
            rule.temporaries << query.number(5);
            lastRule = rule.ruleNo;
            lastMode = mode;
        }
    }

    void checkRuleLines() {
        sql::Query query(connection_);
        query.exec("SELECT RuleNo,X1,X2,Nop,Y FROM RULE ORDER BY RuleNo,Line_No");
        QMap<int, QSet<int>> outputs;
        while (query.next()) {
            RuleNames& rule = rules_[query.number(0)];
            checkOperand(rule, query.text(1), -1);
            checkOperand(rule, query.text(2), -1);
            if (query.number(3) < 1 || query.number(3) > 11) fault(rule.ruleNo, Text::tr("运算号有误"));
            const QString result = query.text(4);
            const int n = result.mid(1).toInt();
            if (result.startsWith('T') && n > 0) {
                rule.temporaries << n;
            } else if (result.startsWith('O') && n >= 1 && n <= rule.outputs) {
                outputs[rule.ruleNo] << n;
            } else {
                fault(rule.ruleNo, Text::tr("结果 ") + result + Text::tr(" 没有定义"));
            }
        }
        for (const RuleNames& rule : std::as_const(rules_))
            if (outputs[rule.ruleNo].size() != rule.outputs) fault(rule.ruleNo, Text::tr("有的输出没有算出"));
    }

    QString connection_;
    QMap<int, RuleNames> rules_;
    QStringList faults_;
};

}  // namespace

QStringList RuleLibrary::faults(const QString& connection) { return LibraryCheck(connection).run(); }
