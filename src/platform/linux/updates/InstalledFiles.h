// SPDX-License-Identifier: MIT
#pragma once

#include "services/MainBundle.h"

#include <optional>
#include <string>

namespace stowpocket {

/// `relativePath` in the folder that holds the folder of the running code: the same whether it was installed, runs
/// out of an AppImage or lies in a build folder.
[[nodiscard]] std::string installedFile(const std::string& relativePath);

/// The running program, with its information list.
[[nodiscard]] MainBundle installedBundle();

/// The AppImage that this program runs out of; none when it does not.
[[nodiscard]] std::optional<std::string> runningAppImage();

}  // namespace stowpocket
