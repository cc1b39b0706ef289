// SPDX-License-Identifier: MIT
#pragma once

#include "services/Dispatch.h"
#include "services/Dragging.h"
#include "shelf/ShelfViewModel.h"

#include <memory>
#include <string_view>
#include <vector>

namespace stowpocket {

/// Shown by a quick drop that can only take what has been copied, when that is no file.
inline constexpr std::string_view copyFirstMessage = "Copy files first, then press the shortcut";

/// The quick drop where nobody tells what is selected in the file manager: adds the files that have been copied. It
/// looks at the clipboard several times, because desktops let a program see it some time after they gave it the
/// keyboard. Main thread.
class CopiedFilesDrop {
public:
    /// The services outlive it.
    CopiedFilesDrop(std::shared_ptr<ShelfViewModel> shelf, Clipboard& clipboard, Dispatch& dispatch);

    /// Takes back the message of an earlier drop and looks for files, from the beginning. The shelf is open.
    void begin();
    /// Stops looking and takes back the message. The shelf is closed.
    void end();

private:
    struct Looks {
        int left;
    };

    void lookSoon();
    void look();
    void add(std::vector<std::shared_ptr<ItemProvider>> items);
    void takeBackMessage();

    const std::shared_ptr<ShelfViewModel> shelf_;
    Clipboard& clipboard_;
    Dispatch& dispatch_;
    std::unique_ptr<ScheduledWork> nextLook_;
    /// None after the end. Answers of the clipboard do nothing without it.
    std::shared_ptr<Looks> looks_;
};

}  // namespace stowpocket
