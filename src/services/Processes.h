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
    /// All that the program wrote to its standard output, whatever its exit status; its standard error is dropped.
    /// None when it could not be started, or had to be ended because it wrote or ran without end.
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
