#pragma once

#include <QHash>
#include <QVariant>
#include <QVector>
#include <map>
#include <tuple>

/// A row of RLY_CFZXSRM but for its `FzNo` and case.
struct MainBranchFault {
    int mType = 0;
    int idNo = 0, iNo = 0, jNo = 0;
    int kLoc = 0, fType = 1;
    QVariant r, x;
    int flg = 0;
};

/// The main branches of a case and their faults: what stands in RLY_CFZXS and RLY_CFZXSRM, and what was added since.
class MainBranchRows {
  public:
    /// A main branch as seen from one of its ends.
    struct End {
        int idNo = 0, iNo = 0, jNo = 0, side = 1;
    };
    struct Branch {
        int fzNo = 0;
        int flg = 0;  ///< 0 made automatically, 1 the user's, may be extended, 2 the user's, stands for itself
    };

    explicit MainBranchRows(int caseNo);

    [[nodiscard]] int caseNo() const { return caseNo_; }
    [[nodiscard]] const Branch* find(const End& end) const;
    /// Adds a main branch under the next free number. \return its number
    int add(const End& end, int flg = 0);
    /// Adds one under its own number.
    void add(const End& end, int flg, int fzNo);

    /// An automatic fault stands at this place.
    [[nodiscard]] bool hasFault(int fzNo, int idNo, int iNo, int jNo, int kLoc) const;
    /// An automatic outage of this element stands there.
    [[nodiscard]] bool hasOutage(int fzNo, int idNo, int iNo, int jNo) const;
    /// Highest number in a range in use; 0 when there is none.
    [[nodiscard]] int highest(int fzNo, int from, int to) const;
    void addFault(int fzNo, const MainBranchFault& fault);
    void addOutage(int fzNo, int mType, int idNo, int iNo, int jNo, bool line);

    /// Inserts what was added, in one transaction.
    bool store();

  private:
    using Key = std::tuple<int, int, int, int>;
    void read();

    int caseNo_;
    int lastNo_ = 0;
    std::map<Key, Branch> branches_;
    QHash<int, QVector<MainBranchFault>> faults_;
    QVector<QVariantList> newBranches_, newFaults_;
};
