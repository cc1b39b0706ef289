// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "platform/macos/MacPictures.h"
#include "services/Dragging.h"

#include <functional>
#include <memory>
#include <vector>

// Drags into and out of views that the toolkit draws, and the clipboard.
namespace stowpocket {

/// Returns whether the drag now over one of our views carries anything at all. Main thread.
[[nodiscard]] bool dragCarriesItems();

/// Returns what is being dropped on one of our views: one provider per file. A drop without files gives one provider
/// per promise, a drop without promises one per item. Main thread, while the drop is handled.
[[nodiscard]] std::vector<std::shared_ptr<ItemProvider>> droppedItemProviders();

/// A picture under the pointer, and the place where the pointer holds it: from its top left corner, in points.
struct DragImage {
    Pixels pixels;
    Size size;
    double hotSpotX = 0;
    double hotSpotY = 0;
};

/// Drags files out, to be copied or referenced, never moved. Main thread.
class FileDragSource {
public:
    virtual ~FileDragSource() = default;
    /// Called while a press or a move of the mouse in `nativeView` is handled. Returns at once. `ended` runs on the
    /// main thread once the user has released the files, wherever that is. The system shows how many they are.
    virtual void start(void* nativeView, const std::vector<FileURL>& files, const DragImage& image,
                       std::function<void()> ended) = 0;
};

[[nodiscard]] std::unique_ptr<FileDragSource> makeMacFileDragSource();

/// The general pasteboard.
[[nodiscard]] std::unique_ptr<Clipboard> makeMacClipboard();

}  // namespace stowpocket
