#pragma once

#include <array>
#include <limits>
#include <span>
#include <string>

/// The arithmetic of rule and mode lines: Y = op(A x X1, B x X2).
namespace engines {

/// Number of a line's operation, `Nop`.
enum class Operation : int {
    Sum = 1,
    Difference = 2,
    Product = 3,
    Quotient = 4,
    Larger = 5,
    Smaller = 6,
    Root = 7,              ///< square root of the first
    Magnitude = 8,         ///< of the first
    RootOfSquares = 9,     ///< root of the sum of the squares
    FirstIfPositive = 10,  ///< the first when it is positive, else the second
    CosineOfDegrees = 11,  ///< of the sum
};
bool isOperation(int nop);

/// The values that the operand codes of one rule stand for. NaN: the operand has no value.
class Registers {
  public:
    static constexpr int kSize = 100;  ///< numbers 1 to 99 of each kind

    /// \param parameters  values of the parameter vector in use; must outlive the registers
    explicit Registers(std::span<const double> parameters = {});

    [[nodiscard]] double value(int code) const;
    [[nodiscard]] double input(int number) const { return inputs_[index(number)]; }
    [[nodiscard]] double output(int number) const { return outputs_[index(number)]; }
    void setInput(int number, double value) { inputs_[index(number)] = value; }
    void setTemporary(int number, double value) { temporaries_[index(number)] = value; }
    /// \param code  of an output or a temporary
    void set(int code, double value);

  private:
    using Row = std::array<double, kSize>;
    static std::size_t index(int number);

    std::span<const double> parameters_;
    Row inputs_{}, outputs_{}, temporaries_{};
};

inline constexpr double kNoValue = std::numeric_limits<double>::quiet_NaN();

/// The operands and the operation of a line, whether of a mode or of the rule.
struct Step {
    int first = 0;  ///< operand code, 0 none
    int second = 0;
    double a = 0;
    double b = 0;
    int nop = 0;
};

/// Result of a line, or why it has none.
struct Outcome {
    double value = kNoValue;
    std::string fault;  ///< empty when there is a value
    explicit operator bool() const { return fault.empty(); }
};

/// An absent operand stands with its coefficient alone when the line has another operand, else with 0.
Outcome evaluate(const Step& step, const Registers& registers);

/// An operand code as people write it: I3, K2, O1, T7.
std::string operandName(int code);

}  // namespace engines
