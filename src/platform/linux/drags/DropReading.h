// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/SelectionReader.h"
#include "platform/qt/QtDrops.h"

#include <chrono>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

/// How long to wait for the source of a drop. Each total limit counts from the drop.
struct DropPatience {
    /// The longest time without any sign of the source.
    std::chrono::milliseconds silence{2000};
    /// For the list of files, which is short.
    std::chrono::milliseconds list{2000};
    /// For a picture or text, which goes into a file and may be large, while it keeps coming.
    std::chrono::milliseconds contents{30'000};
};

/// The data of one drag, as its source delivers it. Each call ends within a time limit.
class DragData {
public:
    virtual ~DragData() = default;

    struct List {
        std::optional<SelectionFailure> failure;
        std::string text;
    };
    [[nodiscard]] virtual List list(std::string_view format) = 0;
    /// Returns nothing when all of the data is in the file.
    [[nodiscard]] virtual std::optional<SelectionFailure> write(std::string_view format, const QString& path) = 0;
    /// What the source calls the file that it promises; empty where it tells no name beforehand.
    [[nodiscard]] virtual std::string promisedName() { return {}; }
};

/// No list of files is longer, and no picture or text that is taken in a drop is larger. In bytes.
inline constexpr std::size_t longestList = 1u << 20;
inline constexpr std::size_t largestContents = 256u << 20;

/// What was read of a drop. Made on any thread.
struct DropReading {
    std::string uriList;
    std::optional<DroppedContents> contents;
};

/// Reads what a drop of these formats brings to the shelf. That is the list of files. If the list names no file on
/// this machine, it is a picture, or a link or text if no file is promised either. A picture goes before a promise:
/// web browsers offer both, and keep the promise by fetching the picture again, which may bring an error page. So do
/// the bytes of a promised picture of a page, with which Chromium alone keeps its promise. A source that was late
/// once is not asked again.
[[nodiscard]] DropReading readDrop(DragData& data, const std::vector<std::string>& formats);

/// Which data to read, and the time of the event that it is read for.
struct SelectionInTime {
    const char* selection;
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    /// The window that drags it, if it is dragged.
    xcb_window_t source = x11None;
};

/// The same from the owner of a selection. Any thread; waits for the owner, but no longer than `patience`.
[[nodiscard]] DropReading readSelection(XcbSession& session, const SelectionInTime& which,
                                        const std::vector<std::string>& formats, const DropPatience& patience);

/// The formats that the owner of a selection offers; none if it does not answer in time. Any thread.
[[nodiscard]] std::vector<std::string> offeredFormats(XcbSession& session, const SelectionInTime& which,
                                                      const DropPatience& patience);

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
