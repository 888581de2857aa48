#include "programs/engine/WorkFiles.h"

#include <QFile>
#include <filesystem>

#include "exchange/TextFile.h"
#include "platform/host/Text.h"
#include "platform/sql/Sql.h"
#include "programs/frame/Messages.h"

namespace work {

namespace {

std::filesystem::path pathOf(const QString& workDir, const char* name) {
    return QFile::encodeName(workDir + name).toStdString();
}

bool told(bool written, const char* name) {
    if (!written) ReportError(Text::tr("写") + name + Text::tr("失败"), 0);
    return written;
}

}  // namespace

bool write(const QString& workDir, const char* name, std::string_view bytes) {
    return told(exchange::write(pathOf(workDir, name), bytes), name);
}

bool append(const QString& workDir, const char* name, std::string_view bytes) {
    return told(exchange::append(pathOf(workDir, name), bytes), name);
}

std::optional<std::string> read(const QString& workDir, const char* name) {
    try {
        return exchange::readAll(pathOf(workDir, name));
    } catch (const exchange::FormatError&) {
        ReportError(Text::tr("读") + name + Text::tr("失败"), 1);
        return std::nullopt;
    }
}

bool exists(const QString& workDir, const char* name) { return QFile::exists(workDir + name); }

void remove(const QString& workDir, const char* name) { QFile::remove(workDir + name); }

std::string gbk(const QString& text) { return sql::toGbk(text).toStdString(); }

}  // namespace work
