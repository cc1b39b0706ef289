// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace stowpocket {

/// Unpacks the folder that lies in the file `image` from `offset` on, as a SquashFS file system, into the new folder
/// at `path`. Empty when that went well, else what did not.
[[nodiscard]] std::string unpackSquashedFolder(const std::string& image, std::size_t offset, const std::string& path);

/// Removes a folder with all that is in it.
void removeFolder(const std::string& path);

}  // namespace stowpocket
