// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "platform/macos/MacPictures.h"
#include "services/Dragging.h"

#include <functional>
#include <memory>
#include <vector>

// Drags into and out of views that the toolkit draws.
namespace stowpocket {

/// Whether the drag that is over one of our views now carries anything at all. Main thread.
[[nodiscard]] bool dragCarriesItems();

/// What the drag that is being dropped on one of our views carries: one provider per file; when there are none, one
/// per promise; when there are none either, one per thing. Main thread, while the drop is handled.
[[nodiscard]] std::vector<std::shared_ptr<ItemProvider>> droppedItemProviders();

/// A picture below the pointer, and the point of it that the pointer holds, from its top left corner, in points.
struct DragPicture {
    Pixels pixels;
    Size size;
    double hotSpotX = 0;
    double hotSpotY = 0;
};

/// Drags a file out, to be copied or referenced, never moved. Main thread.
class FileDragSource {
public:
    virtual ~FileDragSource() = default;
    /// Called while a press or a move of the mouse in `nativeView` is handled; returns at once. `ended` runs on the
    /// main thread once the file has been let go, wherever that is.
    virtual void start(void* nativeView, const FileURL& file, const DragPicture& picture,
                       std::function<void()> ended) = 0;
};

[[nodiscard]] std::unique_ptr<FileDragSource> makeMacFileDragSource();

}  // namespace stowpocket
