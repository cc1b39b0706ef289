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

/// The file name that a source of the direct-save protocol proposes, without the folders that it may put before it;
/// none when that is no name for a file in a folder of ours.
[[nodiscard]] std::optional<std::string> directSaveName(std::string_view proposed);

/// One save by the direct-save protocol (XDS), from the moment that the source was told where to write. It ends once,
/// whatever comes afterwards: each call tells what happened and answers what to do about it.
class DirectSaveProgress {
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

/// Files promised by the direct-save protocol (XDS), as archive managers and mail programs drag them. Nothing waits:
/// a source that unpacks for minutes delivers minutes after the drop.
class DirectSaves : private X11EventFilter {
public:
    static constexpr std::chrono::milliseconds usualTimeLimit = std::chrono::seconds(60);

    /// `connection` and `dispatch` outlive it, and it outlives every receiver and provider. A source that has neither
    /// replied nor written anything for `timeLimit` is given up.
    DirectSaves(const X11Connection& connection, Dispatch& dispatch,
                std::chrono::milliseconds timeLimit = usualTimeLimit);
    /// What is still on its way counts as failed.
    ~DirectSaves() override;

    /// The type that stands for a promise among those that a drag offers.
    static constexpr std::string_view format = "XdndDirectSave0";

    /// The promise of the drag that is being dropped, as its files and as one thing.
    [[nodiscard]] std::shared_ptr<FilePromiseReceiver> receiver();
    [[nodiscard]] std::shared_ptr<ItemProvider> itemProvider();

private:
    class Save;

    bool handleEvent(const xcb_generic_event_t& event) override;
    [[nodiscard]] PromiseSaving saving();
    /// Has the source of the drag that is being dropped write its files.
    void save(const FileURL& destination, std::function<void(const std::optional<DropFolder>&)> completion);
    void handleReply(const xcb_selection_notify_event_t& reply);
    void handleGone(const xcb_destroy_notify_event_t& event, std::uint32_t sequence);

    const X11Connection& connection_;
    Dispatch& dispatch_;
    const std::chrono::milliseconds timeLimit_;
    /// Of the drop that is handled now or was handled last.
    xcb_timestamp_t dropTime_ = XCB_CURRENT_TIME;
    /// Each is out of the list before its completion is passed on.
    std::vector<std::shared_ptr<Save>> saves_;
};

}  // namespace stowpocket
