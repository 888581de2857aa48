#pragma once

#include <QHash>
#include <QString>
#include <QVector>
#include <optional>

/// A rule that the calculation had to leave without a result, and why, in the words of the engine.
struct RuleWithoutResult {
    int RNo = 0;
    int PNo = 0;
    int RuleNo = 0;
    QString reason;
    bool operator==(const RuleWithoutResult&) const = default;
};

/// What the engine tells about rules without a result, for users. The notes of a case's last setting run that was kept
/// lie in the working directory.
namespace RulesWithoutResult {

/// Reasons that no engine gives: it ended badly, or did not start.
inline const QString badEnd = QStringLiteral("the program did not end well");
inline const QString noStart = QStringLiteral("the program did not start");

/// A line of the engine; nothing when it tells something else.
std::optional<RuleWithoutResult> read(const QString& line);
/// The reason in Chinese; one that is not known stands in brackets as it came.
QString reasonText(const QString& reason);

bool store(const QString& workDir, int caseNo, const QVector<RuleWithoutResult>& rules);
/// Empty where nothing readable is stored.
QVector<RuleWithoutResult> load(const QString& workDir, int caseNo);

/// Names relays and rules as users know them; reads what it needs once.
class Wording {
  public:
    explicit Wording(int rTypeNo);
    [[nodiscard]] QString operator()(const RuleWithoutResult& rule) const;
    /// Relay, part and rule.
    [[nodiscard]] QString name(int rNo, int pNo, int ruleNo) const;

  private:
    QHash<int, QString> places_, notes_;
};

}  // namespace RulesWithoutResult
