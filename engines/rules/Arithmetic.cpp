#include "engines/rules/Arithmetic.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

#include "exchange/RuleFile.h"

namespace engines {

bool isOperation(int nop) {
    return nop >= static_cast<int>(Operation::Sum) && nop <= static_cast<int>(Operation::CosineOfDegrees);
}

Registers::Registers(std::span<const double> parameters) : parameters_(parameters) {
    inputs_.fill(kNoValue);
    outputs_.fill(kNoValue);
    temporaries_.fill(kNoValue);
}

std::size_t Registers::index(int number) {
    if (number < 1 || number >= kSize) throw std::out_of_range("register " + std::to_string(number));
    return static_cast<std::size_t>(number);
}

double Registers::value(int code) const {
    if (code > exchange::kTemporaryBase) return temporaries_[index(code - exchange::kTemporaryBase)];
    if (code > exchange::kOutputBase) return outputs_[index(code - exchange::kOutputBase)];
    if (code < exchange::kParameterBase) return inputs_[index(code)];
    const std::size_t k = index(code - exchange::kParameterBase) - 1;
    return k < parameters_.size() ? parameters_[k] : kNoValue;
}

void Registers::set(int code, double value) {
    if (code > exchange::kTemporaryBase)
        temporaries_[index(code - exchange::kTemporaryBase)] = value;
    else
        outputs_[index(code - exchange::kOutputBase)] = value;
}

namespace {

double term(int code, double coefficient, int otherCode, const Registers& registers) {
    if (code != 0) return coefficient * registers.value(code);
    return otherCode != 0 ? coefficient : 0.0;
}

double apply(Operation operation, double x, double y) {
    switch (operation) {
        case Operation::Sum:
            return x + y;
        case Operation::Difference:
            return x - y;
        case Operation::Product:
            return x * y;
        case Operation::Quotient:
            return x / y;
        case Operation::Larger:
            return std::max(x, y);
        case Operation::Smaller:
            return std::min(x, y);
        case Operation::Root:
            return std::sqrt(x);
        case Operation::Magnitude:
            return std::abs(x);
        case Operation::RootOfSquares:
            return std::hypot(x, y);
        case Operation::FirstIfPositive:
            return x > 0 ? x : y;
        case Operation::CosineOfDegrees:
            return std::cos((x + y) * std::numbers::pi / 180);
    }
    return kNoValue;
}

std::string operandWithoutValue(const Step& step, const Registers& registers) {
    for (const int code : {step.first, step.second})
        if (code != 0 && std::isnan(registers.value(code))) return operandName(code) + " has no value";
    return {};
}

}  // namespace

Outcome evaluate(const Step& step, const Registers& registers) {
    if (std::string missing = operandWithoutValue(step, registers); !missing.empty()) return {kNoValue, missing};
    const double x = term(step.first, step.a, step.second, registers);
    const double y = term(step.second, step.b, step.first, registers);
    const auto operation = static_cast<Operation>(step.nop);
    if (operation == Operation::Quotient && y == 0) return {kNoValue, "division by zero"};
    if (operation == Operation::Root && x < 0) return {kNoValue, "square root of a negative number"};
    const double value = apply(operation, x, y);
    if (!std::isfinite(value)) return {kNoValue, "the result is not finite"};
    return {value, {}};
}

std::string operandName(int code) {
    std::string name = "I";
    if (code > exchange::kParameterBase) name = "K";
    if (code > exchange::kOutputBase) name = "O";
    if (code > exchange::kTemporaryBase) name = "T";
    return name + std::to_string(code % exchange::kParameterBase);
}

}  // namespace engines
