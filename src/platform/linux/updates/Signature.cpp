// SPDX-License-Identifier: MIT
#include "platform/linux/updates/Signature.h"

#include <sodium.h>

#include <algorithm>
#include <array>

namespace stowpocket {
namespace {

template <std::size_t size>
std::optional<std::array<unsigned char, size>> decoded(std::string_view base64) {
    std::array<unsigned char, size> bytes{};
    std::size_t length = 0;
    // The library takes some bytes that are no ASCII for characters of Base64.
    if (std::ranges::any_of(base64, [](char character) { return static_cast<unsigned char>(character) > 127; }))
        return std::nullopt;
    const bool isWhole = sodium_base642bin(bytes.data(), size, base64.data(), base64.size(), nullptr, &length,
                                           nullptr, sodium_base64_VARIANT_ORIGINAL) == 0;
    return isWhole && length == size ? std::optional(bytes) : std::nullopt;
}

}  // namespace

bool isSigned(std::span<const std::uint8_t> bytes, std::string_view signature, std::string_view publicKey) {
    const auto signatureBytes = decoded<crypto_sign_BYTES>(signature);
    const auto keyBytes = decoded<crypto_sign_PUBLICKEYBYTES>(publicKey);
    return sodium_init() >= 0 && signatureBytes && keyBytes &&
           crypto_sign_verify_detached(signatureBytes->data(), bytes.data(), bytes.size(), keyBytes->data()) == 0;
}

std::optional<std::string_view> signedPart(std::string_view list, std::string_view publicKey) {
    constexpr std::string_view opening = "<!-- edSignature: ";
    constexpr std::string_view closing = " -->";
    list = list.substr(0, list.find_last_not_of("\r\n") + 1);
    const std::size_t start = list.rfind(opening);
    if (start == std::string_view::npos || !list.ends_with(closing))
        return std::nullopt;
    const std::string_view signature = list.substr(start + opening.size());
    const std::string_view part = list.substr(0, start);
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(part.data()), part.size());
    return isSigned(bytes, signature.substr(0, signature.size() - closing.size()), publicKey) ? std::optional(part)
                                                                                              : std::nullopt;
}

}  // namespace stowpocket
