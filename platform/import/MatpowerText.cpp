#include "platform/import/MatpowerText.h"

#include <charconv>

#include "platform/host/Text.h"
#include "platform/import/Import.h"

namespace import {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == ','; }
bool isNumberPart(char c) { return !isBlank(c) && c != ';' && c != '\n' && c != ']' && c != '%'; }

class CaseParser {
  public:
    CaseParser(std::string_view text, const std::string& file) : text_(text), file_(file) {}

    CaseText parse() {
        CaseText result;
        while (at_ < text_.size()) {
            statement(result);
            skipLine();
        }
        if (result.baseMva <= 0) fail(0, Text::say("没有 mpc.baseMVA，不是 MATPOWER 第 2 版算例"));
        need(result.bus, "mpc.bus", 13);
        need(result.gen, "mpc.gen", 10);
        need(result.branch, "mpc.branch", 11);
        return result;
    }

  private:
    void statement(CaseText& result) {
        skipBlanks();
        if (take("mpc.baseMVA"))
            result.baseMva = scalar();
        else if (opens("mpc.bus", '['))
            matrix(result.bus, "mpc.bus");
        else if (opens("mpc.gen", '['))
            matrix(result.gen, "mpc.gen");
        else if (opens("mpc.branch", '['))
            matrix(result.branch, "mpc.branch");
        else if (opens("mpc.bus_name", '{'))
            names(result.busNames);
    }

    /// NAME = BRACKET, with blanks where they like.
    bool opens(std::string_view name, char bracket) {
        const std::size_t begin = at_;
        if (take(name)) {
            skipBlanks();
            if (take("=")) {
                skipBlanks();
                if (take(std::string_view(&bracket, 1))) return true;
            }
        }
        at_ = begin;
        return false;
    }

    double scalar() {
        skipBlanks();
        if (!take("=")) fail(line_, Text::say("mpc.baseMVA 后面没有“=”"));
        skipBlanks();
        return number();
    }

    double number() {
        double value = 0;
        const char* const begin = text_.data() + at_ + (peek() == '+');
        const auto result = std::from_chars(begin, text_.data() + text_.size(), value);
        const auto end = static_cast<std::size_t>(result.ptr - text_.data());
        if (result.ec != std::errc() || (end < text_.size() && isNumberPart(text_[end])))
            fail(line_, Text::say("不是数：") + word());
        at_ = end;
        return value;
    }

    std::string word() const {
        std::size_t end = at_;
        while (end < text_.size() && isNumberPart(text_[end]) && end - at_ < 30) ++end;
        return std::string(text_.substr(at_, end - at_));
    }

    void matrix(CaseMatrix& m, const std::string& name) {
        const int opened = line_;
        std::size_t rowBegin = m.values.size();
        for (;;) {
            skipBlanks();
            const char c = peek();
            if (at_ >= text_.size())
                fail(line_, name + Text::say(" 从第 ") + std::to_string(opened) + Text::say(" 行开始，没有结束"));
            if (c == '%') {
                while (at_ < text_.size() && text_[at_] != '\n') ++at_;
            } else if (c == ';' || c == '\n' || c == ']') {
                endRow(m, rowBegin, name);
                rowBegin = m.values.size();
                ++at_;
                line_ += c == '\n';
                if (c == ']') return;
            } else {
                m.values.push_back(number());
            }
        }
    }

    void endRow(CaseMatrix& m, std::size_t rowBegin, const std::string& name) const {
        const std::size_t width = m.values.size() - rowBegin;
        if (width == 0) return;
        if (m.columns == 0) m.columns = width;
        if (width != m.columns)
            fail(line_, name + Text::say(" 这一行有 ") + std::to_string(width) + Text::say(" 列，前面的有 ") +
                            std::to_string(m.columns) + Text::say(" 列"));
        m.lines.push_back(line_);
    }

    /// A list of texts in single quotes, a doubled quote inside being one.
    void names(std::vector<std::string>& list) {
        for (; at_ < text_.size() && text_[at_] != '}'; ++at_) {
            if (text_[at_] == '%')
                at_ = std::min(text_.find('\n', at_), text_.size()) - 1;
            else if (text_[at_] == '\'')
                list.push_back(quoted());
            line_ += text_[at_] == '\n';
        }
        if (at_ >= text_.size()) fail(line_, Text::say("mpc.bus_name 没有结束"));
    }

    /// Leaves the position on the closing quote.
    std::string quoted() {
        std::string text;
        for (++at_; at_ < text_.size() && text_[at_] != '\n'; ++at_) {
            if (text_[at_] == '\'' && text_.substr(at_ + 1, 1) != "'") return text;
            if (text_[at_] == '\'') ++at_;
            text += text_[at_];
        }
        fail(line_, Text::say("引号没有结束"));
    }

    void need(const CaseMatrix& m, const std::string& name, std::size_t columns) const {
        if (m.rows() == 0 && columns != 10)
            fail(0, Text::say("没有 ") + name + Text::say("，不是 MATPOWER 第 2 版算例"));
        if (m.rows() > 0 && m.columns < columns)
            fail(m.lines.front(), name + Text::say(" 只有 ") + std::to_string(m.columns) + Text::say(" 列，应有 ") +
                                      std::to_string(columns) + Text::say(" 列"));
    }

    char peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }
    bool take(std::string_view token) {
        if (text_.substr(at_, token.size()) != token) return false;
        at_ += token.size();
        return true;
    }
    void skipBlanks() {
        while (at_ < text_.size() && isBlank(text_[at_])) ++at_;
    }
    void skipLine() {
        at_ = text_.find('\n', at_);
        if (at_ == std::string_view::npos)
            at_ = text_.size();
        else
            ++at_, ++line_;
    }
    [[noreturn]] void fail(int line, const std::string& what) const { throw ImportError(file_, line, what); }

    std::string_view text_;
    const std::string& file_;
    std::size_t at_ = 0;
    int line_ = 1;
};

}  // namespace

CaseText parseCase(std::string_view text, const std::string& file) { return CaseParser(text, file).parse(); }

}  // namespace import
