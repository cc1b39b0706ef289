// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"
#include "platform/linux/pictures/DecoderReply.h"
#include "platform/linux/pictures/RegularFile.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace stowpocket {

/// A program to run once, and its limits.
struct OneShotChild {
    /// The path of the program, then its arguments.
    std::vector<std::string> command;
    std::size_t outputLimit = 0;
    std::chrono::milliseconds timeLimit{0};
};

/// Runs `child` with `input` as its standard input and returns its output. None if it could not be started, wrote too
/// much or took too long. The child is killed and reaped before this returns, and inherits no other open file.
/// Blocks: never call it on the main thread.
[[nodiscard]] std::optional<Bytes> outputOf(const OneShotChild& child, int input);

/// Decodes picture files, each in a process of its own: whatever a broken or hostile file does to the image libraries
/// ends with that process.
class ImageDecoder {
public:
    /// `executable` is `stowpocket-decoder`. A file that takes longer than `limit` is given up.
    ImageDecoder(std::string executable, std::chrono::milliseconds limit);
    /// The picture in `file`, at most `side` pixels each way and never enlarged. On a background thread.
    [[nodiscard]] DecoderReply decode(const RegularFile& file, int side) const;

private:
    std::string executable_;
    std::chrono::milliseconds limit_;
};

}  // namespace stowpocket
