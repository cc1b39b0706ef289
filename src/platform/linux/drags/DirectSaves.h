// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/drags/PromisedFiles.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Events.h"
#include "services/Dispatch.h"
#include "services/Dragging.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

/// The file name that a source of the direct-save protocol proposes, without any folders before it. Nothing when it
/// is no valid name for a file.
[[nodiscard]] std::optional<std::string> directSaveName(std::string_view proposed);

/// The progress of one save by the direct-save protocol (XDS), which begins when the source was told where to write.
/// It ends exactly once. Each call reports an event and returns what to do about it.
class DirectSaveProgress {
public:
    enum class Step {
        none,
        wait,     ///< for the same time again
        collect,  ///< the files are complete
        fail,
    };

    /// What has arrived so far.
    enum class Arrival { nothing, emptyFiles, content };

    /// The source has replied; with nothing when it refused to convert. Web browsers make an empty file, report
    /// success at once and fetch the content afterwards, so an empty file is waited for.
    [[nodiscard]] Step replied(std::optional<std::string_view> reply, Arrival arrival);
    /// A file has been closed after writing.
    [[nodiscard]] Step written(Arrival arrival);
    /// The window of the drag is gone. A source that has reported success no longer needs it.
    [[nodiscard]] Step sourceGone();
    /// Nothing was heard for a whole time limit, and `size` bytes have arrived since the beginning. A source that
    /// still writes gets more time, because an archive may be slow.
    [[nodiscard]] Step timeLimitReached(std::uint64_t size, Arrival arrival);

private:
    [[nodiscard]] Step end(Step step);

    bool isOver_ = false;
    bool hasSucceeded_ = false;
    std::uint64_t size_ = 0;
};

/// Files promised by the direct-save protocol (XDS), as archive managers and mail programs drag them. Nothing waits
/// for them: a source that unpacks for minutes delivers minutes after the drop.
class DirectSaves : private X11EventFilter {
public:
    static constexpr std::chrono::milliseconds usualTimeLimit = std::chrono::seconds(60);

    /// `connection` and `dispatch` outlive it, and it outlives every receiver and provider. It gives up a source that
    /// has neither replied nor written anything for `timeLimit`.
    DirectSaves(const X11Connection& connection, Dispatch& dispatch,
                std::chrono::milliseconds timeLimit = usualTimeLimit);
    /// Saves that are still under way fail.
    ~DirectSaves() override;

    /// The type by which a drag offers a promise.
    static constexpr std::string_view format = "XdndDirectSave0";

    /// The promise of the drag that is being dropped, as its files or as one item.
    [[nodiscard]] std::shared_ptr<FilePromiseReceiver> receiver();
    [[nodiscard]] std::shared_ptr<ItemProvider> itemProvider();

private:
    class Save;

    bool handleEvent(const xcb_generic_event_t& event) override;
    [[nodiscard]] PromiseSaving saving();
    /// Asks the source of the drag that is being dropped to write its files.
    void save(const FileURL& destination, std::function<void(const std::optional<DropFolder>&)> completion);
    void handleReply(const xcb_selection_notify_event_t& reply);
    void handleGone(const xcb_destroy_notify_event_t& event, std::uint32_t sequence);

    const X11Connection& connection_;
    Dispatch& dispatch_;
    const std::chrono::milliseconds timeLimit_;
    /// The time of the latest drop.
    xcb_timestamp_t dropTime_ = XCB_CURRENT_TIME;
    /// A save leaves the list before its completion runs.
    std::vector<std::shared_ptr<Save>> saves_;
};

}  // namespace stowpocket
