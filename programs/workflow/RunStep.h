#pragma once

#include <QElapsedTimer>
#include <QVector>
#include <optional>

#include "platform/sql/Sql.h"

/// What the engine has in hand.
struct RuleInHand {
    int RNo = 0;
    int PNo = 0;
    int RuleNo = 0;  ///< the first of those in one engine run
    bool operator==(const RuleInHand&) const = default;
};

/// One engine run with everything that it writes into the project's tables: files are prepared, the engine runs,
/// results are read. The tables keep it as a whole or stay as they were, also when the program ends in between.
class RunStep {
  public:
    void begin(const RuleInHand& work);
    [[nodiscard]] bool isOpen() const { return changes_.has_value(); }
    /// \return false when the server did not take it; the tables are then as before
    bool keep();
    void takeBack() { changes_.reset(); }
    [[nodiscard]] bool wasKept() const { return kept_; }

    [[nodiscard]] const RuleInHand& inHand() const { return work_; }
    void setInHand(const RuleInHand& work) { work_ = work; }
    void signOfLife() { silent_.start(); }
    /// Milliseconds since the begin, and since the engine was last heard; 0 when no engine run is under way.
    [[nodiscard]] qint64 elapsed() const { return isOpen() ? since_.elapsed() : 0; }
    [[nodiscard]] qint64 silence() const { return isOpen() ? silent_.elapsed() : 0; }

  private:
    std::optional<sql::Transaction> changes_;
    bool kept_ = false;
    RuleInHand work_;
    QElapsedTimer since_, silent_;
};
