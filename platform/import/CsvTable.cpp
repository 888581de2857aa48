#include "platform/import/CsvTable.h"

#include <algorithm>

#include "platform/host/Text.h"
#include "platform/import/Import.h"
#include "platform/import/Names.h"

namespace import {

namespace {

class Scanner {
  public:
    Scanner(std::string_view text, const std::string& file) : text_(text), file_(file) {}

    /// The next record; false at the end of the text.
    bool next(CsvRecord& record) {
        skipEmptyLines();
        if (at_ >= text_.size()) return false;
        record = {line_, {}};
        do {
            record.cells.push_back(peek() == '"' ? quotedCell() : plainCell());
        } while (take(','));
        if (!endOfLine()) fail(Text::say("引号之后有多余的字符"));
        return true;
    }

  private:
    void skipEmptyLines() {
        while (at_ < text_.size() && endOfLine()) {
        }
    }
    char peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }
    bool take(char c) {
        if (peek() != c || at_ >= text_.size()) return false;
        ++at_;
        return true;
    }
    bool endOfLine() {
        if (at_ >= text_.size()) return true;
        if (text_.substr(at_, 2) == "\r\n") ++at_;
        if (text_[at_] != '\n') return false;
        ++at_;
        ++line_;
        return true;
    }
    std::string plainCell() {
        const std::size_t begin = at_;
        while (at_ < text_.size() && text_[at_] != ',' && text_[at_] != '\n') {
            if (text_[at_] == '"') fail("未加引号的字段中有引号");
            ++at_;
        }
        std::size_t end = at_;
        if (at_ < text_.size() && text_[at_] == '\n' && end > begin && text_[end - 1] == '\r') at_ = --end;
        return std::string(text_.substr(begin, end - begin));
    }
    std::string quotedCell() {
        const int begin = line_;
        std::string cell;
        for (++at_; at_ < text_.size(); ++at_) {
            if (text_[at_] == '"' && text_.substr(++at_, 1) != "\"") return cell;
            if (text_[at_] == '\n') ++line_;
            cell += text_[at_];
        }
        throw ImportError(file_, begin, Text::say("引号没有结束"));
    }
    [[noreturn]] void fail(const std::string& what) const { throw ImportError(file_, line_, what); }

    std::string_view text_;
    const std::string& file_;
    std::size_t at_ = 0;
    int line_ = 1;
};

void requireUtf8(std::string_view text, const std::string& file) {
    const std::size_t bad = invalidUtf8(text);
    if (bad == std::string_view::npos) return;
    const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(bad), '\n');
    throw ImportError(file, static_cast<int>(line), Text::say("不是 UTF-8 编码"));
}

bool needsQuotes(const std::string& cell) { return cell.find_first_of(",\"\r\n") != std::string::npos; }

std::string quoted(const std::string& cell) {
    std::string out = "\"";
    for (char c : cell) out += c == '"' ? std::string("\"\"") : std::string(1, c);
    return out + "\"";
}

}  // namespace

CsvTable parseCsv(std::string_view text, const std::string& file) {
    requireUtf8(text, file);
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    Scanner scanner(text, file);
    CsvTable table;
    if (!scanner.next(table.header)) throw ImportError(file, 1, Text::say("没有表头"));
    for (CsvRecord record; scanner.next(record); table.records.push_back(std::move(record))) {
        if (record.cells.size() == table.header.cells.size()) continue;
        throw ImportError(file, record.line,
                          Text::say("有 ") + std::to_string(record.cells.size()) + Text::say(" 个字段，表头有 ") +
                              std::to_string(table.header.cells.size()) + Text::say(" 个"));
    }
    return table;
}

void appendCsv(std::string& text, const std::vector<std::string>& cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0) text += ',';
        text += needsQuotes(cells[i]) ? quoted(cells[i]) : cells[i];
    }
    text += '\n';
}

}  // namespace import
