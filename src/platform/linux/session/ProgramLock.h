// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/DurableFile.h"

#include <chrono>
#include <optional>
#include <string>

namespace stowpocket {

/// Makes this process the one program that writes the user's settings, in whichever session and on whichever machine
/// it runs: a lock on a file beside them, which the system takes back however the process ends. Where files cannot be
/// locked, or none can be made, the program runs without.
class ProgramLock {
public:
    /// One program may follow on another that is just ending.
    static constexpr std::chrono::milliseconds usualPatience{1000};

    /// Takes the lock of that path, waiting for it so long at most.
    explicit ProgramLock(const std::string& path, std::chrono::milliseconds patience = usualPatience);

    /// Where the program runs that has the lock, for the user; none when no other has it.
    [[nodiscard]] const std::optional<std::string>& holder() const { return holder_; }

    /// The same without taking the lock.
    [[nodiscard]] static std::optional<std::string> holderOf(const std::string& path);
    /// The lock of settings in that file.
    [[nodiscard]] static std::string pathBeside(const std::string& preferences);

private:
    FileDescriptor file_;
    std::optional<std::string> holder_;
};

/// That the program runs in the session of `holder`, for the user.
[[nodiscard]] std::string runsElsewhereText(const std::string& holder);

}  // namespace stowpocket
