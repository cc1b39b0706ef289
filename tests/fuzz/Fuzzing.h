// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Invariant.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>

namespace stowpocket {

/// Reads values off the input until it is used up; zeros come after it.
class FuzzInput {
public:
    explicit FuzzInput(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    [[nodiscard]] bool isEmpty() const { return bytes_.empty(); }
    std::uint8_t byte() { return number<std::uint8_t>(); }
    template <class Number>
    Number number() {
        Number value = 0;
        const auto taken = take(sizeof value);
        std::memcpy(&value, taken.data(), taken.size());
        return value;
    }
    std::string text() {
        const auto taken = take(byte());
        return {taken.begin(), taken.end()};
    }

private:
    std::span<const std::uint8_t> take(std::size_t count) {
        const auto first = bytes_.first(std::min(count, bytes_.size()));
        bytes_ = bytes_.subspan(first.size());
        return first;
    }

    std::span<const std::uint8_t> bytes_;
};

}  // namespace stowpocket
