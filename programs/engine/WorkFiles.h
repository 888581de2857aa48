#pragma once

#include <QString>
#include <optional>
#include <string>
#include <string_view>

/// The files of the working directory. `workDir` ends in a slash.
namespace work {

/// Writes a file anew, or appends to it. A failure is told ("写" + name + "失败", level 0).
bool write(const QString& workDir, const char* name, std::string_view bytes);
bool append(const QString& workDir, const char* name, std::string_view bytes);
/// The whole of a file. A failure is told ("读" + name + "失败", level 1).
std::optional<std::string> read(const QString& workDir, const char* name);
bool exists(const QString& workDir, const char* name);
/// A file that is not there is no fault.
void remove(const QString& workDir, const char* name);

/// Text as the bytes of a file.
std::string gbk(const QString& text);

}  // namespace work
