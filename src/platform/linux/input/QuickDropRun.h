// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "platform/linux/input/ClipboardSnapshot.h"
#include "platform/linux/input/FileManagers.h"

#include <cstdint>
#include <vector>

namespace stowpocket {

/// What a quick drop asks of the desktop. Each call ends within its own time limit; an empty answer is a failure.
class QuickDropDesktop {
public:
    virtual ~QuickDropDesktop() = default;
    /// 0 when no window is active.
    [[nodiscard]] virtual std::uint32_t activeWindow() = 0;
    [[nodiscard]] virtual std::string classOf(std::uint32_t window) = 0;

    [[nodiscard]] virtual ClipboardSnapshot takeSnapshot() = 0;
    /// Runs the Copy action of the file manager that has this window. False when it could not be reached.
    [[nodiscard]] virtual bool copyOverBus(std::uint32_t window) = 0;
    /// Finds the combination on the keyboard, for this window. False when the present layout has no such key.
    [[nodiscard]] virtual bool prepareKeys(CopyKey key, std::uint32_t window) = 0;
    /// Releases the keys that are held and presses the combination that was prepared.
    virtual void pressKeys() = 0;
    /// Waits for the clipboard to change hands, longer while the window's program is busy. False when nobody took it.
    [[nodiscard]] virtual bool awaitNewOwner() = 0;
    /// The files on the clipboard; none when it holds something else, such as text.
    [[nodiscard]] virtual std::vector<FileURL> filesOnClipboard() = 0;
    /// Puts a complete snapshot back, unless somebody else has taken the clipboard since.
    virtual void restore(ClipboardSnapshot snapshot) = 0;
};

/// Has the file manager in front copy its selection, reads the files off the clipboard and puts back what was there.
/// Nothing is ever sent to another program, and a clipboard that could not be saved completely is not put back.
[[nodiscard]] std::vector<FileURL> runQuickDrop(QuickDropDesktop& desktop);

}  // namespace stowpocket
