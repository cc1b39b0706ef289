// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "platform/linux/drags/KwinDrop.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Events.h"

#include <QPixmap>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <vector>

namespace stowpocket {

/// Drags files out to other programs, which may only copy it. No answer of theirs counts as proof that they did,
/// so the files stay where they are. A target that would move them gets no drop. A drag that the server no longer
/// knows is cancelled.
class X11FileDrag : private X11EventFilter {
public:
    /// `connection` outlives it. Made after the application.
    explicit X11FileDrag(const X11Connection& connection);

    /// Called while the main button is held over `source`; returns when the button is released. `hotSpot` is the
    /// position of the pointer in `picture`.
    void start(QWidget& source, const std::vector<FileURL>& files, const QPixmap& picture, const QPoint& hotSpot);
    /// Runs `work` when no drag is under way and its effects on the desktop are over, which may be at once.
    void whenOver(std::function<void()> work);

private:
    bool handleEvent(const xcb_generic_event_t& event) override;
    void endIfLost(xcb_window_t source);
    [[nodiscard]] bool answer(const xcb_selection_request_event_t& request);
    [[nodiscard]] bool refuseMove(const xcb_client_message_event_t& status) const;

    const X11Connection& connection_;
    /// The data of the drag, and of the last one for some time.
    QByteArray uriList_;
    QTimer forgetting_;
    QTimer settling_;
    KwinDrop kwinDrop_;
    bool isDragging_ = false;
    /// How often in a row no button was found held.
    int looksWithoutButton_ = 0;
    std::vector<std::function<void()>> afterwards_;
};

}  // namespace stowpocket
