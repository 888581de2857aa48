#pragma once

#include <QVariant>
#include <QVector>
#include <map>
#include <utility>

/// A row of RLY_CRUDRM but for its relay, rule and case.
struct RuleFaultRow {
    int pno = 0, rMode = 0, mType = 0;
    int idNo = 0, iNo = 0, jNo = 0;
    int kLoc = 0, fType = 1;
    QVariant r, x;
    int flg = 0;  ///< 0 from a template, 1 set by the user
};

/// The rule faults of a run: those that stand in RLY_CRUDRM for the case, and those added since.
class RunFaultRows {
  public:
    explicit RunFaultRows(int caseNo);

    /// Rows of a rule in the order in which they were made.
    [[nodiscard]] const QVector<RuleFaultRow>& of(int rno, int ruleNo) const;
    void add(int rno, int ruleNo, const RuleFaultRow& row);
    [[nodiscard]] bool hasAdded() const { return !added_.isEmpty(); }
    /// Inserts what was added, in one statement.
    bool store();

  private:
    int caseNo_;
    std::map<std::pair<int, int>, QVector<RuleFaultRow>> rows_;
    QVector<QVariantList> added_;
};

/// The same for one relay and rule.
class RuleFaultRows {
  public:
    RuleFaultRows(RunFaultRows& all, int rno, int ruleNo) : all_(all), rno_(rno), ruleNo_(ruleNo) {}

    /// Highest number in a range of fault numbers in use in a mode; 0 when there is none.
    [[nodiscard]] int highest(int pno, int rMode, int from, int to) const;
    void add(const RuleFaultRow& row) { all_.add(rno_, ruleNo_, row); }
    /// Adds all rows of an element that is out of service.
    void addOutage(int pno, int rMode, int mType, int idNo, int iNo, int jNo, bool line);

  private:
    RunFaultRows& all_;
    int rno_, ruleNo_;
};
