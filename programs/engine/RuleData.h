#pragma once

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

#include "exchange/RuleFile.h"
#include "programs/frame/RelayTypes.h"

/// A setting rule as the calculation needs it.
struct SettingRule {
    exchange::RuleBlock block;  ///< as it goes into the rule file
    QString note;
    int sFlg = 0;         ///< operating modes: 0 none, 1 maximum, 2 minimum, 3 both
    int prTypeNo = 0;     ///< relay type that the rule coordinates with
    QStringList outputs;  ///< `Cdz` in `DzNo` order
    struct Template {
        int modeNo = 0, patNo = 0;
    };
    std::vector<Template> templates;  ///< fault template of each mode
    [[nodiscard]] bool usesBranchCoefficients() const;
};

/// A row of a fault template.
struct TemplateFault {
    int lType = 0, kLoc = 0, fType = 0;
    double r = 0, x = 0;
};

/// Which rules give the sensitivity check of a setting.
struct SensitivityCheck {
    int pno = 0;
    QString cdz;
    int ruleNo = 0, dRuleNo = 0, klmFlg = 0;
};

/// The rule database in memory, read whole in a dozen queries, for the length of a run.
class RuleData {
  public:
    /// Reads the rule database as it stands now.
    static std::shared_ptr<const RuleData> read();

    /// Null when the database has no such rule.
    [[nodiscard]] const SettingRule* rule(int ruleNo) const;
    /// Null when the database has no such type.
    [[nodiscard]] const RelayTypeInfo* type(int rTypeNo) const;
    /// Numbers of the rules of a relay type, each once.
    [[nodiscard]] std::vector<int> rulesOfType(int rTypeNo) const;
    /// Numbers of all rules below 100.
    [[nodiscard]] std::vector<int> sensitivityRules() const;
    [[nodiscard]] const std::vector<TemplateFault>& faultTemplate(int patNo) const;
    [[nodiscard]] const std::vector<TemplateFault>& branchTemplate(int patNo) const;
    [[nodiscard]] const std::vector<SensitivityCheck>& sensitivityChecks(int rTypeNo) const;

  private:
    void readRules();
    void readModes();
    void readFormulas();
    void readParameters();
    void readTypes();
    void readTemplates();

    QMap<int, SettingRule> rules_;
    QHash<int, RelayTypeInfo> types_;
    QHash<int, std::vector<int>> rulesOfType_;
    QHash<int, std::vector<TemplateFault>> faultTemplates_, branchTemplates_;
    QHash<int, std::vector<SensitivityCheck>> checks_;
};
