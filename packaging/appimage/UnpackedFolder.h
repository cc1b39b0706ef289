// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace stowpocket {

/// An AppImage: the file, what it holds from `offset` on, and how that is called and how large it is when unpacked.
struct Image {
    std::string file;
    std::size_t offset = 0;
    std::string name;
    std::uint64_t size = 0;
};

/// Where the contents of `image` lie unpacked, in the user's cache. They are unpacked at the first start; a second
/// start meanwhile waits for that. What other images left there goes, unless it still runs: this process and what it
/// becomes hold the folder until they end. Where that fails, the process ends and says why.
[[nodiscard]] std::string unpackedFolder(const Image& image);

/// Says what went wrong with `image` and ends the process.
[[noreturn]] void fail(const std::string& image, const std::string& problem);

}  // namespace stowpocket
