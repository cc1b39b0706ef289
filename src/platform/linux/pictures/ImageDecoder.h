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

/// A program to run once, and how far it is trusted.
struct OneShotChild {
    /// The program's path, then its arguments.
    std::vector<std::string> command;
    std::size_t outputLimit = 0;
    std::chrono::milliseconds timeLimit{0};
};

/// Runs `child` with `input` as its standard input and answers what it wrote before it closed its output. None when
/// it could not be started, wrote too much or took too long. It is killed and reaped before this returns, and it
/// inherits no other open file. Blocks: never on the main thread.
[[nodiscard]] std::optional<Bytes> outputOf(const OneShotChild& child, int input);

/// Decodes picture files in a process of their own, one for each file: whatever a broken or hostile file does to the
/// image libraries dies with that process.
class ImageDecoder {
public:
    /// `executable` is `stowpocket-decoder`; a file that takes longer than `limit` is given up.
    ImageDecoder(std::string executable, std::chrono::milliseconds limit);
    /// The picture in `file`, at most `side` pixels each way and never enlarged. On a background thread.
    [[nodiscard]] DecoderReply decode(const RegularFile& file, int side) const;

private:
    std::string executable_;
    std::chrono::milliseconds limit_;
};

}  // namespace stowpocket
