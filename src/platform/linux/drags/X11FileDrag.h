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

/// Holds back the end of a drag until the target has asked for what is dragged, or for a moment.
///
/// KWin tells a Wayland target and this program of the release at the same time. When this program says that it has
/// dropped, and all that was asked for on the way has been delivered, KWin gives the drag up. A target that asks only
/// then, after the desktop below was dragged over and asked, receives nothing.
class DropDelay : public QObject {
public:
    DropDelay();

    /// Called before Qt runs the drag.
    void begin();
    /// The dragged data was asked for.
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

/// Drags one file out to other programs, which may only copy it. Nothing that they answer is taken as proof that they
/// did: what is dragged stays where it is. A drag that the server no longer knows of is given up.
class X11FileDrag : private X11EventFilter {
public:
    /// `connection` outlives it. Made after the application.
    explicit X11FileDrag(const X11Connection& connection);

    /// Called while the main button is held over `source`; returns when it is released. `hotSpot` is the place of the
    /// pointer in `picture`.
    void start(QWidget& source, const FileURL& file, const QPixmap& picture, const QPoint& hotSpot);
    /// Runs `work` when no drag is on any more and the desktop has come to rest; at once where none is.
    void whenOver(std::function<void()> work);

private:
    bool handleEvent(const xcb_generic_event_t& event) override;
    void endIfLost(xcb_window_t source);
    [[nodiscard]] bool answer(const xcb_selection_request_event_t& request);

    const X11Connection& connection_;
    /// What is dragged, or was until a moment ago.
    QByteArray uriList_;
    QTimer forgetting_;
    QTimer settling_;
    DropDelay dropDelay_;
    bool isDragging_ = false;
    /// Looks in a row that found no button held.
    int looksWithoutButton_ = 0;
    std::vector<std::function<void()>> afterwards_;
};

}  // namespace stowpocket
