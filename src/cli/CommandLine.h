// SPDX-License-Identifier: MIT
#pragma once

#include "cli/Command.h"

#include <functional>
#include <span>
#include <string>
#include <variant>

namespace stowpocket {

/// Why the arguments make no command, for the user.
struct UsageError {
    std::string message;
};

/// Reads the arguments that follow the program's name. A first argument that is a verb is one; "./add" is a file. A
/// first word that is no verb has to be a file for which `isThere` is true. After "--" everything is a file.
[[nodiscard]] std::variant<Command, UsageError>
parsedCommandLine(std::span<const std::string> arguments,
                  const std::function<bool(const std::string& argument)>& isThere);

}  // namespace stowpocket
