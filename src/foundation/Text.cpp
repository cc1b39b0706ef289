// SPDX-License-Identifier: MIT
#include "foundation/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace stowpocket {
namespace {

bool isContinuation(std::string_view bytes, std::size_t at) {
    return at < bytes.size() && isUtf8Continuation(bytes[at]);
}

/// The length of the valid sequence that begins at `at`, or 0. The narrowed ranges of the second byte exclude
/// overlong forms, surrogates and what lies beyond U+10FFFF (Unicode 15, table 3-7).
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

namespace {

/// Small letters between `first` and `last` whose capital lies `distance` before them.
struct Run {
    char16_t first;
    char16_t last;
    int distance;
    /// Where small letters and capitals alternate, only every second one is small.
    int step = 1;
};

/// Sorted. The scripts whose letters stand on keyboards and have two cases (Unicode 15, UnicodeData.txt); letters
/// whose capital is longer than one character, as that of the sharp s, stay as they are.
constexpr std::array<Run, 32> runs{{
    {u'a', u'z', 32},       {0x00E0, 0x00F6, 32},   {0x00F8, 0x00FE, 32},   {0x00FF, 0x00FF, -121},
    {0x0101, 0x012F, 1, 2}, {0x0131, 0x0131, 232},  {0x0133, 0x0137, 1, 2}, {0x013A, 0x0148, 1, 2},
    {0x014B, 0x0177, 1, 2}, {0x017A, 0x017E, 1, 2}, {0x01A1, 0x01A5, 1, 2}, {0x01B0, 0x01B0, 1},
    {0x01CE, 0x01DC, 1, 2}, {0x01DF, 0x01EF, 1, 2}, {0x01F9, 0x021F, 1, 2}, {0x0223, 0x0233, 1, 2},
    {0x0259, 0x0259, 202},  {0x03AC, 0x03AC, 38},   {0x03AD, 0x03AF, 37},   {0x03B1, 0x03C1, 32},
    {0x03C2, 0x03C2, 31},   {0x03C3, 0x03CB, 32},   {0x03CC, 0x03CC, 64},   {0x03CD, 0x03CE, 63},
    {0x0430, 0x044F, 32},   {0x0450, 0x045F, 80},   {0x0461, 0x0481, 1, 2}, {0x048B, 0x04BF, 1, 2},
    {0x04D1, 0x052F, 1, 2}, {0x0561, 0x0586, 48},   {0x1E01, 0x1E95, 1, 2}, {0x1EA1, 0x1EFF, 1, 2},
}};

char32_t capitalOf(char32_t letter) {
    const auto run = std::ranges::lower_bound(runs, letter, {}, &Run::last);
    const bool isSmall =
        run != runs.end() && letter >= run->first && (letter - run->first) % static_cast<char32_t>(run->step) == 0;
    return isSmall ? static_cast<char32_t>(static_cast<std::int32_t>(letter) - run->distance) : letter;
}

unsigned bitsOf(char byte) {
    return static_cast<std::uint8_t>(byte);
}

/// The letter that begins at `at` in well-formed text, if it is one of the lengths that the scripts above have; else
/// its byte as it is.
std::size_t lengthAt(std::string_view text, std::size_t at) {
    const unsigned lead = bitsOf(text[at]);
    const std::size_t length = lead < 0xC0 || lead >= 0xF0 ? 1 : lead < 0xE0 ? 2 : 3;
    return at + length <= text.size() ? length : 1;
}

char32_t letterAt(std::string_view text, std::size_t at, std::size_t length) {
    if (length == 2)
        return (bitsOf(text[at]) & 0x1FU) << 6U | (bitsOf(text[at + 1]) & 0x3FU);
    if (length == 3)
        return (bitsOf(text[at]) & 0x0FU) << 12U | (bitsOf(text[at + 1]) & 0x3FU) << 6U |
               (bitsOf(text[at + 2]) & 0x3FU);
    return bitsOf(text[at]);
}

void append(std::string& text, char32_t letter) {
    if (letter < 0x80) {
        text += static_cast<char>(letter);
    } else if (letter < 0x800) {
        text += static_cast<char>(0xC0U | letter >> 6U);
        text += static_cast<char>(0x80U | (letter & 0x3FU));
    } else {
        text += static_cast<char>(0xE0U | letter >> 12U);
        text += static_cast<char>(0x80U | (letter >> 6U & 0x3FU));
        text += static_cast<char>(0x80U | (letter & 0x3FU));
    }
}

}  // namespace

std::string uppercased(std::string_view text) {
    std::string capitals;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = lengthAt(text, at);
        const char32_t letter = letterAt(text, at, length);
        const char32_t capital = length == 1 && letter >= 0x80 ? letter : capitalOf(letter);
        if (capital == letter)
            capitals += text.substr(at, length);
        else
            append(capitals, capital);
        at += length;
    }
    return capitals;
}

}  // namespace stowpocket
