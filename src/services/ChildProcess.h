// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Bytes.h"

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

}  // namespace stowpocket
