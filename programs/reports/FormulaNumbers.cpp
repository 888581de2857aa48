#include "programs/reports/FormulaNumbers.h"

#include <map>

namespace {

using Kind = Expression::Kind;

constexpr double kKilo = 1000;
constexpr double kStored = 5e-7;  ///< half a unit of the last place in the tables

Expression joined(Kind kind, Expression first, Expression second) {
    Expression made;
    made.kind = kind;
    made.parts = {std::move(first), std::move(second)};
    return made;
}

Expression single(Kind kind, Expression part) {
    Expression made;
    made.kind = kind;
    made.parts = {std::move(part)};
    return made;
}

Expression shownValue(const BookVariable& variable) {
    return Expression::of(*variable.shown(), variable.ofFault() ? kStored * kKilo : kStored);
}

/// Parameters and variables by the names that a formula uses for them; nothing where a name stands for two things or
/// for a variable without a value.
using Symbols = QHash<QString, std::optional<Expression>>;

Symbols symbolsOf(const BookRule& rule) {
    Symbols symbols;
    const auto add = [&](const QString& name, const std::optional<Expression>& value) {
        symbols[name] = symbols.contains(name) ? std::nullopt : value;
    };
    for (const BookParameter& parameter : rule.parameters) add(parameter.C, Expression::of(parameter.K));
    for (const BookVariable& variable : rule.variables)
        add(variable.Cin.section(' ', -1), variable.V ? std::optional(shownValue(variable)) : std::nullopt);
    return symbols;
}

/// Formulas by the name at their left.
QHash<QString, QString> statementsOf(const QString& formula) {
    QHash<QString, QString> statements;
    for (const QString& statement : formula.split("，"))
        if (const auto equals = statement.indexOf('='); equals > 0)
            statements.insert(statement.left(equals).trimmed(), statement.mid(equals + 1));
    return statements;
}

/// Reads the right side of a formula by recursive descent. What it cannot read makes the whole worth nothing.
class FormulaReader {
  public:
    FormulaReader(const Symbols& symbols, const QHash<QString, QString>& statements, const QString& text, int depth)
        : symbols_(symbols), statements_(statements), text_(text), depth_(depth) {}

    std::optional<Expression> read() {
        auto whole = sum();
        skipBlanks();
        return at_ == text_.size() ? whole : std::nullopt;
    }

  private:
    using Part = std::optional<Expression>;

    void skipBlanks() {
        while (at_ < text_.size() && text_[at_].isSpace()) ++at_;
    }
    bool take(QChar sign) {
        skipBlanks();
        if (at_ >= text_.size() || text_[at_] != sign) return false;
        ++at_;
        return true;
    }

    Part sum() {
        Part left = product();
        for (;;) {
            const bool plus = take('+');
            if (!plus && !take('-')) return left;
            Part right = product();
            if (!left || !right) return std::nullopt;
            left = joined(plus ? Kind::Sum : Kind::Difference, *left, *right);
        }
    }

    Part product() {
        Part left = factor();
        for (;;) {
            const bool times = take(u'×');
            if (!times && !take('/')) return left;
            Part right = factor();
            if (!left || !right) return std::nullopt;
            left = joined(times ? Kind::Product : Kind::Quotient, *left, *right);
        }
    }

    Part factor() {
        if (take('(')) {
            Part inner = sum();
            return take(')') ? inner : std::nullopt;
        }
        const QString word = nextWord();
        return take('(') ? function(word) : named(word);
    }

    QString nextWord() {
        skipBlanks();
        const auto from = at_;
        while (at_ < text_.size() && (text_[at_].isLetterOrNumber() || QString("'._√").contains(text_[at_]))) ++at_;
        return text_.mid(from, at_ - from);
    }

    Part function(const QString& name) {
        Part first = sum(), second;
        const bool two = take(',');
        if (two) second = sum();
        if (!take(')') || !first || (two && !second)) return std::nullopt;
        if (name == "max" && two) return joined(Kind::Larger, *first, *second);
        if (name == "min" && two) return joined(Kind::Smaller, *first, *second);
        if (name == "cos" && !two) return single(Kind::CosineOfDegrees, *first);
        if (name == "√" && !two) return single(Kind::Root, *first);
        return std::nullopt;
    }

    Part named(const QString& word) const {
        if (const auto known = symbols_.constFind(word); known != symbols_.constEnd()) return *known;
        if (const auto defined = statements_.constFind(word); defined != statements_.constEnd())
            return depth_ > 0 ? FormulaReader(symbols_, statements_, *defined, depth_ - 1).read() : std::nullopt;
        bool isNumber = false;
        const double number = word.toDouble(&isNumber);
        return isNumber ? Part(Expression::of(number, 0)) : std::nullopt;
    }

