// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <system_error>

namespace stowpocket {

/// Puts `bytes` in the place of the file at the absolute `path`, which has the old contents or the new ones at every
/// moment, even when the power fails; a link there stays, and the file that it leads to is replaced. Readable by the
/// user alone, in a folder that exists. An error when the old contents remain. Waits for the disk: the main thread
/// writes only what is small and rare. Any thread, one writer a file in this process.
[[nodiscard]] std::error_code replaceFile(const std::string& path, std::string_view bytes);

/// Removes what writers that were killed left beside `path`.
void removeUnfinishedReplacements(const std::string& path);

/// The file that `path` leads to through links, whether it exists or not.
[[nodiscard]] std::string linkTarget(const std::string& path);

/// Writes all of `bytes` to an open file.
[[nodiscard]] std::error_code writeAll(int descriptor, std::string_view bytes);

/// What errno says now.
[[nodiscard]] std::error_code lastError();

}  // namespace stowpocket
