// SPDX-License-Identifier: MIT
#pragma once

#include "services/MainBundle.h"

#include <optional>
#include <string>

namespace stowpocket {

/// `relativePath` in the parent of the folder that contains the running code. It is the same for an installed
/// program, an AppImage and a build folder.
[[nodiscard]] std::string installedFile(const std::string& relativePath);

/// The running program with its information list.
[[nodiscard]] MainBundle installedBundle();

/// The AppImage that this program runs from; none if it does not run from one.
[[nodiscard]] std::optional<std::string> runningAppImage();

/// Where a newer version of the program whose file is `program` waits, and where the replaced one is kept.
[[nodiscard]] std::string downloadPath(const std::string& program);
[[nodiscard]] std::string replacedPath(const std::string& program);
/// The mark that an AppImage which has just replaced another leaves when it starts. Where it is still there at the
/// next start, the replaced one takes its place again.
[[nodiscard]] std::string startedPath(const std::string& program);

/// Removes that mark when this process ends in order.
void tellEndInOrder();

/// Runs `program`, which was replaced by a newer version, in the place of this process; the old version again where
/// the new one cannot be started. Answers an exit code when neither can. Called at the very end of main().
[[nodiscard]] int becomeReplaced(const std::string& program);

}  // namespace stowpocket
