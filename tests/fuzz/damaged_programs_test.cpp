#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "exchange/FileNames.h"
#include "exchange/TextFile.h"
#include "tests/engines/EngineRun.h"
#include "tests/fuzz/Bundle.h"
#include "tests/fuzz/SampleFiles.h"

/// The three programs on damaged input and where nothing can be written: one line on standard error, and results that
/// are whole or empty.
namespace fuzz {
namespace {

namespace file = exchange::file;
using Files = std::map<std::string, std::string>;

const char* const kResults[] = {file::kSettingResults, file::kFaultResults, file::kCoefficients,
                                file::kVariableResults};

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

std::string readIfThere(const std::filesystem::path& path) {
    return std::filesystem::exists(path) ? exchange::readAll(path) : std::string();
}

/// Ended with 0, or with 1 and one line; never by a signal. Nothing that is no number stands in the results.
void expectDecent(const EngineRun& run, const Workplace& place, const std::string& what) {
    ASSERT_TRUE(run.status == 0 || run.status == 1) << what << ": status " << run.status;
    if (run.status == 1) {
        EXPECT_EQ(std::ranges::count(run.error, '\n'), 1) << what << ": " << run.error;
        EXPECT_NE(run.error.find(": "), std::string::npos) << what << ": " << run.error;
    }
    for (const char* name : kResults) {
        const auto text = readIfThere(place.directory() / name);
        EXPECT_EQ(text.find("nan"), std::string::npos) << what;
        EXPECT_EQ(text.find("inf"), std::string::npos) << what;
        EXPECT_TRUE(text.empty() || text.ends_with("\r\n")) << what;
    }
}

const std::map<std::string, std::function<std::string(const std::string&)>> kDamages = {
    {"empty", [](const std::string&) { return std::string(); }},
    {"cut in half", [](const std::string& good) { return good.substr(0, good.size() / 2); }},
    {"CR alone", [](const std::string& good) { return replaced(good, "\r\n", "\r"); }},
    {"LF alone", [](const std::string& good) { return replaced(good, "\r\n", "\n"); }},
    {"zero bytes", [](const std::string& good) { return std::string(good.size(), '\0'); }},
    {"binary", [](const std::string& good) { return replaced(good, ",", "\xff\xfe\x80"); }},
    {"not a number", [](const std::string& good) { return replaced(good, "0.", "nan"); }},
    {"1e308", [](const std::string& good) { return replaced(good, "0.", "1e308,"); }},
    {"huge", [](const std::string& good) { return good + std::string(std::size_t{8} << 20, '7'); }},
    {"doubled", [](const std::string& good) { return good + good; }},
};

TEST(DamagedPrograms, TellInOneLineWhateverFileIsDamaged) {
    Workplace place(sampleStudy());
    ASSERT_EQ(runEngine(file::kEngineProgram, place.directory()).status, 0);
    for (const auto& [name, good] : sampleStudy()) {
        for (const auto& [damage, apply] : kDamages) {
            place.put(name, apply(good));
            const auto run = runEngine(file::kEngineProgram, place.directory());
            expectDecent(run, place, name + " " + damage);
            const auto settings = readIfThere(place.directory() / file::kSettingResults);
            EXPECT_TRUE(run.status == 0 || settings.empty()) << name << " " << damage;
            expectDecent(runEngine(file::kOrderProgram, place.directory()), place, "order, " + name + " " + damage);
        }
        std::filesystem::remove(place.directory() / name);
        std::filesystem::create_directory(place.directory() / name);
        expectDecent(runEngine(file::kEngineProgram, place.directory()), place, name + " is a directory");
        std::filesystem::remove(place.directory() / name);
        place.put(name, good);
    }
    EXPECT_EQ(runEngine(file::kEngineProgram, place.directory()).status, 0);
}

TEST(DamagedPrograms, RealTimeFilesThatAreNoneAreRefused) {
    Workplace place({});
    place.put(file::kRealTimeName, "\"net\",  \".\",  \r\n");
    for (const std::string& bytes : {std::string(), std::string("SQLite format 3"), std::string(100000, '\xff')}) {
        place.put("tables.db", bytes);
        const auto run = runEngine(file::kConverterProgram, place.directory());
        EXPECT_EQ(run.status, 1);
        EXPECT_TRUE(run.error.starts_with("tables.db: ")) << run.error;
        EXPECT_FALSE(std::filesystem::exists(place.directory() / "LF.L0"));
    }
}

/// The file that is written aside leads to a device that is always full.
void fill(const Workplace& place, const std::string& name) {
    std::filesystem::create_symlink("/dev/full", place.directory() / (name + ".new"));
}

TEST(DamagedPrograms, AFullDiskLeavesTheOldResult) {
    if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no /dev/full on this system";
    Workplace place(sampleStudy());
    for (const char* name : {file::kSettingResults, file::kCoefficients, file::kTurnOrder}) {
        const std::string program = name == file::kTurnOrder ? file::kOrderProgram : file::kEngineProgram;
        place.put(name, "1, 2, 3,\r\n");
        fill(place, name);
        const auto run = runEngine(program, place.directory());
        EXPECT_EQ(run.status, 1) << name;
        EXPECT_EQ(run.error, std::string(name) + ": cannot be written\n");
        EXPECT_EQ(exchange::readAll(place.directory() / name), "1, 2, 3,\r\n") << name;
        EXPECT_FALSE(std::filesystem::exists(place.directory() / (std::string(name) + ".new")));
        EXPECT_EQ(runEngine(program, place.directory()).status, 0) << "with room again";
    }
}

}  // namespace
}  // namespace fuzz
