// SPDX-License-Identifier: MIT
#pragma once

#include "services/Dragging.h"
#include "shelf/ShelfManager.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace stowpocket {

/// What the views and every way of dropping files see of the shelf: turns what was dropped into file URLs, adds
/// them, and keeps the one message about files that did not fit. Main thread only.
class ShelfViewModel : public std::enable_shared_from_this<ShelfViewModel> {
public:
    /// `services` are those of the manager.
    [[nodiscard]] static std::shared_ptr<ShelfViewModel> make(std::shared_ptr<ShelfManager> shelfManager,
                                                              FileManager& fileManager, Dispatch& dispatch);

    /// The intake of every drop: adds the files and, when some did not fit, says so.
    void addFileURLs(std::span<const FileURL> urls);
    void removeItem(const UUID& id);
    /// Adds whatever was dropped, once all of it has been loaded; contents that came without a file are written to
    /// the spool folder first. False, and nothing happens, when the shelf is full already.
    [[nodiscard]] bool handleDrop(const std::vector<std::shared_ptr<ItemProvider>>& providers);

    [[nodiscard]] ShelfManager& shelfManager() const { return *shelfManager_; }
    [[nodiscard]] const std::optional<std::string>& capacityMessage() const { return capacityMessage_; }
    void setCapacityMessage(std::optional<std::string> message);

    Signal<> capacityMessageChanged;

private:
    ShelfViewModel(std::shared_ptr<ShelfManager> shelfManager, FileManager& fileManager, Dispatch& dispatch)
        : shelfManager_(std::move(shelfManager)), fileManager_(fileManager), dispatch_(dispatch) {}

    [[nodiscard]] bool isFull() const;

    const std::shared_ptr<ShelfManager> shelfManager_;
    FileManager& fileManager_;
    Dispatch& dispatch_;
    std::optional<std::string> capacityMessage_;
};

}  // namespace stowpocket
