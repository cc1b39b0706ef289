// SPDX-License-Identifier: MIT
// For the adapters in this folder only: includes the system's headers.
#pragma once

#include "services/Dragging.h"

#import <AppKit/AppKit.h>

#include <memory>

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

/// A folder that is removed once nobody needs the files in it.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    [[nodiscard]] NSURL* _Nonnull url() const { return url_; }

private:
    NSURL* const _Nonnull url_;
};

/// The item as a file: a picture, else a link as a web location that is named after its page, else a text, which is
/// named after its first words. Null for other data. Items of one drop have different times, as equal names would
/// replace each other where they are stored.
[[nodiscard]] std::shared_ptr<ItemProvider> contentsFileOf(NSPasteboardItem* _Nonnull item, NSDate* _Nonnull time);
/// Whether the item is an address. One that a link file must not hold is not kept in another form either.
[[nodiscard]] bool isAddress(NSPasteboardItem* _Nonnull item);

}  // namespace stowpocket
