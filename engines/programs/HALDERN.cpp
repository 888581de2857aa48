#include <exception>
#include <filesystem>
#include <iostream>

#include "engines/rules/SettingRun.h"

/// Computes the settings that the files of the current directory ask for. \return 0, or 1 with one line on standard
/// error when the input is at fault
int main() {
    try {
        engines::runSettings(std::filesystem::current_path(), std::cerr);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
