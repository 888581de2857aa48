#pragma once

#include <QHash>
#include <QSet>
#include <optional>

/// Branch coefficients of a relay for the branches behind its line, as the case has computed them: those of its last
/// run, and those that the results of the relay's rules rest on.
class PictureCoefficients {
  public:
    PictureCoefficients(int caseNo, int rNo, int rTypeNo);

    /// The share of the branch's current that flows in the relay, |I_B| / |I_M|: the largest, which is the smallest
    /// assist coefficient; of both sequences where the rules of the type read both. 0: the currents oppose each other.
    /// Nothing where none was computed.
    /// \param idNo, side  the branch and its nearer end \param relay  the relay there, 0 none
    [[nodiscard]] std::optional<double> of(int idNo, int side, int relay) const;

  private:
    enum Sequence { Positive, Zero };
    using Shares = QHash<QPair<int, int>, double>;

    void readKinds(int rTypeNo);
    void readRun(int caseNo, int rNo);
    void readRules(int caseNo, int rNo);
    void take(Sequence sequence, QPair<int, int> of, double share);
    [[nodiscard]] std::optional<double> share(Sequence sequence, int idNo, int side, int relay) const;

    QSet<int> wanted_;
    Shares shares_[2];  // by branch and side; by relay and -1; by branch and -2
};
