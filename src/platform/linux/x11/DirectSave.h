// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

/// The file name that a source of the direct-save protocol proposes, without the folders that it may put before it;
/// none when that is no name for a file in a folder of ours.
[[nodiscard]] std::optional<std::string> directSaveName(std::string_view proposed);

/// One save by the direct-save protocol (XDS), from the moment that the source was told where to write. It ends once,
/// whatever comes afterwards: each call tells what happened and answers what to do about it.
class DirectSave {
public:
    enum class Step {
        none,
        wait,     ///< as long again for a reply
        collect,  ///< the files stand
        fail,
    };

    /// The source's reply; none when it refused to convert.
    [[nodiscard]] Step replied(std::optional<std::string_view> reply);
    [[nodiscard]] Step sourceGone();
    /// No reply for a whole time limit, in which `size` bytes have arrived since the beginning. A source that still
    /// writes is waited for, since an archive may take its time.
    [[nodiscard]] Step timeLimitReached(std::uint64_t size);

private:
    [[nodiscard]] Step end(Step step);

    bool isOver_ = false;
    std::uint64_t size_ = 0;
};

}  // namespace stowpocket
