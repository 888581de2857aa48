#pragma once

#include <QHash>

#include "programs/reports/BookNetwork.h"

/// A rule of a relay part.
struct BookRuleKey {
    int RNo = 0, PNo = 0, RuleNo = 0;
    bool operator==(const BookRuleKey&) const = default;
};
inline size_t qHash(const BookRuleKey& key, size_t seed = 0) { return qHashMulti(seed, key.RNo, key.PNo, key.RuleNo); }

/// What the modes of the rules chose, and the faults and outages that they chose from.
class BookFaultRows {
  public:
    BookFaultRows(int caseNo, const BookNetwork& network) : caseNo_(caseNo), network_(network) {}
    /// \return false when a table cannot be read
    bool read();
    /// Gives a variable what its mode chose.
    void describe(BookVariable& variable, const BookRuleKey& rule) const;

  private:
    struct ModeKey {
        BookRuleKey rule;
        int mode;
        bool operator==(const ModeKey&) const = default;
        friend size_t qHash(const ModeKey& key, size_t seed) { return qHashMulti(seed, key.rule, key.mode); }
    };
    struct Choice {
        int NSela, NSelb, NSelc, NSys;
    };
    struct FaultRow {
        int MType;
        BookFault fault;
    };
    bool readFaults();
    [[nodiscard]] BookDecision decision(const ModeKey& key, const Choice& choice) const;

    int caseNo_;
    const BookNetwork& network_;
    QHash<ModeKey, QVector<Choice>> choices_;
    QHash<ModeKey, QVector<FaultRow>> faults_;  // of the chosen numbers only
};

/// The branch coefficients of the relays, with what decided each.
/// \return false when a table cannot be read
bool readBookCoefficients(int caseNo, const BookNetwork& network, QHash<int, QVector<BookCoefficient>>& byRelay);
