// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/drags/DropReading.h"
#include "services/Dragging.h"

#include <memory>
#include <thread>

namespace stowpocket {

/// The selection CLIPBOARD. Qt offers what is copied, and hands it to the clipboard manager when the program ends.
/// What other programs offer is read beside Qt, which would wait for them on the main thread, in any amount.
class X11Clipboard : public Clipboard {
public:
    /// `dispatch` outlives it.
    explicit X11Clipboard(Dispatch& dispatch, const DropPatience& patience = {})
        : dispatch_(dispatch), patience_(patience) {}

    void copyFiles(const std::vector<FileURL>& files) override;
    void copyText(const std::string& text) override;
    /// While an owner is slow to deliver, no other reading begins: `completion` then gets nothing.
    void read(Completion completion) override;

private:
    Dispatch& dispatch_;
    const DropPatience patience_;
    const std::shared_ptr<bool> isReading_ = std::make_shared<bool>(false);
};

/// At the end of the program Qt asks the clipboard manager to keep what was copied, and waits five seconds for the
/// answer. Managers that have kept everything before may give none. This answers in their place, so that the end
/// waits for one second. Made before the application, and destroyed after it.
class ClipboardHandOver {
public:
    /// Call it when the event loop has ended.
    void begin();

private:
    std::jthread answering_;
};

}  // namespace stowpocket
