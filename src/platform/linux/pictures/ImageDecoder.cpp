// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/ImageDecoder.h"

#include "platform/linux/pictures/ImageDecoderProcess.h"
#include "platform/linux/pictures/OneShotChild.h"

#include <algorithm>

namespace stowpocket {

ImageDecoder::ImageDecoder(std::string executable, std::chrono::milliseconds limit)
    : executable_(std::move(executable)), limit_(limit) {}

DecoderReply ImageDecoder::decode(const RegularFile& file, int side) const {
    side = std::clamp(side, 1, maxDecodedSide);
    const OneShotChild child{{executable_, decodeImageOption, std::to_string(side)}, replySizeLimit(side), limit_};
    const std::optional<Bytes> reply = outputOf(child, file.descriptor());
    return reply ? parsedReply(*reply, side) : DecoderReply{};
}

}  // namespace stowpocket
