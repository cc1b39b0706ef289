// SPDX-License-Identifier: MIT
#pragma once

#include "services/Processes.h"

#include <chrono>

namespace stowpocket {

/// Runs a program and ends it when it writes or runs without end.
class QtChildProcess : public ChildProcess {
public:
    struct Limits {
        std::chrono::milliseconds time;
        std::size_t outputSize;
    };
    /// Detaching a disk image that is in use may take a minute; a list of images takes some kilobytes.
    static constexpr Limits defaultLimits{std::chrono::minutes(2), std::size_t{4} * 1024 * 1024};

    explicit QtChildProcess(Limits limits = defaultLimits) : limits_(limits) {}
    [[nodiscard]] std::optional<Bytes> run(const std::string& executable,
                                           const std::vector<std::string>& arguments) override;

private:
    const Limits limits_;
};

}  // namespace stowpocket
