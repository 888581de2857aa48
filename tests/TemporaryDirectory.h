#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

/// A test with a directory of its own, which goes away with it.
class TemporaryDirectory : public ::testing::Test {
  protected:
    std::filesystem::path directory;

    void SetUp() override {
        const std::string test = ::testing::UnitTest::GetInstance()->current_test_info()->name();
        directory = std::filesystem::temp_directory_path() / (test + "_" + std::to_string(getpid()));
        std::filesystem::create_directories(directory);
    }
    void TearDown() override { std::filesystem::remove_all(directory); }
};
