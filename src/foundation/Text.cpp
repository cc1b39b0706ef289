// SPDX-License-Identifier: MIT
#include "foundation/Text.h"

namespace stowpocket {
namespace {

bool isContinuation(std::string_view bytes, std::size_t at) {
    return at < bytes.size() && isUtf8Continuation(bytes[at]);
}

/// The length of the valid sequence that begins at `at`, or 0. The narrower ranges of the second byte exclude
/// overlong forms, surrogates and code points above U+10FFFF (Unicode 15, table 3-7).
std::size_t sequenceLength(std::string_view bytes, std::size_t at) {
    const auto lead = static_cast<std::uint8_t>(bytes[at]);
    if (lead < 0x80)
        return 1;
    if (lead < 0xC2 || lead > 0xF4 || !isContinuation(bytes, at + 1))
        return 0;
    if (lead < 0xE0)
        return 2;
    const auto second = static_cast<std::uint8_t>(bytes[at + 1]);
    if (!isContinuation(bytes, at + 2))
        return 0;
    if (lead < 0xF0) {
        const bool overlong = lead == 0xE0 && second < 0xA0;
        const bool surrogate = lead == 0xED && second > 0x9F;
        return overlong || surrogate ? 0 : 3;
    }
    const bool overlong = lead == 0xF0 && second < 0x90;
    const bool beyondUnicode = lead == 0xF4 && second > 0x8F;
    return overlong || beyondUnicode || !isContinuation(bytes, at + 3) ? 0 : 4;
}

}  // namespace

std::string validUtf8(std::string_view bytes) {
    constexpr std::string_view replacement = "\xEF\xBF\xBD";
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t length = sequenceLength(bytes, at);
        text += length == 0 ? replacement : bytes.substr(at, length);
        at += length == 0 ? 1 : length;
    }
    return text;
}

std::string asciiLowercased(std::string_view text) {
    std::string lowered(text);
    for (char& character : lowered) {
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    }
    return lowered;
}

void appendHex(std::string& text, std::uint8_t byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    text += digits[byte >> 4u];
    text += digits[byte & 0x0Fu];
}

}  // namespace stowpocket
