// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <functional>

namespace stowpocket {

/// What a popover asks of the window system beyond what Qt does. Main thread.
class PopoverHost {
public:
    virtual ~PopoverHost() = default;
    /// Whether translucent pixels show what is behind a window; otherwise they are black.
    [[nodiscard]] virtual bool blendsWindows() const = 0;
    /// Just before a window is shown, every time: asks for a place above the others and in no list of windows.
    virtual void willShow(QWidget& window) = 0;
    /// Runs `work` once no drag out of this program is on any more; at once where none is. Without the window that it
    /// came from a drag would never end.
    virtual void afterDrag(std::function<void()> work) = 0;
    /// Gives a shown window the keyboard, though the user may have worked elsewhere last.
    virtual void focus(QWidget& window) = 0;
};

}  // namespace stowpocket
