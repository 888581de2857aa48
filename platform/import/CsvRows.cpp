#include "platform/import/CsvRows.h"

#include <cmath>

#include "platform/host/Text.h"

namespace import::csv {

namespace {

template <class Number>
bool parse(const std::string& text, Number& value) {
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    return result.ec == std::errc() && result.ptr == end;
}

bool isEmpty(const Cell& cell, Need need) {
    if (!cell.text.empty()) return false;
    if (need == Need::Required) cell.fail(Text::say("不能为空"));
    return true;
}

}  // namespace

void store(const Cell& cell, Need need, std::string& field) {
    if (!isEmpty(cell, need)) field = cell.text;
}

void store(const Cell& cell, Need need, double& field) {
    field = std::numeric_limits<double>::quiet_NaN();
    if (isEmpty(cell, need)) return;
    if (!parse(cell.text, field) || !std::isfinite(field)) cell.fail("“" + cell.text + Text::say("”不是数"));
}

void store(const Cell& cell, Need need, int& field) {
    if (isEmpty(cell, need)) return;
    if (!parse(cell.text, field)) cell.fail("“" + cell.text + Text::say("”不是整数"));
}

void store(const Cell& cell, Need need, bool& field) {
    if (isEmpty(cell, need)) return;
    if (cell.text != "0" && cell.text != "1") cell.fail("“" + cell.text + Text::say("”不是 0 或 1"));
    field = cell.text == "1";
}

std::string cellOf(const std::string& value) { return value; }

std::string cellOf(double value) {
    if (std::isnan(value)) return {};
    char buffer[64];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr};
}

std::string cellOf(int value) { return std::to_string(value); }
std::string cellOf(bool value) { return value ? "1" : "0"; }

std::vector<std::size_t> columnPlaces(const CsvTable& table, const std::vector<WantedColumn>& wanted,
                                      const std::string& file) {
    const std::vector<std::string>& header = table.header.cells;
    const auto fail = [&](const std::string& what) { throw ImportError(file, table.header.line, what); };
    std::set<std::string_view> seen;
    for (const std::string& name : header) {
        if (std::ranges::find(wanted, name, &WantedColumn::name) == wanted.end())
            fail(Text::say("没有定义的列“") + name + "”");
        if (!seen.insert(name).second) fail(Text::say("列“") + name + Text::say("”重复"));
    }
    std::vector<std::size_t> places;
    for (const auto& [name, mayBeAbsent] : wanted) {
        const auto found = std::find(header.begin(), header.end(), name);
        if (found == header.end() && !mayBeAbsent) fail(Text::say("缺少列“") + std::string(name) + "”");
        places.push_back(found == header.end() ? kAbsent : static_cast<std::size_t>(found - header.begin()));
    }
    return places;
}

}  // namespace import::csv
