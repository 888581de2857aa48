#pragma once

#include <QVariant>
#include <QVector>

/// A row of RLY_CRUDRM but for the keys that its RuleFaultRows holds.
struct RuleFaultRow {
    int pno = 0, rMode = 0, mType = 0;
    int idNo = 0, iNo = 0, jNo = 0;
    int kLoc = 0, fType = 1;
    QVariant r, x;
    int flg = 0;  ///< 0 from a template, 1 set by the user
};

/// The faults of one relay and rule in a run: those that stand in RLY_CRUDRM, and those added since.
class RuleFaultRows {
  public:
    RuleFaultRows(int caseNo, int rno, int ruleNo);

    /// Highest number in a range of fault numbers in use in a mode; 0 when there is none.
    [[nodiscard]] int highest(int pno, int rMode, int from, int to) const;
    void add(const RuleFaultRow& row) { added_.push_back(row); }
    /// Adds all rows of an element that is out of service.
    void addOutage(int pno, int rMode, int mType, int idNo, int iNo, int jNo, bool line);
    /// Inserts the added rows in one statement.
    bool store();

  private:
    int caseNo_, rno_, ruleNo_;
    QVector<RuleFaultRow> stored_, added_;
};
