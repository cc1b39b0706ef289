// SPDX-License-Identifier: MIT
#pragma once

#include <string>
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

}  // namespace stowpocket
