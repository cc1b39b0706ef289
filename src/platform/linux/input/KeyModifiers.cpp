// SPDX-License-Identifier: MIT
#include "platform/linux/input/KeyModifiers.h"

#include "services/Input.h"

namespace stowpocket {
namespace {

/// Key symbols by their numbers in the X protocol (keysymdef.h).
constexpr std::uint32_t scrollLockSymbol = 0xFF14;
constexpr std::uint32_t numLockSymbol = 0xFF7F;
constexpr std::uint32_t leftAltSymbol = 0xFFE9;
constexpr std::uint32_t rightAltSymbol = 0xFFEA;
constexpr std::uint32_t leftSuperSymbol = 0xFFEB;
constexpr std::uint32_t rightSuperSymbol = 0xFFEC;

/// The first three are Shift, Lock and Control, whatever keys they have.
constexpr std::size_t firstFreeModifier = 3;

}  // namespace

ModifierLayout modifierLayoutOf(const std::array<std::vector<std::uint8_t>, 8>& keysOfModifier,
                                const std::function<std::vector<std::uint32_t>(std::uint8_t)>& keySymbols) {
    ModifierLayout found{0, 0, 0, 0};
    const auto note = [](std::uint16_t& field, std::uint16_t bit) { field = field == 0 ? bit : field; };
    for (std::size_t modifier = firstFreeModifier; modifier < keysOfModifier.size(); ++modifier) {
        const auto bit = static_cast<std::uint16_t>(1u << modifier);
        for (const std::uint8_t key : keysOfModifier.at(modifier)) {
            for (const std::uint32_t symbol : keySymbols(key)) {
                if (symbol == leftAltSymbol || symbol == rightAltSymbol)
                    note(found.alt, bit);
                else if (symbol == leftSuperSymbol || symbol == rightSuperSymbol)
                    note(found.super, bit);
                else if (symbol == numLockSymbol)
                    note(found.numLock, bit);
                else if (symbol == scrollLockSymbol)
                    note(found.scrollLock, bit);
            }
        }
    }
    note(found.alt, x11Modifier::mod1);
    note(found.super, x11Modifier::mod4);
    return found;
}

std::uint16_t x11ModifiersOf(std::uint32_t carbonModifiers, const ModifierLayout& layout) {
    const auto when = [carbonModifiers](std::uint32_t bit, std::uint16_t mask) {
        return (carbonModifiers & bit) != 0 ? mask : std::uint16_t{0};
    };
    return static_cast<std::uint16_t>(
        when(carbonModifier::shiftKey, x11Modifier::shift) | when(carbonModifier::controlKey, x11Modifier::control) |
        when(carbonModifier::optionKey, layout.alt) | when(carbonModifier::cmdKey, layout.super));
}

std::vector<std::uint16_t> lockStates(const ModifierLayout& layout) {
    std::vector<std::uint16_t> states{0};
    for (const std::uint16_t lock : {x11Modifier::lock, layout.numLock, layout.scrollLock}) {
        if (lock == 0)
            continue;
        for (std::size_t at = states.size(); at-- > 0;)
            states.push_back(static_cast<std::uint16_t>(states.at(at) | lock));
    }
    return states;
}

}  // namespace stowpocket
