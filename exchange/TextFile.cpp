#include "exchange/TextFile.h"

#include <charconv>
#include <cmath>
#include <fstream>
#include <iterator>
#include <system_error>

namespace exchange {

namespace {

std::string place(const std::string& file, int line) { return line > 0 ? file + ":" + std::to_string(line) : file; }

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool writeTo(const std::filesystem::path& path, std::string_view bytes, std::ios::openmode mode) {
    std::ofstream out(path, std::ios::binary | mode);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    out.close();
    return out.good();
}

/// std::from_chars knows no plus sign.
std::string_view withoutPlus(std::string_view text) {
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    return text;
}

template <class T>
bool parse(std::string_view text, T& value) {
    text = withoutPlus(text);
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end;
}

template <class... Form>
std::string digitsOf(double value, Form... form) {
    char text[64];
    const auto end = std::to_chars(std::begin(text), std::end(text), value, form...).ptr;
    return {text, end};
}

}  // namespace

FormatError::FormatError(const std::string& file, int line, const std::string& what)
    : std::runtime_error(place(file, line) + ": " + what) {}

std::string readAll(const std::filesystem::path& path) {
    std::error_code failed;
    const auto size = std::filesystem::file_size(path, failed);  // fails on a directory too
    std::ifstream in(path, std::ios::binary);
    std::string bytes(failed ? 0 : size, '\0');
    if (failed || !in.read(bytes.data(), static_cast<std::streamsize>(size)))
        throw FormatError(path.filename().string(), 0, "cannot be read");
    return bytes;
}

bool write(const std::filesystem::path& path, std::string_view bytes) {
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
    return writeTo(path, bytes, std::ios::trunc);
}

bool append(const std::filesystem::path& path, std::string_view bytes) { return writeTo(path, bytes, std::ios::app); }

void replace(const std::filesystem::path& path, std::string_view bytes) {
    auto aside = path;
    aside += ".new";
    std::error_code failed;
    if (writeTo(aside, bytes, std::ios::trunc)) {
        // A journalling file system waits for the disk where a renamed file replaces another.
        std::filesystem::remove(path, failed);
        std::filesystem::rename(aside, path, failed);
        if (!failed) return;
    }
    std::filesystem::remove(aside, failed);
    throw FormatError(path.filename().string(), 0, "cannot be written");
}

std::string number(double value, int digits) { return digitsOf(value, std::chars_format::general, digits); }

std::string exact(double value) { return digitsOf(value); }

Fields::Fields(std::string_view line, const std::string& file, int lineNo) : file_(file), line_(lineNo) {
    for (auto comma = line.find(','); comma != std::string_view::npos; comma = line.find(',')) {
        parts_.push_back(trimmed(line.substr(0, comma)));
        line.remove_prefix(comma + 1);
    }
    if (const auto rest = trimmed(line); !rest.empty()) parts_.push_back(rest);
}

std::string_view Fields::text(std::size_t i) const {
    require(i + 1);
    return parts_[i];
}

int Fields::whole(std::size_t i) const {
    int value = 0;
    if (!parse(text(i), value))
        fail("field " + std::to_string(i + 1) + " is not a whole number: '" + std::string(parts_[i]) + "'");
    return value;
}

int Fields::notNegative(std::size_t i) const {
    const int value = whole(i);
    if (value < 0) fail("field " + std::to_string(i + 1) + " is below 0: " + std::to_string(value));
    return value;
}

double Fields::real(std::size_t i) const {
    double value = 0;
    if (!parse(text(i), value) || !std::isfinite(value))
        fail("field " + std::to_string(i + 1) + " is not a number: '" + std::string(parts_[i]) + "'");
    return value;
}

std::string Fields::numeral(std::size_t i) const {
    if (text(i).empty()) return "0";
    static_cast<void>(real(i));
    return std::string(parts_[i]);
}

void Fields::require(std::size_t count) const {
    if (parts_.size() < count)
        fail("field " + std::to_string(parts_.size() + 1) + " of " + std::to_string(count) + " is missing");
}

void Fields::fail(const std::string& what) const { throw FormatError(file_, line_, what); }

Lines::Lines(std::string_view text, std::string file) : rest_(text), file_(std::move(file)) {}

bool Lines::next() {
    if (rest_.empty()) return false;
    const auto end = rest_.find('\n');
    line_ = rest_.substr(0, end);
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
    if (!line_.empty() && line_.back() == '\r') line_.remove_suffix(1);
    ++lineNo_;
    return true;
}

bool Lines::blank() const { return trimmed(line_).empty(); }

}  // namespace exchange
