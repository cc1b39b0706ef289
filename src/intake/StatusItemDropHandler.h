// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "platform/StatusItem.h"

#include <functional>
#include <memory>
#include <vector>

namespace stowpocket {

/// What happens to files dragged onto the menu-bar icon. Owned by whoever supplies the callbacks; the drop view on
/// the icon outlives it harmlessly. Main thread only.
class StatusItemDropHandler {
public:
    using DropCallback = std::function<void(const std::vector<FileURL>&)>;

    StatusItemDropHandler(std::weak_ptr<StatusItemButton> button, DropCallback onDrop,
                          std::function<void()> onDragEntered);

    /// Makes the drop view, bound weakly to `handler`, and lays it over its button.
    static void install(const std::shared_ptr<StatusItemDropHandler>& handler);

    void dragEntered() const { onDragEntered_(); }
    /// Delivers the plain file URLs on the pasteboard, in its order. Whether there were any.
    [[nodiscard]] bool performDrop(DraggingPasteboard& pasteboard) const;

private:
    const std::weak_ptr<StatusItemButton> button_;
    const DropCallback onDrop_;
    const std::function<void()> onDragEntered_;
};

}  // namespace stowpocket
