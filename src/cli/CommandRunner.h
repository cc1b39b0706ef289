// SPDX-License-Identifier: MIT
#pragma once

#include "cli/CommandLine.h"

#include <functional>
#include <string>
#include <vector>

namespace stowpocket {

class RunningShelf;

/// Where a command was entered, which its arguments may refer to.
struct CommandEnvironment {
    /// Absolute; empty when the folder is gone.
    std::string workingDirectory;
    /// This machine's name.
    std::string localHost;
    std::string version;
    LinkTarget linkTarget;
    /// Whether the file exists.
    std::function<bool(const FileURL&)> fileExists;
};

struct CommandResult {
    ExitCode code = ExitCode::done;
    /// For the standard output and the standard error.
    std::string out = {};
    std::string err = {};
};

/// Runs one command. Accesses files only to check that those to be added exist.
[[nodiscard]] CommandResult runCommand(const Command& command, const CommandEnvironment& environment,
                                       RunningShelf& shelf);

/// The result for invalid arguments.
[[nodiscard]] CommandResult usageErrorResult(const std::string& message);

/// The existing files that the operands of `start` and `add` name. Each other operand adds a line to `result`.
[[nodiscard]] std::vector<FileURL> filesToAdd(const Command& command, const CommandEnvironment& environment,
                                              CommandResult& result);

}  // namespace stowpocket
