// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace stowpocket {

/// Whether `signature` is the Ed25519 signature over `bytes` by the owner of `publicKey`; both are in Base64. False
/// also when one of them is none.
[[nodiscard]] bool isSigned(std::span<const std::uint8_t> bytes, std::string_view signature,
                            std::string_view publicKey);

}  // namespace stowpocket
