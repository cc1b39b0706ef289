// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/pictures/DecoderReply.h"
#include "platform/linux/pictures/RegularFile.h"

#include <chrono>
#include <string>

namespace stowpocket {

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
