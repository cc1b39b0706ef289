// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"
#include "platform/linux/pictures/RegularFile.h"

#include <QImage>

#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace stowpocket {

/// The longest side of a picture that is ever requested from the decoder.
constexpr int maxDecodedSide = 1024;

/// The outcome of decoding a file.
struct DecoderReply {
    enum class Outcome {
        decoded,
        failed,
        /// Not a picture in a format that is decoded here; other programs may know it.
        unsupported,
        /// The kernel does not confine the decoder, so nothing is decoded.
        unconfined,
    };
    Outcome outcome = Outcome::failed;
    QImage image;  ///< null unless decoded
};

/// The maximum size in bytes of a reply for pictures of up to `side` pixels.
[[nodiscard]] std::size_t replySizeLimit(int side);

/// The output of the decoder: a mark, width and height, and the pixels row by row.
[[nodiscard]] Bytes encodedReply(const QImage& image);
/// The output if there is no picture: the mark, a width of zero, and the reason.
[[nodiscard]] Bytes encodedReply(DecoderReply::Outcome outcome);

/// Parses a reply that a hostile file may have manipulated. Anything but a picture of at most `side` pixels each way
/// is a failure, which is detected before memory is allocated.
[[nodiscard]] DecoderReply parsedReply(std::span<const std::uint8_t> reply, int side);

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
