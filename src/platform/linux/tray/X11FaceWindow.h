// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "platform/linux/tray/StatusItemPainter.h"
#include "platform/qt/QtDrops.h"

#include <QAbstractButton>

namespace stowpocket {

/// What every window of the icon shares: it takes clicks and drops, tells assistive technology what it is, and never
/// takes the keyboard. Window managers leave it alone.
class X11FaceWindow : public QAbstractButton {
public:
    /// All of it outlives the window.
    X11FaceWindow(const StatusItemFace& face, IncomingDrops& drops);

    /// Shows a changed face, wishing for more or less room.
    virtual void showFace();
    /// A drag came over the window, or has left it.
    Signal<bool> hovered;
    Signal<> dropped;

protected:
    [[nodiscard]] const StatusItemFace& face() const { return face_; }
    void showEvent(QShowEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void describe();

    const StatusItemFace& face_;
    IncomingDrops& drops_;
};

}  // namespace stowpocket
