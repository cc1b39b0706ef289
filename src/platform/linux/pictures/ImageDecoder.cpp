// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/ImageDecoder.h"

#include "platform/linux/pictures/OneShotChild.h"

#include <QDebug>

#include <algorithm>
#include <mutex>

namespace stowpocket {

namespace {

void warnOnce() {
    static std::once_flag said;
    std::call_once(said, [] {
        qWarning("stowpocket: this kernel does not confine the decoder of pictures, so none are decoded");
    });
}

}  // namespace

ImageDecoder::ImageDecoder(std::string executable, std::chrono::milliseconds limit)
    : executable_(std::move(executable)), limit_(limit) {}

DecoderReply ImageDecoder::decode(const RegularFile& file, int side) const {
    side = std::clamp(side, 1, maxDecodedSide);
    const OneShotChild child{{executable_, std::to_string(side)}, replySizeLimit(side), limit_};
    const std::optional<Bytes> output = outputOf(child, file.descriptor());
    DecoderReply reply = output ? parsedReply(*output, side) : DecoderReply{};
    if (reply.outcome == DecoderReply::Outcome::unconfined)
        warnOnce();
    return reply;
}

}  // namespace stowpocket