    const Symbols& symbols_;
    const QHash<QString, QString>& statements_;
    QString text_;
    int depth_;
    qsizetype at_ = 0;
};

/// The registers of a rule while its lines are gone through.
class LineReader {
  public:
    explicit LineReader(const BookRule& rule) : rule_(rule) {
        for (std::size_t k = 0; k < std::size_t(rule.parameters.size()); ++k)
            known_.emplace(exchange::kParameterBase + int(k) + 1, Expression::of(rule.parameters[qsizetype(k)].K));
        for (const BookVariable& variable : rule.variables)
            if (variable.V) known_.emplace(variable.VarNo, Expression::of(*variable.V));
    }

    std::optional<Expression> output(int number) {
        for (const exchange::RuleLine& line : rule_.lines)
            if (const auto made = result(line))
                known_.insert_or_assign(line.y, *made);
            else
                known_.erase(line.y);
        const auto found = known_.find(exchange::kOutputBase + number);
        return found == known_.end() ? std::nullopt : std::optional(found->second);
    }

  private:
    [[nodiscard]] const BookVariable* faultVariable(int code) const {
        for (const BookVariable& variable : rule_.variables)
            if (variable.VarNo == code && variable.ofFault() && variable.V) return &variable;
        return nullptr;
    }

    /// An operand with its coefficient; a fault quantity times 1000 is what the book shows of it.
    [[nodiscard]] std::optional<Expression> operand(int code, double coefficient) const {
        if (const BookVariable* fault = faultVariable(code); fault && coefficient == kKilo) return shownValue(*fault);
        const auto found = known_.find(code);
        if (found == known_.end()) return std::nullopt;
        if (coefficient == 1) return found->second;
        return joined(Kind::Product, Expression::of(coefficient, 0), found->second);
    }

    [[nodiscard]] std::optional<Expression> result(const exchange::RuleLine& line) const {
        const bool one = line.second == 0;
        const bool neutral = (line.nop <= 2 && line.b == 0) || ((line.nop == 3 || line.nop == 4) && line.b == 1);
        if (line.first == 0) return std::nullopt;
        if (one && neutral) return operand(line.first, line.a);
        const auto first = operand(line.first, line.a);
        const bool minus = line.b < 0 && (line.nop == 1 || line.nop == 11);
        const auto second =
            one ? std::optional(Expression::of(line.b, 0)) : operand(line.second, minus ? -line.b : line.b);
        if (!first || !second) return std::nullopt;
        return apply(line.nop, *first, *second, minus && !one);
    }

    static std::optional<Expression> apply(int nop, const Expression& x, const Expression& y, bool minus) {
        static const std::map<int, Kind> pairs = {
            {2, Kind::Difference}, {3, Kind::Product},       {4, Kind::Quotient},        {5, Kind::Larger},
            {6, Kind::Smaller},    {9, Kind::RootOfSquares}, {10, Kind::FirstIfPositive}};
        if (const auto pair = pairs.find(nop); pair != pairs.end()) return joined(pair->second, x, y);
        const Expression sum = joined(minus ? Kind::Difference : Kind::Sum, x, y);
        if (nop == 1) return sum;
        if (nop == 7) return single(Kind::Root, x);
        if (nop == 8) return single(Kind::Magnitude, x);
        if (nop == 11) return single(Kind::CosineOfDegrees, sum);
        return std::nullopt;
    }

    const BookRule& rule_;
    std::map<int, Expression> known_;  // by operand code
};

}  // namespace

std::optional<Expression> formulaWithNumbers(const BookRule& rule, const QString& cdz) {
    constexpr int kDefinitions = 4;
    const auto statements = statementsOf(rule.Formula);
    const auto own = statements.constFind(cdz);
    if (own == statements.constEnd()) return std::nullopt;
    return FormulaReader(symbolsOf(rule), statements, *own, kDefinitions).read();
}

std::optional<Expression> linesWithNumbers(const BookRule& rule, const QString& cdz) {
    const auto number = rule.outputs.indexOf(cdz);
    return number < 0 ? std::nullopt : LineReader(rule).output(int(number) + 1);
}

QString numbersBehind(const BookRule& rule, const BookResult& result) {
    for (const auto& way : {formulaWithNumbers(rule, result.Cdz), linesWithNumbers(rule, result.Cdz)})
        if (way && way->gives(result.Rdz)) return way->text();
    return {};
}
