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
        wait,     ///< as long again
        collect,  ///< the files stand
        fail,
    };

    /// What has arrived until now.
    enum class Arrival { nothing, emptyFiles, content };

    /// The source's reply; none when it refused to convert. Web browsers make an empty file, tell of success at once
    /// and fetch the content afterwards, so such a file is waited for.
    [[nodiscard]] Step replied(std::optional<std::string_view> reply, Arrival arrival);
    /// A file has been closed after writing.
    [[nodiscard]] Step written(Arrival arrival);
    /// The window of the drag is gone. A source that has told of success needs it no more.
    [[nodiscard]] Step sourceGone();
    /// Nothing was heard for a whole time limit. `size` bytes have arrived since the beginning: a source that still
    /// writes is waited for, since an archive may take its time.
    [[nodiscard]] Step timeLimitReached(std::uint64_t size, Arrival arrival);

private:
    [[nodiscard]] Step end(Step step);

    bool isOver_ = false;
    bool hasSucceeded_ = false;
    std::uint64_t size_ = 0;
};

}  // namespace stowpocket
