// SPDX-License-Identifier: MIT
#pragma once

#include "cli/CommandLine.h"

#include <functional>
#include <string>
#include <vector>

namespace stowpocket {

class RunningShelf;

/// Where a command was given: what its arguments mean depends on it.
struct CommandSurroundings {
    /// Absolute; empty when the folder is gone.
    std::string workingDirectory;
    /// This machine's name.
    std::string localHost;
    std::string version;
    LinkTarget linkTarget;
    /// Whether the file is there to be added.
    std::function<bool(const FileURL&)> fileExists;
};

struct CommandResult {
    ExitCode code = ExitCode::done;
    /// For the standard output and the standard error.
    std::string out = {};
    std::string err = {};
};

/// Carries out one command from beginning to end. Touches no file but to see that those to be added are there.
[[nodiscard]] CommandResult runCommand(const Command& command, const CommandSurroundings& surroundings,
                                       RunningShelf& shelf);

/// The answer to arguments that make no command.
[[nodiscard]] CommandResult usageErrorResult(const std::string& message);

/// What the operands of `open` and `add` name, of the files that are there; a line in `result` for each of the
/// others.
[[nodiscard]] std::vector<FileURL> filesToAdd(const Command& command, const CommandSurroundings& surroundings,
                                              CommandResult& result);

}  // namespace stowpocket
