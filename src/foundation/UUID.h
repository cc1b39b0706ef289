// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

/// A universally unique identifier (RFC 4122).
class UUID {
public:
    /// A fresh random one (version 4). May be called on any thread.
    [[nodiscard]] static UUID random();
    /// Reads the canonical form, 8-4-4-4-12 hexadecimal digits of either case and nothing around them.
    [[nodiscard]] static std::optional<UUID> parse(std::string_view text);

    /// The canonical form in upper case.
    [[nodiscard]] std::string text() const;

    friend bool operator==(const UUID&, const UUID&) = default;
    friend std::strong_ordering operator<=>(const UUID&, const UUID&) = default;

private:
    friend struct std::hash<UUID>;
    using Octets = std::array<std::uint8_t, 16>;
    explicit UUID(const Octets& octets) : octets_(octets) {}

    Octets octets_;
};

}  // namespace stowpocket

template <>
struct std::hash<stowpocket::UUID> {
    std::size_t operator()(const stowpocket::UUID& uuid) const noexcept {
        std::size_t value = 0;
        std::memcpy(&value, uuid.octets_.data(), sizeof value);
        return value;
    }
};
