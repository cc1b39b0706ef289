// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace stowpocket {

/// What the program was started for. `open` has no word of its own: it is a start without a verb.
enum class Verb { open, add, list, remove, clear, show, toggle, quickDrop, help, version };

struct Command {
    Verb verb = Verb::open;
    /// `list` only: answer for programs instead of people.
    bool asJSON = false;
    /// Files, URLs of files or ids of items, as they were typed.
    std::vector<std::string> operands = {};

    friend bool operator==(const Command&, const Command&) = default;
};

/// What the process answers to whoever started it.
enum class ExitCode { done = 0, partlyDone = 1, usageError = 2, unreachable = 3, notSaved = 4, runsElsewhere = 5 };

/// Why the arguments make no command, for the user.
struct UsageError {
    std::string message;
};

/// Reads the arguments that follow the program's name. A first argument that is a verb is one; "./add" is a file. A
/// first word that is no verb has to be a file for which `isThere` is true. After "--" everything is a file.
[[nodiscard]] std::variant<Command, UsageError>
parsedCommandLine(std::span<const std::string> arguments,
                  const std::function<bool(const std::string& argument)>& isThere);

/// What the file system knows and a name does not. Answers the path without any link when `path` is a symbolic link
/// that leads somewhere, else nothing.
using LinkTarget = std::function<std::optional<std::string>(const std::string& path)>;

/// The absolute path that `path` names for somebody standing in the absolute `workingDirectory`, without ".", ".."
/// and doubled or trailing slashes. Links stay as they are written, but for one before "..", where the kernel too
/// goes to its target first. Empty when the path is empty or there is no working directory to begin at.
[[nodiscard]] std::optional<std::string> absolutePath(std::string_view path, std::string_view workingDirectory,
                                                      const LinkTarget& linkTarget);

/// The file that an argument names: a path, or a `file:` URL of this machine.
[[nodiscard]] std::optional<FileURL> fileOfArgument(std::string_view argument, std::string_view workingDirectory,
                                                    std::string_view localHost, const LinkTarget& linkTarget);

}  // namespace stowpocket
