// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Events.h"

#include <QEvent>
#include <QObject>
#include <QPixmap>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

namespace stowpocket {

/// Delays the end of a drag until the target has asked for the data, or for a moment.
/// KWin tells a Wayland target and this program of the release at the same time. If this program then reports the
/// drop, and has delivered everything that was asked for so far, KWin ends the drag. A target that asks only then
/// receives nothing, which happens if the desktop below was dragged over and asked before.
class DropDelay : public QObject {
public:
    DropDelay();

    /// Called before Qt runs the drag.
    void begin();
    /// The target has asked for the data.
    void asked();
    /// Called when the drag is over.
    void end();

private:
    bool eventFilter(QObject* receiver, QEvent* event) override;
    void releaseNow();

    bool isOn_ = false;
    QTimer limit_;
    QPointer<QObject> receiver_;
    std::unique_ptr<QEvent> release_;
};

/// Drags one file out to other programs, which may only copy it. No answer of theirs counts as proof that they did,
/// so the file stays where it is. A drag that the server no longer knows is cancelled.
class X11FileDrag : private X11EventFilter {
public:
    /// `connection` outlives it. Made after the application.
    explicit X11FileDrag(const X11Connection& connection);

    /// Called while the main button is held over `source`; returns when the button is released. `hotSpot` is the
    /// position of the pointer in `picture`.
    void start(QWidget& source, const FileURL& file, const QPixmap& picture, const QPoint& hotSpot);
    /// Runs `work` when no drag is under way and its effects on the desktop are over, which may be at once.
    void whenOver(std::function<void()> work);

private:
    bool handleEvent(const xcb_generic_event_t& event) override;
    void endIfLost(xcb_window_t source);
    [[nodiscard]] bool answer(const xcb_selection_request_event_t& request);

    const X11Connection& connection_;
    /// The data of the drag, and of the last one for some time.
    QByteArray uriList_;
    QTimer forgetting_;
    QTimer settling_;
    DropDelay dropDelay_;
    bool isDragging_ = false;
    /// How often in a row no button was found held.
    int looksWithoutButton_ = 0;
    std::vector<std::function<void()>> afterwards_;
};

}  // namespace stowpocket
