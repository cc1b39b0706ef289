// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace stowpocket {

/// Whether `character` is one of the control characters of ASCII.
[[nodiscard]] constexpr bool isControl(char character) {
    const auto byte = static_cast<std::uint8_t>(character);
    return byte < 0x20 || byte == 0x7F;
}

[[nodiscard]] constexpr bool isAsciiDigit(char character) {
    return character >= '0' && character <= '9';
}

[[nodiscard]] constexpr bool isAsciiLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

/// Whether `byte` continues a character of UTF-8 that began before it.
[[nodiscard]] constexpr bool isUtf8Continuation(char byte) {
    return (static_cast<std::uint8_t>(byte) & 0xC0u) == 0x80u;
}

/// `text` with the ASCII capitals made small; other characters stay as they are.
[[nodiscard]] std::string asciiLowercased(std::string_view text);

/// `bytes` as well-formed UTF-8: every byte that is not part of a valid sequence becomes U+FFFD. File names are
/// bytes; whatever is shown or stored as text goes through here first.
[[nodiscard]] std::string validUtf8(std::string_view bytes);

/// Appends `byte` as two hexadecimal digits, in capitals.
void appendHex(std::string& text, std::uint8_t byte);

}  // namespace stowpocket
