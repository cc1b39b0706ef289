// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

namespace stowpocket {

/// Tells a hotkey's press from the repeats of a key that stays down. A repeat comes either as a press alone, or as a
/// release and a press of the same moment.
class HeldHotkey {
public:
    /// Whether the key went down just now, and did not merely stay there.
    [[nodiscard]] bool press(std::uint8_t key, std::uint32_t time) {
        const bool repeats = key_ == key && (!releasedAt_ || *releasedAt_ == time);
        key_ = key;
        releasedAt_.reset();
        return !repeats;
    }
    void release(std::uint8_t key, std::uint32_t time) {
        if (key_ == key)
            releasedAt_ = time;
    }

private:
    std::uint8_t key_ = 0;
    std::optional<std::uint32_t> releasedAt_;
};

}  // namespace stowpocket
