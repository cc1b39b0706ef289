// SPDX-License-Identifier: MIT
#pragma once

#include "cli/Command.h"

#include <span>
#include <string>
#include <variant>

namespace stowpocket {

/// Why the arguments make no command, for the user.
struct UsageError {
    std::string message;
};

/// Reads the arguments that follow the program's name. A first argument that is a verb is one; "./add" is a file.
/// After "--" everything is a file.
[[nodiscard]] std::variant<Command, UsageError> parsedCommandLine(std::span<const std::string> arguments);

}  // namespace stowpocket
