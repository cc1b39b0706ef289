// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"

#include <QImage>

#include <span>

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

}  // namespace stowpocket
