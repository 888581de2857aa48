#include "exchange/ResultFiles.h"

#include <charconv>
#include <cmath>
#include <optional>

#include "exchange/TextFile.h"

namespace exchange {

namespace {

constexpr int kDigits = 12;

std::string text(int value) { return std::to_string(value); }
std::string text(double value) { return std::isfinite(value) && value != 0 ? number(value, kDigits) : "0"; }

template <class... Values>
std::string joined(const Values&... values) {
    std::string line;
    ((line += text(values) + ", "), ...);
    return line;
}

std::string withValues(std::string line, const std::vector<double>& values) {
    for (const double value : values) line += text(value) + ", ";
    return line + "\r\n";
}

/// One line of results, read without any complaint.
class Record {
  public:
    explicit Record(const Fields& fields) : fields_(fields) {}
    [[nodiscard]] std::size_t size() const { return fields_.size(); }
    [[nodiscard]] bool isWhole(std::size_t i) const { return value<int>(i).has_value(); }
    [[nodiscard]] int whole(std::size_t i) const { return value<int>(i).value_or(0); }
    [[nodiscard]] double real(std::size_t i) const {
        const auto read = value<double>(i).value_or(0);
        return std::isfinite(read) ? read : 0;
    }
    [[nodiscard]] std::vector<double> valuesFrom(std::size_t first) const {
        std::vector<double> values;
        for (std::size_t i = first; i < size(); ++i) values.push_back(real(i));
        return values;
    }

  private:
    const Fields& fields_;

    template <class T>
    [[nodiscard]] std::optional<T> value(std::size_t i) const {
        if (i >= size()) return std::nullopt;
        auto field = fields_.text(i);
        if (field.size() > 1 && field.front() == '+') field.remove_prefix(1);
        T read{};
        const auto [stop, error] = std::from_chars(field.data(), field.data() + field.size(), read);
        return error == std::errc() && stop == field.data() + field.size() ? std::optional(read) : std::nullopt;
    }
};

template <class Result>
std::vector<Result> parse(std::string_view bytes, Result (*read)(const Record&)) {
    std::vector<Result> results;
    for (Lines lines(bytes, {}); lines.next();)
        if (!lines.blank()) results.push_back(read(Record(lines.fields())));
    return results;
}

}  // namespace

std::string format(const TurnOrder& order) {
    std::string lines = joined(order.breakRelays, static_cast<int>(order.order.size())) + "\r\n";
    for (const int rno : order.order) lines += joined(rno) + "\r\n";
    return lines;
}

TurnOrder parseTurnOrder(std::string_view bytes, const std::string& file) {
    Lines lines(bytes, file);
    if (!lines.next()) throw FormatError(file, 0, "is empty");
    TurnOrder order{lines.fields().whole(0), {}};
    for (int left = lines.fields().whole(1); left > 0; --left) {
        if (!lines.next()) throw FormatError(file, lines.lineNo(), "relays are missing at the end");
        order.order.push_back(lines.fields().whole(0));
    }
    return order;
}

std::string format(const SettingResult& r) { return withValues(joined(r.nCal, r.rno, r.pno, r.ruleNo), r.values); }

std::string format(const FaultResult& r) {
    return joined(r.nCal, r.rno, r.pno, r.ruleNo, r.rmNo, r.nSela, r.nSelb, r.nSelc, r.nSys) + "\r\n";
}

std::string format(const CoefficientResult& r) {
    return joined(r.fzNo, r.mINo, r.mJNo, r.mIdNo, r.mSide, r.bINo, r.bJNo, r.bIdNo, r.nlRNo, r.fz1, r.nSel1a, r.nSel1b,
                  r.nSys1, r.fz0, r.nSel0a, r.nSel0b, r.nSys0) +
           "\r\n";
}

std::string format(const PhaseResult& r) { return joined(r.nCal, r.rno, r.pno) + "\r\n"; }

std::string format(const VariableResult& r) { return withValues(joined(r.nCal, r.rno, r.pno, r.ruleNo), r.values); }

std::vector<SettingResult> parseSettingResults(std::string_view bytes) {
    return parse<SettingResult>(bytes, [](const Record& r) {
        return SettingResult{r.whole(0), r.whole(1), r.whole(2), r.whole(3), r.valuesFrom(4)};
    });
}

std::vector<FaultResult> parseFaultResults(std::string_view bytes) {
    return parse<FaultResult>(bytes, [](const Record& r) {
        return FaultResult{r.whole(0), r.whole(1), r.whole(2), r.whole(3), r.whole(4),
                           r.whole(5), r.whole(6), r.whole(7), r.whole(8)};
    });
}

std::vector<CoefficientResult> parseCoefficients(std::string_view bytes) {
    auto results = parse<CoefficientResult>(bytes, [](const Record& r) {
        return CoefficientResult{r.whole(0),  r.whole(1), r.whole(2),  r.whole(3),  r.whole(4),  r.whole(5),
                                 r.whole(6),  r.whole(7), r.whole(8),  r.real(9),   r.whole(10), r.whole(11),
                                 r.whole(12), r.real(13), r.whole(14), r.whole(15), r.whole(16)};
    });
    std::erase_if(results, [](const CoefficientResult& r) { return r.fzNo == 0; });
    return results;
}

std::vector<PhaseResult> parsePhaseResults(std::string_view bytes) {
    return parse<PhaseResult>(bytes, [](const Record& r) { return PhaseResult{r.whole(0), r.whole(1), r.whole(2)}; });
}

std::vector<VariableResult> parseVariableResults(std::string_view bytes) {
    return parse<VariableResult>(bytes, [](const Record& r) {
        return VariableResult{r.whole(0), r.whole(1), r.whole(2), r.whole(3), r.valuesFrom(4)};
    });
}

int unreadableLines(std::string_view resultFile, std::size_t first, std::size_t end) {
    int count = 0;
    for (Lines lines(resultFile, {}); lines.next();) {
        if (lines.blank()) continue;
        const Fields fields = lines.fields();
        const Record record(fields);
        for (std::size_t i = first; i < end; ++i)
            if (!record.isWhole(i)) {
                ++count;
                break;
            }
    }
    return count;
}

std::string keptCoefficientLines(std::string_view coefficientFile) {
    std::string kept;
    for (Lines lines(coefficientFile, {}); lines.next();) {
        const Fields fields = lines.fields();
        if (fields.size() > 0 && fields.text(0) == "0") continue;
        kept.append(lines.line()).append("\r\n");
    }
    return kept;
}

}  // namespace exchange
