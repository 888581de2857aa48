#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>

#include "engines/network/Memory.h"
#include "engines/rules/SettingRun.h"

/// Computes the settings that the files of the current directory ask for. \return 0, or 1 with one line on standard
/// error when the input is at fault
int main() {
    engines::keepFreedMemory();
    try {
        // Standard error is not buffered and the files are closed: nothing is lost.
        engines::runSettings(std::filesystem::current_path(), std::cerr, [] { std::_Exit(0); });
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
