#pragma once

#include <QVariant>
#include <QVector>
#include <deque>
#include <map>
#include <string>
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
        End end;
        QVector<MainBranchFault> faults;
        std::string text;  ///< its section of the main-branch file; empty when it has to be made anew

        /// An automatic fault stands at this place.
        [[nodiscard]] bool hasFault(int idNo, int iNo, int jNo, int kLoc) const;
        /// An automatic outage of this element stands there.
        [[nodiscard]] bool hasOutage(int idNo, int iNo, int jNo) const;
        /// Highest number in a range in use; 0 when there is none.
        [[nodiscard]] int highest(int from, int to) const;
    };

    explicit MainBranchRows(int caseNo);

    [[nodiscard]] int caseNo() const { return caseNo_; }
    /// In the order of their numbers as they were made.
    [[nodiscard]] std::deque<Branch>& branches() { return branches_; }
    /// First main branch at an end; null when there is none.
    [[nodiscard]] Branch* find(const End& end);
    [[nodiscard]] Branch* find(int fzNo);
    /// Adds a main branch, under the next free number when `fzNo` is 0.
    Branch& add(const End& end, int flg, int fzNo = 0);
    void addFault(Branch& branch, const MainBranchFault& fault);
    void addOutage(Branch& branch, int mType, int idNo, int iNo, int jNo, bool line);

    [[nodiscard]] bool hasAdded() const { return !newBranches_.isEmpty() || !newFaults_.isEmpty(); }
    /// Inserts what was added, in one transaction.
    bool store();

  private:
    using Key = std::tuple<int, int, int, int>;
    Branch& keep(const End& end, int flg, int fzNo);

    int caseNo_;
    int lastNo_ = 0;
    std::deque<Branch> branches_;
    std::map<Key, Branch*> byEnd_;
    std::map<int, Branch*> byNo_;
    QVector<QVariantList> newBranches_, newFaults_;
};
