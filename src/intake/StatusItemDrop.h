// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "services/Dragging.h"
#include "services/StatusItem.h"

#include <functional>
#include <memory>
#include <vector>

namespace stowpocket {

class Dispatch;
class FileManager;

/// Handles files dragged onto the menu-bar icon. The owner also supplies the callbacks. The drop view on the icon may
/// outlive the handler. Main thread only.
class StatusItemDropHandler : public std::enable_shared_from_this<StatusItemDropHandler> {
public:
    using DropCallback = std::function<void(const std::vector<FileURL>&)>;

    StatusItemDropHandler(std::weak_ptr<StatusItemButton> button, FileManager& fileManager, Dispatch& dispatch,
                          DropCallback onDrop, std::function<void()> onDragEntered);

    /// Creates the drop view, which refers weakly to this handler, and puts it over the button.
    void install();

    void dragEntered() const { onDragEntered_(); }
    /// Delivers the file URLs on the pasteboard at once, in their order. If there are none, has the promised files
    /// written to the spool folder and delivers them together once all have arrived. Returns false if the pasteboard
    /// has neither.
    [[nodiscard]] bool performDrop(DraggingPasteboard& pasteboard);

private:
    void receivePromises(const std::vector<std::shared_ptr<FilePromiseReceiver>>& receivers);

    const std::weak_ptr<StatusItemButton> button_;
    FileManager& fileManager_;
    Dispatch& dispatch_;
    const DropCallback onDrop_;
    const std::function<void()> onDragEntered_;
};

/// The transparent view over the menu-bar icon: forwards drags to its handler for as long as that lives.
class StatusItemDropView : public DraggingDestination {
public:
    explicit StatusItemDropView(std::weak_ptr<StatusItemDropHandler> handler) : handler_(std::move(handler)) {}

    [[nodiscard]] const std::vector<std::string>& registeredDraggedTypes() const override;
    [[nodiscard]] DragOperation draggingEntered(DraggingPasteboard& pasteboard) override;
    [[nodiscard]] DragOperation draggingUpdated(DraggingPasteboard& pasteboard) override;
    [[nodiscard]] bool performDragOperation(DraggingPasteboard& pasteboard) override;

private:
    const std::weak_ptr<StatusItemDropHandler> handler_;
};

}  // namespace stowpocket
