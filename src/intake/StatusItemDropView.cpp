// SPDX-License-Identifier: MIT
#include "intake/StatusItemDropView.h"

#include "intake/StatusItemDropHandler.h"

namespace stowpocket {

const std::vector<std::string>& StatusItemDropView::registeredDraggedTypes() const {
    static const std::vector<std::string> types{std::string(pasteboardType::fileURL),
                                                std::string(pasteboardType::promisedFileURL)};
    return types;
}

DragOperation StatusItemDropView::draggingEntered(DraggingPasteboard&) {
    const auto handler = handler_.lock();
    if (!handler)
        return DragOperation::none;
    handler->dragEntered();
    return DragOperation::copy;
}

DragOperation StatusItemDropView::draggingUpdated(DraggingPasteboard&) {
    return DragOperation::copy;
}

bool StatusItemDropView::performDragOperation(DraggingPasteboard& pasteboard) {
    const auto handler = handler_.lock();
    return handler && handler->performDrop(pasteboard);
}

}  // namespace stowpocket
