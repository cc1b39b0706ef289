// SPDX-License-Identifier: MIT
#pragma once

#include "services/Dragging.h"

#include <memory>

namespace stowpocket {

class StatusItemDropHandler;

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
