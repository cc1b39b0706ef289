// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/DecoderReply.h"

#include <cstring>

namespace stowpocket {
namespace {

/// Both ends are the same program on the same machine, so numbers keep their byte order in memory.
struct Header {
    std::uint32_t mark;
    std::uint32_t width;
    std::uint32_t height;
};

using Outcome = DecoderReply::Outcome;

constexpr std::uint32_t replyMark = 0x50575453;
constexpr QImage::Format wireFormat = QImage::Format_RGBA8888;
constexpr std::size_t bytesPerPixel = 4;

}  // namespace

std::size_t replySizeLimit(int side) {
    return sizeof(Header) + static_cast<std::size_t>(side) * static_cast<std::size_t>(side) * bytesPerPixel;
}

Bytes encodedReply(const QImage& image) {
    const QImage pixels = image.convertToFormat(wireFormat);
    const Header header{replyMark, static_cast<std::uint32_t>(pixels.width()),
                        static_cast<std::uint32_t>(pixels.height())};
    const std::size_t rowSize = header.width * bytesPerPixel;
    Bytes reply(sizeof header + rowSize * header.height);
    std::memcpy(reply.data(), &header, sizeof header);
    for (int row = 0; row < pixels.height(); ++row) {
        const std::size_t at = sizeof header + rowSize * static_cast<std::size_t>(row);
        std::memcpy(reply.data() + at, pixels.constScanLine(row), rowSize);
    }
    return reply;
}

Bytes encodedReply(Outcome outcome) {
    const Header header{replyMark, 0, static_cast<std::uint32_t>(outcome)};
    Bytes reply(sizeof header);
    std::memcpy(reply.data(), &header, sizeof header);
    return reply;
}

DecoderReply parsedReply(std::span<const std::uint8_t> reply, int side) {
    Header header{};
    if (reply.size() < sizeof header)
        return {};
    std::memcpy(&header, reply.data(), sizeof header);
    const std::span<const std::uint8_t> pixels = reply.subspan(sizeof header);
    if (header.mark != replyMark)
        return {};
    if (header.width == 0 && pixels.empty()) {
        for (const Outcome outcome : {Outcome::unsupported, Outcome::unconfined}) {
            if (header.height == static_cast<std::uint32_t>(outcome))
                return {outcome, {}};
        }
    }
    const auto limit = static_cast<std::uint32_t>(side);
    if (header.width == 0 || header.width > limit || header.height == 0 || header.height > limit ||
        pixels.size() != bytesPerPixel * header.width * header.height)
        return {};

    QImage image(static_cast<int>(header.width), static_cast<int>(header.height), wireFormat);
    if (image.isNull())
        return {};
    const std::size_t rowSize = header.width * bytesPerPixel;
    for (int row = 0; row < image.height(); ++row)
        std::memcpy(image.scanLine(row), pixels.data() + rowSize * static_cast<std::size_t>(row), rowSize);
    return {Outcome::decoded, std::move(image)};
}

}  // namespace stowpocket
