// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/tray/X11FaceWindow.h"
#include "platform/linux/x11/X11Connection.h"

#include <QPixmap>

namespace stowpocket {

/// One showing of the pocket: above all windows, known to no window manager and no panel, so that drags reach it
/// whatever the desktop does.
class X11PocketWindow : public X11FaceWindow {
public:
    /// The icon on a small panel of its own. All of it outlives the window.
    X11PocketWindow(const X11Connection& connection, const StatusItemFace& face, const SymbolPainter& paintSymbol,
                    IncomingDrops& drops);
    /// Looks as what it covers did.
    void cover(const QRect& place);

    void showFace() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    const SymbolPainter& paintSymbol_;
    QPixmap covered_;
};

}  // namespace stowpocket
