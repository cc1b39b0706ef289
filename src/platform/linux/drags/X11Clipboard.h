// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/drags/DropReading.h"
#include "services/Dragging.h"

#include <memory>

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

}  // namespace stowpocket
