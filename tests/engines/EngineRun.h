#pragma once

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "exchange/TextFile.h"

/// How one of the executables ended.
struct EngineRun {
    int status = -1;
    std::string error;  ///< what it wrote to standard error
};

/// Runs an executable in a directory, as the module does: no argument, the directory as current directory.
/// \param before  shell commands that the program is to be run behind
inline EngineRun runEngine(const std::string& program, const std::filesystem::path& directory,
                           const std::string& before = {}) {
    const auto errors = directory.string() + ".stderr";
    const std::string command = "cd '" + directory.string() + "' && " + before + " '" + MORVANE_BIN_DIR + "/" +
                                program + "' 2>'" + errors + "'";
    const int result = std::system(command.c_str());
    EngineRun run{WIFEXITED(result) ? WEXITSTATUS(result) : -1, exchange::readAll(errors)};
    std::filesystem::remove(errors);
    return run;
}
