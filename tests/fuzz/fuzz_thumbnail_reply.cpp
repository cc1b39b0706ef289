// SPDX-License-Identifier: MIT
#include "fuzz/Fuzz.h"
#include "platform/linux/pictures/ImageDecoder.h"
#include "platform/linux/pictures/LocalThumbnailer.h"

/// What a decoder that a hostile picture has taken over may answer, and what may lie in the thumbnail cache.
void stowpocket::checkInput(const std::string& text) {
    constexpr int side = 96;
    const Bytes input(text.begin(), text.end());
    const DecoderReply reply = parsedReply(input, side);
    if (reply.outcome == DecoderReply::Outcome::decoded) {
        invariant(reply.image.width() <= side && reply.image.height() <= side, "no larger than asked for");
        invariant(encodedReply(reply.image) == input, "a picture is exactly its reply");
    }
    const std::optional<QImage> thumbnail = acceptedThumbnail(input, "file:///a.png", 1);
    invariant(!thumbnail || (thumbnail->width() <= 1024 && thumbnail->height() <= 1024), "of modest size");
}
