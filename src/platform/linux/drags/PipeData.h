// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/drags/DropReading.h"

#include <functional>
#include <span>
#include <string>

namespace stowpocket {

/// The data of a drag whose source writes it into a pipe, as Wayland programs do. Any thread.
class PipeData : public DragData {
public:
    /// Returns the end to read from, or -1 when there is none.
    using Open = std::function<int(const std::string& format)>;

    PipeData(Open open, const DropPatience& patience) : open_(std::move(open)), patience_(patience) {}

    [[nodiscard]] List list(std::string_view format) override;
    [[nodiscard]] std::optional<SelectionFailure> write(std::string_view format, const QString& path) override;

private:
    using Time = std::chrono::steady_clock::time_point;

    /// Hands the bytes on as they arrive. Fails as "too big" when `sink` returns false.
    [[nodiscard]] std::optional<SelectionFailure> read(std::string_view format, Time deadline,
                                                       const SelectionSink& sink) const;

    const Open open_;
    const DropPatience patience_;
    const Time start_ = std::chrono::steady_clock::now();
};

}  // namespace stowpocket
