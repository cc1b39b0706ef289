// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "platform/linux/drags/DropDelay.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Events.h"

#include <QPixmap>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <vector>

namespace stowpocket {

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
