// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/drags/DragWatching.h"

namespace stowpocket {

/// When the pocket stands on the screen: always where there is no tray, else during drags and until the drop has
/// arrived.
class PocketPresence {
public:
    void setResident(bool isResident) { isResident_ = isResident; }
    void dragBegan();
    void dragEnded(DragEnd end);
    /// A drag is over the pocket, or has left it.
    void setHovered(bool isHovered) { isHovered_ = isHovered; }
    /// On the pocket, so that the drag is over whatever else is known of it.
    void dropped() { isDragOn_ = isHovered_ = false; }

    [[nodiscard]] bool isShown() const { return isResident_ || isDragOn_ || isHovered_; }

private:
    bool isResident_ = false;
    bool isDragOn_ = false;
    bool isHovered_ = false;
};

}  // namespace stowpocket
