// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"

#include <QImage>

#include <span>

namespace stowpocket {

/// The longest side of a picture that is ever asked of the decoder.
constexpr int maxDecodedSide = 1024;

/// What became of a file that was to be decoded.
struct DecoderReply {
    enum class Outcome {
        decoded,
        failed,
        /// No picture in a format that is decoded here; others may know it.
        unsupported,
        /// The kernel does not confine the decoder, so nothing is decoded.
        unconfined,
    };
    Outcome outcome = Outcome::failed;
    QImage image;  ///< null unless decoded
};

/// The most bytes that a reply for pictures of up to `side` pixels can have.
[[nodiscard]] std::size_t replySizeLimit(int side);

/// What the decoder writes: a mark, width and height, and the pixels row by row.
[[nodiscard]] Bytes encodedReply(const QImage& image);
/// What it writes instead when there is no picture: the mark, no width, and why.
[[nodiscard]] Bytes encodedReply(DecoderReply::Outcome outcome);

/// Reads a reply that a hostile file may have got hold of: anything that is not exactly a picture of at most `side`
/// pixels each way is a failure, found before memory is taken.
[[nodiscard]] DecoderReply parsedReply(std::span<const std::uint8_t> reply, int side);

}  // namespace stowpocket
