// SPDX-License-Identifier: MIT
#include "platform/linux/tray/PocketPresence.h"

namespace stowpocket {

void PocketPresence::dragBegan() {
    isDragOn_ = true;
    // A source that died over the pocket never told that it left.
    isHovered_ = false;
}

void PocketPresence::dragEnded(DragEnd end) {
    isDragOn_ = false;
    if (end == DragEnd::sourceGone)
        isHovered_ = false;
}

}  // namespace stowpocket
