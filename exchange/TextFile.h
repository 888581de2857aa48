#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// The files that pass between the module and the executables: struct, writer and reader of each side by side.
/// Every file is text, comma-separated, lines end in CR LF; names are GBK bytes.
namespace exchange {

/// What is wrong with a file, as `FILE:LINE: what is wrong`. Line 0 means the file as a whole and is left out.
class FormatError : public std::runtime_error {
  public:
    FormatError(const std::string& file, int line, const std::string& what);
};

/// The whole of a file. \throws FormatError when it cannot be read.
std::string readAll(const std::filesystem::path& path);

/// Removes the old file and writes the new one in place. \return false when it cannot be opened or written in full.
[[nodiscard]] bool write(const std::filesystem::path& path, std::string_view bytes);

/// Appends to a file, creating it when absent. \return false when it cannot be opened or written in full.
[[nodiscard]] bool append(const std::filesystem::path& path, std::string_view bytes);

/// Writes beside the target and renames when complete: the target is the old file, the new one, or for a moment none.
/// \throws FormatError when it cannot be written; the target is then as it was.
void replace(const std::filesystem::path& path, std::string_view bytes);

/// A number as the default text stream of the module writes it: six significant digits, trailing zeros dropped,
/// exponent form where the value is very large or very small ("0.8", "1", "1e+06", "1e-05"). Locale-independent.
std::string number(double value, int digits = 6);

/// The shortest text that reads back as the same double.
std::string exact(double value);

/// One line of a file being read, cut at its commas, with the place for messages.
class Fields {
  public:
    Fields(std::string_view line, const std::string& file, int lineNo);
    /// Number of fields; a blank rest behind the last comma does not count.
    [[nodiscard]] std::size_t size() const { return parts_.size(); }
    /// Field i without surrounding blanks. \throws FormatError when it is missing.
    [[nodiscard]] std::string_view text(std::size_t i) const;
    /// \throws FormatError when the field is missing or not a whole number.
    [[nodiscard]] int whole(std::size_t i) const;
    /// The same; \throws FormatError also when it is below 0.
    [[nodiscard]] int notNegative(std::size_t i) const;
    /// \throws FormatError when the field is missing, not a number, or not finite.
    [[nodiscard]] double real(std::size_t i) const;
    /// Field i as it stands; an empty field as "0". \throws FormatError where real(i) would on other text.
    [[nodiscard]] std::string numeral(std::size_t i) const;
    /// \throws FormatError when there are fewer fields than that.
    void require(std::size_t count) const;
    [[noreturn]] void fail(const std::string& what) const;

  private:
    std::vector<std::string_view> parts_;
    std::string file_;
    int line_;
};

/// Walks over the lines of a text; CR LF, LF and a missing last line end are all accepted.
class Lines {
  public:
    Lines(std::string_view text, std::string file);
    /// \return false at the end of the text.
    bool next();
    [[nodiscard]] std::string_view line() const { return line_; }
    [[nodiscard]] bool blank() const;
    [[nodiscard]] int lineNo() const { return lineNo_; }
    [[nodiscard]] const std::string& file() const { return file_; }
    [[nodiscard]] Fields fields() const { return Fields(line_, file_, lineNo_); }

  private:
    std::string_view rest_;
    std::string_view line_;
    std::string file_;
    int lineNo_ = 0;
};

}  // namespace exchange
