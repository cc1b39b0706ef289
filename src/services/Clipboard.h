// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "services/Dragging.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace stowpocket {

/// The desktop's clipboard. Nobody listens to it: it is read only when asked for. Main thread.
class Clipboard {
public:
    /// Gets one provider for each file, or one for a picture or a text without a file, as a drop of the same data
    /// would. Gets none if nothing of that is there, or if the owner does not deliver it in time.
    using Completion = std::function<void(const std::vector<std::shared_ptr<ItemProvider>>&)>;

    virtual ~Clipboard() = default;
    /// Offers the files for copying, and their paths where only text is taken. The offer stands until another program
    /// takes the clipboard. At the end of this program it goes to the clipboard manager, if there is one.
    virtual void copyFiles(const std::vector<FileURL>& files) = 0;
    /// The same for a text, whose bytes need not be UTF-8.
    virtual void copyText(const std::string& text) = 0;
    /// What another program offers is untrusted. `completion` runs at most once, on the main thread, during the call
    /// or later.
    virtual void read(Completion completion) = 0;
};

}  // namespace stowpocket
