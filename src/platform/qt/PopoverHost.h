// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace stowpocket {

/// What a popover asks of the window system beyond what Qt does. Main thread.
class PopoverHost {
public:
    virtual ~PopoverHost() = default;
    /// Whether translucent pixels show what is behind a window; otherwise they are black.
    [[nodiscard]] virtual bool blendsWindows() const = 0;
    /// Keeps a window that is not shown yet above the others and out of the lists of windows.
    virtual void prepare(QWidget& window) = 0;
    /// Just before a window is shown, every time.
    virtual void willShow(QWidget& window) = 0;
    /// Gives a shown window the keyboard, though the user may have worked elsewhere last.
    virtual void focus(QWidget& window) = 0;
};

}  // namespace stowpocket
