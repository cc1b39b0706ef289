// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace stowpocket {

/// The file to run to start this program again: the AppImage when it runs out of one. Empty when /proc does not tell.
[[nodiscard]] std::string ownExecutable();

/// The same from its parts: where the running code lies, and the AppImage and its mounted folder as the environment
/// names them. They are believed only when the code lies in that folder, since every program that an AppImage starts
/// inherits them.
[[nodiscard]] std::string executableToStart(std::string_view runningCode, std::string_view appImage,
                                            std::string_view appFolder);

}  // namespace stowpocket
