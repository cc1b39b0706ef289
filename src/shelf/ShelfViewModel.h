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

/// The shelf as the views and all kinds of drops use it: turns dropped data into file URLs, adds them, and holds the
/// message about files that did not fit. Main thread only.
class ShelfViewModel : public std::enable_shared_from_this<ShelfViewModel> {
public:
    /// `services` are those of the manager.
    [[nodiscard]] static std::shared_ptr<ShelfViewModel> make(std::shared_ptr<ShelfManager> shelfManager,
                                                              FileManager& fileManager, Dispatch& dispatch,
                                                              Clipboard& clipboard);

    /// Adds dropped files, and sets the message if some did not fit.
    void addFileURLs(std::span<const FileURL> urls);
    void removeItem(const UUID& id);
    /// As one change.
    void removeItems(std::span<const UUID> ids);
    /// Adds what was dropped once all of it has been loaded. Contents without a file are written to the spool folder
    /// first. Returns false and does nothing if the shelf is already full.
    [[nodiscard]] bool handleDrop(const std::vector<std::shared_ptr<ItemProvider>>& providers);

    /// The files of these items, in the order of the shelf and without missing ones.
    [[nodiscard]] std::vector<FileURL> availableFiles(std::span<const UUID> ids) const;
    /// Looks at the files of these items now, and leaves out missing ones. The shelf checks all again if one has gone
    /// since its last check.
    [[nodiscard]] std::vector<ShelfItem> presentItems(std::vector<ShelfItem> items) const;
    /// Puts the files of these items on the clipboard, in the order of the shelf and without missing ones. Leaves the
    /// clipboard alone if no file is left.
    void copyFiles(std::span<const UUID> ids);
    /// The same with their paths as text, one a line.
    void copyPaths(std::span<const UUID> ids);
    /// Adds what is on the clipboard as a drop of it would.
    void paste();

    [[nodiscard]] ShelfManager& shelfManager() const { return *shelfManager_; }
    [[nodiscard]] FileManager& fileManager() const { return fileManager_; }
    [[nodiscard]] const std::optional<std::string>& capacityMessage() const { return capacityMessage_; }
    void setCapacityMessage(std::optional<std::string> message);

    Signal<> capacityMessageChanged;
    /// Emitted when the open shelf is to ask whether all items are to go.
    Signal<> clearRequested;

private:
    ShelfViewModel(std::shared_ptr<ShelfManager> shelfManager, FileManager& fileManager, Dispatch& dispatch,
                   Clipboard& clipboard)
        : shelfManager_(std::move(shelfManager)),
          fileManager_(fileManager),
          dispatch_(dispatch),
          clipboard_(clipboard) {}

    [[nodiscard]] bool isFull() const;

    const std::shared_ptr<ShelfManager> shelfManager_;
    FileManager& fileManager_;
    Dispatch& dispatch_;
    Clipboard& clipboard_;
    std::optional<std::string> capacityMessage_;
};

}  // namespace stowpocket
