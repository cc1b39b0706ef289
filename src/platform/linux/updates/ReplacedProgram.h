// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace stowpocket {

/// Where a newer version of the program whose file is `program` waits, and where the replaced one is kept.
[[nodiscard]] std::string downloadPath(const std::string& program);
[[nodiscard]] std::string replacedPath(const std::string& program);

/// Runs `program`, which was replaced by a newer version, in the place of this process; the old version again where
/// the new one cannot be started. Answers an exit code when neither can. Called at the very end of main().
[[nodiscard]] int becomeReplaced(const std::string& program);

}  // namespace stowpocket
