#include "platform/import/CimSource.h"

#include <zip.h>

#include <algorithm>
#include <memory>

#include "platform/host/Text.h"
#include "platform/import/Import.h"
#include "platform/import/InputFile.h"

namespace import {

namespace {

constexpr int deepestArchive = 4;
constexpr zip_uint64_t largestMember = zip_uint64_t{1} << 31;

bool endsWith(std::string text, std::string_view ending) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text.ends_with(ending);
}

struct ArchiveCloser {
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
struct MemberCloser {
    void operator()(zip_file_t* member) const { zip_fclose(member); }
};
using Archive = std::unique_ptr<zip_t, ArchiveCloser>;

Archive openArchive(const CimDocument& document) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* const source = zip_source_buffer_create(document.bytes.data(), document.bytes.size(), 0, &error);
    Archive archive(source ? zip_open_from_source(source, ZIP_RDONLY, &error) : nullptr);
    if (archive) return archive;
    if (source) zip_source_free(source);
    const std::string why = zip_error_strerror(&error);
    zip_error_fini(&error);
    throw ImportError(document.name, 0, Text::say("不是能打开的压缩文件：") + why);
}

std::string readMember(zip_t* archive, const zip_stat_t& stat, const std::string& name) {
    const std::unique_ptr<zip_file_t, MemberCloser> member(zip_fopen_index(archive, stat.index, 0));
    if (!member) throw ImportError(name, 0, Text::say("不能读取：") + zip_strerror(archive));
    if (stat.size > largestMember) throw ImportError(name, 0, Text::say("文件过大"));
    std::string bytes(stat.size, '\0');
    const zip_int64_t got = zip_fread(member.get(), bytes.data(), bytes.size());
    if (got < 0 || static_cast<zip_uint64_t>(got) != stat.size) throw ImportError(name, 0, Text::say("压缩文件已损坏"));
    return bytes;
}

void unpack(CimDocument document, int depth, std::vector<CimDocument>& documents) {
    if (!endsWith(document.name, ".zip")) return void(documents.push_back(std::move(document)));
    if (depth > deepestArchive) throw ImportError(document.name, 0, Text::say("压缩文件嵌套过深"));
    const Archive archive = openArchive(document);
    const zip_int64_t count = zip_get_num_entries(archive.get(), 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        zip_stat_t stat;
        if (zip_stat_index(archive.get(), static_cast<zip_uint64_t>(i), 0, &stat) != 0) continue;
        const std::string name = document.name + "!" + stat.name;
        if (!endsWith(name, ".xml") && !endsWith(name, ".zip")) continue;
        unpack({name, readMember(archive.get(), stat, name)}, depth + 1, documents);
    }
}

std::vector<std::filesystem::path> filesOf(const std::filesystem::path& input) {
    if (!std::filesystem::is_directory(input)) return {input};
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(input)) {
        const std::string name = entry.path().filename().string();
        if (endsWith(name, ".xml") || endsWith(name, ".zip")) files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace

std::vector<CimDocument> readDocuments(const std::filesystem::path& input) {
    std::vector<CimDocument> documents;
    for (const auto& file : filesOf(input)) unpack({file.filename().string(), readInput(file)}, 1, documents);
    if (documents.empty()) throw ImportError(input.filename().string(), 0, Text::say("没有 XML 文件"));
    return documents;
}

}  // namespace import
