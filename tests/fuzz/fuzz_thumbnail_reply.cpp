// SPDX-License-Identifier: MIT
// What a decoder that a hostile picture has taken over may answer, and what may lie in the thumbnail cache.
#include "foundation/Invariant.h"
#include "platform/linux/pictures/ImageDecoder.h"
#include "platform/linux/pictures/LocalThumbnailer.h"

#include <algorithm>

using namespace stowpocket;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span input(data, size);
    constexpr int side = 96;
    const DecoderReply reply = parsedReply(input, side);
    if (reply.outcome == DecoderReply::Outcome::decoded) {
        invariant(reply.image.width() <= side && reply.image.height() <= side, "no larger than asked for");
        invariant(std::ranges::equal(encodedReply(reply.image), input), "a picture is exactly its reply");
    }
    const std::optional<QImage> thumbnail = acceptedThumbnail(input, "file:///a.png", 1);
    invariant(!thumbnail || (thumbnail->width() <= 1024 && thumbnail->height() <= 1024), "of modest size");
    return 0;
}
