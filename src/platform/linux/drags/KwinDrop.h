// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/ScreenCover.h"

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>

namespace stowpocket {

/// Sees to the end of a drag over a Wayland window on KWin: that the release of the button arrives, and that it is
/// reported only when the target has asked for the data, or after a moment.
/// KWin tells a Wayland target and this program of the release at the same time. If this program then reports the
/// drop, and has delivered everything that was asked for so far, KWin ends the drag. A target that asks only then
/// receives nothing, which happens if the desktop below was dragged over and asked before.
class KwinDrop : public QObject {
public:
    explicit KwinDrop(const X11Connection& connection);

    /// Called before Qt runs the drag. Does nothing elsewhere than on KWin.
    void begin();
    /// The target has asked for the data.
    void asked();
    /// Called when the drag is over.
    void end();

private:
    bool eventFilter(QObject* receiver, QEvent* event) override;
    void releaseNow();

    const X11Connection& connection_;
    /// KWin tells the release of the button that ends a drag to the window that it then finds under the pointer. If
    /// that is a Wayland window, XWayland regards the button as held from then on. KWin looks at the X11 windows
    /// first that it does not manage, wherever they are stacked.
    X11ScreenCover catcher_;
    bool isOn_ = false;
    QTimer limit_;
    QPointer<QObject> receiver_;
    std::unique_ptr<QEvent> release_;
};

}  // namespace stowpocket
