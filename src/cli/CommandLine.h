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

/// What the program was started for. `start` is a start without a verb.
enum class Verb { start, add, list, remove, clear, undo, copy, paste, open, show, toggle, quickDrop, help, version };

struct Command {
    Verb verb = Verb::start;
    /// For `list`: output for programs instead of people.
    bool asJSON = false;
    /// Files, URLs of files or ids of items, as they were typed.
    std::vector<std::string> operands = {};
    /// For `list`: what is printed of each file, as `listText` reads it, and what follows each of them.
    std::string listFormat = "%p";
    char listEnd = '\n';

    friend bool operator==(const Command&, const Command&) = default;
};

/// The exit status of the process.
enum class ExitCode { done = 0, partlyDone = 1, usageError = 2, unreachable = 3, notSaved = 4, runsElsewhere = 5 };

/// Why the arguments are not a valid command, as text for the user.
struct UsageError {
    std::string message;
};

/// Parses the arguments after the program's name. The first argument may be a verb; "./add" is a file. A first word
/// that is not a verb has to be a file for which `isThere` returns true. After "--" every argument is a file.
[[nodiscard]] std::variant<Command, UsageError>
parsedCommandLine(std::span<const std::string> arguments,
                  const std::function<bool(const std::string& argument)>& isThere);

/// Resolves a symbolic link: returns the path without any links if `path` is a link to an existing file, else none.
using LinkTarget = std::function<std::optional<std::string>(const std::string& path)>;

/// Makes `path` absolute, relative to the absolute `workingDirectory`, without ".", ".." and doubled or trailing
/// slashes. Symbolic links are kept, except before "..", where the kernel too follows the link first. None if the
/// path is empty, or is relative and there is no working directory.
[[nodiscard]] std::optional<std::string> absolutePath(std::string_view path, std::string_view workingDirectory,
                                                      const LinkTarget& linkTarget);

/// The file that an argument names: a path, or a `file:` URL of this machine.
[[nodiscard]] std::optional<FileURL> fileOfArgument(std::string_view argument, std::string_view workingDirectory,
                                                    std::string_view localHost, const LinkTarget& linkTarget);

}  // namespace stowpocket
