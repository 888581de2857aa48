#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>

#include "exchange/TextFile.h"
#include "tests/fuzz/Targets.h"

/// The kept inputs of every target, as they are and in a few thousand mutations that are the same in every run.
namespace fuzz {
namespace {

std::vector<std::string> corpusOf(const std::string& name) {
    std::vector<std::filesystem::path> files;
    const auto folder = std::filesystem::path(MORVANE_SOURCE_DIR) / "tests/fuzz/corpus" / name;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    std::vector<std::string> inputs;
    for (const auto& file : files) inputs.push_back(exchange::readAll(file));
    return inputs;
}

/// Changes, inserts, drops, repeats bytes, and puts in what numbers and lines stumble over.
std::string mutated(std::string bytes, std::mt19937& dice) {
    static const std::string words[] = {"nan", "inf",      "1e308", "-1e308", "1e-320", "99999999999",
                                        "-1",  "0",        ",",     "\r",     "\n",     "'",
                                        "\"",  "\xb2\xe0", "@",     ";",      "<",      std::string(1, '\0')};
    for (auto changes = dice() % 4 + 1; changes > 0; --changes) {
        const std::size_t at = bytes.empty() ? 0 : dice() % bytes.size();
        const std::size_t length = std::min<std::size_t>(dice() % 20, bytes.size() - at);
        switch (dice() % 5) {
            case 0:
                if (!bytes.empty()) bytes[at] = static_cast<char>(dice());
                break;
            case 1:
                bytes.insert(at, words[dice() % std::size(words)]);
                break;
            case 2:
                bytes.erase(at, length);
                break;
            case 3:
                bytes.insert(at, bytes.substr(at, length));
                break;
            default:
                bytes.replace(at, std::min<std::size_t>(length, 3), words[dice() % std::size(words)]);
        }
    }
    return bytes;
}

class Corpus : public testing::TestWithParam<Target> {};

TEST_P(Corpus, IsReadOrRefusedAndSoAreItsMutations) {
    const auto inputs = corpusOf(GetParam().name);
    ASSERT_FALSE(inputs.empty());
    std::mt19937 dice(7);
    const auto run = [&](const std::string& bytes) {
        try {
            GetParam().run(bytes);
        } catch (const std::exception& error) {
            ADD_FAILURE() << error.what() << "\non\n" << testing::PrintToString(bytes);
        }
    };
    for (const auto& input : inputs) run(input);
    for (int i = 0; i < 3000; ++i) run(mutated(inputs[dice() % inputs.size()], dice));
}

INSTANTIATE_TEST_SUITE_P(EveryReader, Corpus, testing::ValuesIn(kTargets),
                         [](const auto& target) { return std::string(target.param.name); });

}  // namespace
}  // namespace fuzz
