// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace stowpocket {

/// Whether `signature` is the Ed25519 signature over `bytes` by the owner of `publicKey`; both are in Base64. False
/// also when one of them is none.
[[nodiscard]] bool isSigned(std::span<const std::uint8_t> bytes, std::string_view signature,
                            std::string_view publicKey);

/// What comes before the last line of `list`, when that line is `<!-- edSignature: SIGNATURE -->` and signs all of
/// it; none otherwise. What was not signed is never looked at.
[[nodiscard]] std::optional<std::string_view> signedPart(std::string_view list, std::string_view publicKey);

}  // namespace stowpocket
