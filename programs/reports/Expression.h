#pragma once

#include <QString>
#include <vector>

/// An arithmetic expression of numbers, as a book shows it.
struct Expression {
    enum class Kind {
        Number,
        Sum,
        Difference,
        Product,
        Quotient,
        Larger,
        Smaller,
        Root,
        Magnitude,
        RootOfSquares,
        FirstIfPositive,
        CosineOfDegrees
    };
    Kind kind = Kind::Number;
    std::vector<Expression> parts{};  ///< one or two, none of a number
    double number = 0;                ///< as shown
    double uncertainty = 0;           ///< by how much the number may be off for having been rounded

    /// A number in the six digits that books show. \param stored  half a unit of the last place that was stored
    static Expression of(double value, double stored = 5e-7);

    [[nodiscard]] double value() const;
    /// With as few brackets as the order of operations allows.
    [[nodiscard]] QString text() const;
    /// Whether the numbers as shown give a result, up to the rounding of both.
    [[nodiscard]] bool gives(double result) const;
};

/// A number as books in HTML and PDF show it: six significant digits.
QString shownNumber(double value);
