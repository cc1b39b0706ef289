// SPDX-License-Identifier: MIT
// For the adapters in this folder only: includes the system's headers.
#pragma once

#include "services/Dragging.h"

#import <AppKit/AppKit.h>

namespace stowpocket {

/// The pasteboard of a drag. It reads only the file URLs: a source produces other data on request.
class MacDraggingPasteboard : public DraggingPasteboard {
public:
    explicit MacDraggingPasteboard(NSPasteboard* _Nonnull pasteboard) : pasteboard_(pasteboard) {}

    [[nodiscard]] std::vector<PasteboardItem> items() override;
    [[nodiscard]] std::vector<std::shared_ptr<FilePromiseReceiver>> filePromiseReceivers() override;

private:
    NSPasteboard* const _Nonnull pasteboard_;
};

/// One provider per file. Without files one per item: as a picture, link or text in a file, or else in the form that
/// its source prefers.
[[nodiscard]] std::vector<std::shared_ptr<ItemProvider>> itemProvidersOn(NSPasteboard* _Nonnull pasteboard);

}  // namespace stowpocket
