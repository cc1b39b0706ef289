// SPDX-License-Identifier: MIT
#pragma once

#include "cli/CommandRunner.h"
#include "cli/ShelfCommands.h"

#include <string>
#include <vector>

namespace stowpocket {

/// The arguments behind the program's name.
[[nodiscard]] std::vector<std::string> argumentsOf(int argc, char** argv);

/// This process as a command sees it.
[[nodiscard]] CommandEnvironment commandEnvironment(std::string version);

/// The tokens that the desktop left for this process. Asked before the application object is made, which takes some
/// of them for itself.
[[nodiscard]] StartupTokens startupTokens();

/// Whether an argument names a file that is there.
[[nodiscard]] bool fileIsThere(const std::string& argument);

/// Writes the result to the standard streams and answers the exit code.
[[nodiscard]] int finish(const CommandResult& result);

/// Carries out a command in the program that runs on the session bus. Needs the application object.
[[nodiscard]] int runCommandOnBus(const Command& command, const std::string& version, const StartupTokens& tokens);

/// Says where the program runs that has the settings of this user, on the desktop where there is no terminal, and
/// answers the exit code.
[[nodiscard]] int refuseSecondProgram(const std::string& holder);

/// Puts the files that the program was started with on its own shelf, and opens it for them.
void openFilesAtStart(const Command& command, const std::string& version, ShelfCommands& commands,
                      const StartupTokens& tokens);

}  // namespace stowpocket
