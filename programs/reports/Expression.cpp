#include "programs/reports/Expression.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

using Kind = Expression::Kind;

constexpr int kDigits = 6;
/// However uncertain the numbers are, an expression that is further off than this does not explain a result.
constexpr double kFarthest = 1e-3;

double halfUnit(double value) {
    return value == 0 ? 0 : 0.5 * std::pow(10.0, std::floor(std::log10(std::abs(value))) - (kDigits - 1));
}

int rank(Kind kind) {
    switch (kind) {
        case Kind::Sum:
        case Kind::Difference:
            return 1;
        case Kind::Product:
        case Kind::Quotient:
            return 2;
        default:
            return 3;
    }
}

QString sign(Kind kind) {
    switch (kind) {
        case Kind::Sum:
            return " + ";
        case Kind::Difference:
            return " - ";
        case Kind::Product:
            return " × ";
        default:
            return " / ";
    }
}

QString bracketed(const Expression& part, bool brackets) {
    const bool negative = part.kind == Kind::Number && part.number < 0;
    return brackets || negative ? "(" + part.text() + ")" : part.text();
}

/// Pointers to the numbers of an expression.
void collect(Expression& expression, std::vector<Expression*>& numbers) {
    if (expression.kind == Kind::Number) numbers.push_back(&expression);
    for (Expression& part : expression.parts) collect(part, numbers);
}

}  // namespace

QString shownNumber(double value) { return QString::number(value, 'g', kDigits); }

Expression Expression::of(double value, double stored) {
    Expression made;
    made.number = shownNumber(value).toDouble();
    made.uncertainty = halfUnit(value) + stored;
    return made;
}

double Expression::value() const {
    const double x = parts.empty() ? number : parts[0].value();
    const double y = parts.size() < 2 ? 0 : parts[1].value();
    switch (kind) {
        case Kind::Number:
            return number;
        case Kind::Sum:
            return x + y;
        case Kind::Difference:
            return x - y;
        case Kind::Product:
            return x * y;
        case Kind::Quotient:
            return x / y;
        case Kind::Larger:
            return std::max(x, y);
        case Kind::Smaller:
            return std::min(x, y);
        case Kind::Root:
            return std::sqrt(x);
        case Kind::Magnitude:
            return std::abs(x);
        case Kind::RootOfSquares:
            return std::hypot(x, y);
        case Kind::FirstIfPositive:
            return x > 0 ? x : y;
        case Kind::CosineOfDegrees:
            return std::cos(x * std::numbers::pi / 180);
    }
    return std::nan("");
}

QString Expression::text() const {
    const auto part = [&](std::size_t k) { return parts[k].text(); };
    switch (kind) {
        case Kind::Number:
            return shownNumber(number);
        case Kind::Larger:
            return "max(" + part(0) + ", " + part(1) + ")";
        case Kind::Smaller:
            return "min(" + part(0) + ", " + part(1) + ")";
        case Kind::Root:
            return "√(" + part(0) + ")";
        case Kind::Magnitude:
            return "|" + part(0) + "|";
        case Kind::RootOfSquares:
            return "√((" + part(0) + ")² + (" + part(1) + ")²)";
        case Kind::FirstIfPositive:
            return "(" + part(0) + " > 0 ? " + part(0) + " : " + part(1) + ")";
        case Kind::CosineOfDegrees:
            return "cos(" + part(0) + ")";
        default:
            break;
    }
    const bool strict = kind == Kind::Difference || kind == Kind::Quotient;
    const int own = rank(kind), right = rank(parts[1].kind);
    return bracketed(parts[0], rank(parts[0].kind) < own) + sign(kind) +
           bracketed(parts[1], right < own || (strict && right == own));
}

bool Expression::gives(double result) const {
    Expression copy = *this;
    std::vector<Expression*> numbers;
    collect(copy, numbers);
    const double exact = copy.value();
    double allowed = halfUnit(result) + 5e-7;
    for (Expression* leaf : numbers) {
        const double kept = leaf->number;
        leaf->number = kept + leaf->uncertainty;
        allowed += std::abs(copy.value() - exact);
        leaf->number = kept;
    }
    const double off = std::abs(exact - result);
    return off <= allowed && off <= kFarthest * std::abs(result) + 1e-6;  // not so where a value is no number
}
