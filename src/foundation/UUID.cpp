// SPDX-License-Identifier: MIT
#include "foundation/UUID.h"

#include "foundation/Text.h"

#include <charconv>
#include <random>

namespace stowpocket {
namespace {

constexpr std::size_t textLength = 36;

bool isHyphenPosition(std::size_t at) {
    return at == 8 || at == 13 || at == 18 || at == 23;
}

}  // namespace

UUID UUID::random() {
    // The instruction that some standard libraries use by default takes 50 us for one UUID in a virtual machine.
    std::random_device device("/dev/urandom");
    Octets octets;
    for (std::size_t at = 0; at < octets.size(); at += 4) {
        const std::uint32_t word = device();
        std::memcpy(octets.data() + at, &word, sizeof word);
    }
    octets[6] = static_cast<std::uint8_t>((octets[6] & 0x0Fu) | 0x40u);  // version 4: random
    octets[8] = static_cast<std::uint8_t>((octets[8] & 0x3Fu) | 0x80u);  // the variant of RFC 4122
    return UUID(octets);
}

std::optional<UUID> UUID::parse(std::string_view text) {
    if (text.size() != textLength)
        return std::nullopt;
    Octets octets;
    std::size_t filled = 0;
    for (std::size_t at = 0; at < textLength;) {
        if (isHyphenPosition(at)) {
            if (text[at++] != '-')
                return std::nullopt;
            continue;
        }
        const char* const digits = text.data() + at;
        const auto [end, error] = std::from_chars(digits, digits + 2, octets[filled++], 16);
        if (error != std::errc() || end != digits + 2)
            return std::nullopt;
        at += 2;
    }
    return UUID(octets);
}

std::string UUID::text() const {
    std::string text;
    text.reserve(textLength);
    for (const std::uint8_t octet : octets_) {
        if (isHyphenPosition(text.size()))
            text += '-';
        appendHex(text, octet);
    }
    return text;
}

}  // namespace stowpocket
