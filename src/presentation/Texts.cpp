// SPDX-License-Identifier: MIT
#include "presentation/Texts.h"

#include "foundation/Invariant.h"
#include "foundation/Text.h"

#include <array>

namespace stowpocket {
namespace {

struct Unit {
    std::string_view name;
    std::uint64_t bytes;
    /// The shown steps per unit: 10 for one decimal.
    std::uint64_t fractions;
};

constexpr std::array<Unit, 6> units{{
    {"KB", 1'000, 1},
    {"MB", 1'000'000, 10},
    {"GB", 1'000'000'000, 100},
    {"TB", 1'000'000'000'000, 100},
    {"PB", 1'000'000'000'000'000, 100},
    {"EB", 1'000'000'000'000'000'000, 100},
}};

/// The size in shown steps of `unit`, rounded half up.
std::uint64_t stepsOf(std::uint64_t bytes, const Unit& unit) {
    const std::uint64_t step = unit.bytes / unit.fractions;
    return bytes / step + (bytes % step >= (step + 1) / 2 ? 1 : 0);
}

/// The unit in which the size, rounded as shown, is below a thousand: 999,999 bytes are "1 MB".
const Unit& unitFor(std::uint64_t bytes) {
    const Unit* chosen = units.begin();
    while (chosen != units.end() - 1 && stepsOf(bytes, *chosen) >= 1000 * chosen->fractions)
        ++chosen;
    return *chosen;
}

std::string decimalText(std::uint64_t steps, std::uint64_t fractions) {
    std::string text = std::to_string(steps / fractions);
    std::uint64_t rest = steps % fractions;
    if (rest == 0)
        return text;
    text += '.';
    for (std::uint64_t place = fractions / 10; rest != 0; place /= 10) {
        text += static_cast<char>('0' + rest / place);
        rest %= place;
    }
    return text;
}

enum class Shown { asIs, asBlank, notAtAll };

bool isBetween(std::string_view character, std::string_view first, std::string_view last) {
    return character.size() == first.size() && character >= first && character <= last;
}

Shown shownAs(std::string_view character) {
    if (isControl(character.front()))
        return Shown::asBlank;
    if (isBetween(character, "\u0080", "\u009f") || isBetween(character, "\u2028", "\u2029"))
        return Shown::asBlank;
    // NOLINTNEXTLINE(misc-misleading-bidirectional): these are the ones
    if (isBetween(character, "\u202a", "\u202e") || isBetween(character, "\u2066", "\u2069"))
        return Shown::notAtAll;
    return Shown::asIs;
}

std::size_t characterLength(std::string_view text) {
    std::size_t length = 1;
    while (length < text.size() && isUtf8Continuation(text[length]))
        ++length;
    return length;
}

}  // namespace

std::string byteCountText(std::int64_t bytes) {
    if (bytes == 0)
        return "Zero KB";
    const std::string sign = bytes < 0 ? "-" : "";
    const std::uint64_t magnitude =
        bytes < 0 ? std::uint64_t{0} - static_cast<std::uint64_t>(bytes) : static_cast<std::uint64_t>(bytes);
    if (magnitude < 1000)
        return sign + std::to_string(magnitude) + (magnitude == 1 ? " byte" : " bytes");
    const Unit& unit = unitFor(magnitude);
    return sign + decimalText(stepsOf(magnitude, unit), unit.fractions) + ' ' + std::string(unit.name);
}

std::string shortcutDisplayText(std::int64_t modifiers, std::string_view keyCharacter, const PlatformTexts& texts) {
    invariant(modifiers >= 0, "modifier flags of a shortcut are not negative");
    std::string text;
    if (keyCharacter.empty())
        return text;
    for (const PlatformTexts::Modifier& modifier : texts.modifiers) {
        if ((modifiers & modifier.flag) != 0)
            text += modifier.text;
    }
    return text.append(keyCharacter);
}

std::string displayName(std::string_view filename) {
    std::string name;
    while (!filename.empty()) {
        const std::string_view character = filename.substr(0, characterLength(filename));
        filename.remove_prefix(character.size());
        switch (shownAs(character)) {
        case Shown::asIs:
            name += character;
            break;
        case Shown::asBlank:
            name += ' ';
            break;
        case Shown::notAtAll:
            break;
        }
    }
    return name;
}

}  // namespace stowpocket
