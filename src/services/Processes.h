// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"

#include <optional>
#include <string>
#include <vector>

namespace stowpocket {

/// Runs other programs. Any thread but the main one: the call waits for the end of the program.
class ChildProcess {
public:
    virtual ~ChildProcess() = default;
    /// Returns the standard output of the program, whatever its exit status; its standard error is discarded. None if
    /// the program could not be started, or was ended because it ran too long or wrote too much.
    [[nodiscard]] virtual std::optional<Bytes> run(const std::string& executable,
                                                   const std::vector<std::string>& arguments) = 0;
};

/// Reads property lists that others wrote. Any thread.
class PropertyListParser {
public:
    virtual ~PropertyListParser() = default;
    /// None when `bytes` are no property list.
    [[nodiscard]] virtual std::optional<PropertyValue> parse(const Bytes& bytes) = 0;
};

}  // namespace stowpocket
