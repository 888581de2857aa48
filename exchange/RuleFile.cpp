#include "exchange/RuleFile.h"

#include <charconv>

#include "exchange/TextFile.h"

namespace exchange {

namespace {

constexpr std::size_t kModeIndent = 3;
constexpr std::size_t kVariableIndent = 6;
constexpr std::size_t kParameterIndent = 4;
constexpr std::size_t kLineIndent = 6;
constexpr char kVariableEnd[] = "1";

int wholeOrZero(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return 0;
    text = text.substr(first, text.find_last_not_of(' ') - first + 1);
    int value = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && stop == text.data() + text.size() ? value : 0;
}

int operandCode(std::string_view text, bool outputs) {
    const char letter = text.empty() ? ' ' : text.front();
    const int base = letter == 'K'              ? kParameterBase
                     : letter == 'T'            ? kTemporaryBase
                     : letter == 'O' && outputs ? kOutputBase
                                                : 0;
    if (base > 0 || letter == 'I') text.remove_prefix(1);
    return base + wholeOrZero(text);
}

std::string line(std::size_t indent, std::initializer_list<std::string> fields) {
    std::string text(indent, ' ');
    for (const auto& field : fields) text += field + ", ";
    return text + "\r\n";
}

std::string format(const RuleModeLine& m) {
    using std::to_string;
    return line(kModeIndent, {to_string(m.modeNo), to_string(m.first), to_string(m.second), number(m.a), number(m.b),
                              to_string(m.nop), to_string(m.y), to_string(m.consel)});
}

std::string format(const RuleVariable& v) {
    using std::to_string;
    return line(kVariableIndent,
                {to_string(v.varNo), to_string(v.modeNo), to_string(v.vType), to_string(v.vPos), kVariableEnd});
}

std::string format(const RuleLine& l) {
    using std::to_string;
    return line(kLineIndent,
                {to_string(l.first), to_string(l.second), number(l.a), number(l.b), to_string(l.nop), to_string(l.y)});
}

std::string format(const std::vector<double>& parameters) {
    std::string text;
    for (const double value : parameters) text += "    " + number(value) + ",   ";
    return text + "\r\n";
}

std::string formatHead(const RuleBlock& rule) {
    using std::to_string;
    return line(0, {to_string(rule.ruleNo), to_string(rule.numMode), to_string(rule.nVarin), to_string(rule.nPar),
                    to_string(rule.parameterVectors.size()), to_string(rule.nRule), to_string(rule.nOutPut)});
}

RuleModeLine parseModeLine(const Fields& f) {
    return {f.whole(0), f.whole(1), f.whole(2), f.real(3), f.real(4), f.whole(5), f.whole(6), f.whole(7)};
}

RuleVariable parseVariable(const Fields& f) { return {f.whole(0), f.whole(1), f.whole(2), f.whole(3)}; }

RuleLine parseRuleLine(const Fields& f) {
    return {f.whole(0), f.whole(1), f.real(2), f.real(3), f.whole(4), f.whole(5)};
}

std::vector<double> parseParameters(const Fields& f) {
    std::vector<double> values;
    for (std::size_t i = 0; i < f.size(); ++i) values.push_back(f.real(i));
    return values;
}

/// Reads the blocks one after the other; always stands on the first line that is not read yet.
class RuleReader {
  public:
    RuleReader(std::string_view text, const std::string& file) : lines_(text, file) { advance(); }

    std::vector<RuleBlock> blocks() {
        std::vector<RuleBlock> rules;
        while (skipBlank()) rules.push_back(block());
        return rules;
    }

  private:
    Lines lines_;
    bool more_ = true;

    void advance() { more_ = lines_.next(); }

    bool skipBlank() {
        while (more_ && lines_.blank()) advance();
        return more_;
    }

    [[nodiscard]] bool indented(std::size_t blanks) const {
        return more_ && lines_.line().find_first_not_of(' ') == blanks;
    }

    template <class Row>
    std::vector<Row> section(std::size_t indent, Row (*parse)(const Fields&)) {
        std::vector<Row> rows;
        for (; indented(indent); advance()) rows.push_back(parse(lines_.fields()));
        return rows;
    }

    /// A section without rows is an empty line.
    template <class Row>
    std::vector<Row> sectionOrEmptyLine(std::size_t indent, Row (*parse)(const Fields&), const std::string& what) {
        auto rows = section(indent, parse);
        if (!rows.empty()) return rows;
        if (!more_ || !lines_.blank())
            throw FormatError(lines_.file(), lines_.lineNo(), "the section of " + what + " is missing");
        advance();
        return rows;
    }

    RuleBlock block() {
        if (!indented(0)) throw FormatError(lines_.file(), lines_.lineNo(), "the head of a rule is expected");
        const Fields head = lines_.fields();
        RuleBlock rule;
        rule.ruleNo = head.whole(0);
        rule.numMode = head.whole(1);
        rule.nVarin = head.whole(2);
        rule.nPar = head.whole(3);
        const int vectors = head.whole(4);
        rule.nRule = head.whole(5);
        rule.nOutPut = head.whole(6);
        advance();
        rule.modeLines = section(kModeIndent, parseModeLine);
        rule.variables = section(kVariableIndent, parseVariable);
        rule.parameterVectors = sectionOrEmptyLine(kParameterIndent, parseParameters, "parameters");
        rule.lines = sectionOrEmptyLine(kLineIndent, parseRuleLine, "rule lines");
        expect(head, "input variables", rule.nVarin, rule.variables.size());
        expect(head, "parameter vectors", vectors, rule.parameterVectors.size());
        expect(head, "rule lines", rule.nRule, rule.lines.size());
        return rule;
    }

    static void expect(const Fields& head, const std::string& what, int count, std::size_t found) {
        if (static_cast<int>(found) == count) return;
        head.fail("rule " + std::string(head.text(0)) + " has " + std::to_string(found) + " " + what +
                  " where its head counts " + std::to_string(count));
    }
};

}  // namespace

int modeOperandCode(std::string_view text) { return operandCode(text, false); }

int ruleOperandCode(std::string_view text) { return operandCode(text, true); }

std::string format(const RuleBlock& rule) {
    std::string text = formatHead(rule);
    for (const auto& modeLine : rule.modeLines) text += format(modeLine);
    for (const auto& variable : rule.variables) text += format(variable);
    for (const auto& parameters : rule.parameterVectors) text += format(parameters);
    if (rule.parameterVectors.empty()) text += "\r\n";
    for (const auto& ruleLine : rule.lines) text += format(ruleLine);
    if (rule.lines.empty()) text += "\r\n";
    return text;
}

std::vector<RuleBlock> parseRules(std::string_view text, const std::string& file) {
    return RuleReader(text, file).blocks();
}

}  // namespace exchange
