// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/DurableFile.h"

#include <chrono>
#include <optional>
#include <string>

namespace stowpocket {

/// Makes this process the only program that writes the user's settings, across all sessions and machines: holds a
/// lock on a file beside the settings, which the system releases however the process ends. Where the file cannot be
/// made or locked, the program runs without the lock.
class ProgramLock {
public:
    /// For a program that starts while another one is just ending.
    static constexpr std::chrono::milliseconds usualPatience{1000};

    /// Takes the lock at that path, and waits for it no longer than `patience`.
    explicit ProgramLock(const std::string& path, std::chrono::milliseconds patience = usualPatience);

    /// The place of the program that has the lock, for the user. Empty when no other program has it.
    [[nodiscard]] const std::optional<std::string>& holder() const { return holder_; }

    /// The same without taking the lock.
    [[nodiscard]] static std::optional<std::string> holderOf(const std::string& path);
    /// The path of the lock for the settings in that file.
    [[nodiscard]] static std::string pathBeside(const std::string& preferences);

private:
    FileDescriptor file_;
    std::optional<std::string> holder_;
};

/// Tells the user that the program runs in the session of `holder`.
[[nodiscard]] std::string runsElsewhereText(const std::string& holder);

}  // namespace stowpocket
