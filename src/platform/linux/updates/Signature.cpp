// SPDX-License-Identifier: MIT
#include "platform/linux/updates/Signature.h"

#include <sodium.h>

#include <array>
#include <optional>

namespace stowpocket {
namespace {

template <std::size_t size>
std::optional<std::array<unsigned char, size>> decoded(std::string_view base64) {
    std::array<unsigned char, size> bytes{};
    std::size_t length = 0;
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

}  // namespace stowpocket
