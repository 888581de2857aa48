#pragma once

#include <QHash>
#include <QStringList>
#include <QVector>
#include <utility>

/// A parameter group of a rule as a form shows it.
struct ParameterGroup {
    int stored = 0;      ///< its number in the rule database; 0 for a new one
    QString number;      ///< texts, as typed
    QStringList values;  ///< in the order of the names
    bool chosen = false;
};

/// The parameter groups of a rule. They belong to the rule database and serve all cases and relays.
struct ParameterGroups {
    QString Note, Formula;  ///< of the rule
    QStringList names;
    QVector<ParameterGroup> groups;

    /// \param chosen  number of the group that is ticked
    static ParameterGroups read(int ruleNo, int chosen);

    /// Every value is a number that the database holds, the group numbers are 1, 2, 3 .. in any order, one group is
    /// ticked. \return false with a message
    [[nodiscard]] bool check() const;
    /// In place of the groups of before; all or nothing.
    [[nodiscard]] bool store(int ruleNo) const;
    /// Number of the ticked group; 0 without one.
    [[nodiscard]] int chosen() const;

    /// Who has chosen a group, or one with a higher number, for a rule.
    struct Users {
        int relays = 0, cases = 0;
    };
    /// \param besides  case and relay that do not count
    static Users usersFrom(int ruleNo, int parNo, int besidesCase, int besidesRelay);
};

/// The parameters of each group of some rules in one line, "Kk=0.85,   t=0,   ", by rule and group.
QHash<std::pair<int, int>, QString> parameterLines(const QList<int>& rules);
