// SPDX-License-Identifier: MIT
#pragma once

#include "cli/Outcome.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace stowpocket {

/// Whether a program that does not run yet is started for the request.
enum class StartProgram { never, ifNeeded };

/// The running program, as the command verbs of another process see it. Calls wait for the answer, within limits;
/// one without an answer leaves its reason in `problem`.
class RunningShelf {
public:
    virtual ~RunningShelf() = default;
    /// True when the program runs and can be asked.
    [[nodiscard]] virtual bool reach(StartProgram start) = 0;
    /// One outcome per file, in order, once the files stand on the shelf. At most `maxFilesPerRequest`.
    [[nodiscard]] virtual std::optional<std::vector<AddOutcome>> add(std::span<const FileURL> files) = 0;
    [[nodiscard]] virtual std::optional<std::vector<StagedFile>> list() = 0;
    /// Names are ids of items or URLs of files. At most `maxFilesPerRequest`.
    [[nodiscard]] virtual std::optional<std::vector<RemoveOutcome>> remove(std::span<const std::string> names) = 0;
    [[nodiscard]] virtual bool perform(ShelfAction action) = 0;
    /// Why the last call had no answer, for the user.
    [[nodiscard]] virtual std::string problem() const = 0;
    /// True when that is because the program runs in another session.
    [[nodiscard]] virtual bool runsElsewhere() const = 0;
    /// Why what the last call changed is not saved yet, for the user; empty when it is.
    [[nodiscard]] virtual std::string saveProblem() const = 0;
};

}  // namespace stowpocket
