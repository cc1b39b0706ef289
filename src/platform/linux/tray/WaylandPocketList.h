// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "platform/linux/tray/StatusItemPainter.h"
#include "platform/linux/wayland/LayerPocket.h"
#include "presentation/PocketList.h"

#include <QImage>
#include <QPalette>

#include <functional>
#include <optional>
#include <vector>

namespace stowpocket {

/// Draws the rows of the list, whose corner is the origin of the painter.
using PocketListPainter = std::function<void(QPainter& painter, const PocketList& list, const QPalette& palette)>;

/// The list of files that unfolds beside the pocket on a surface of its own, where one of them or all can be chosen
/// and dragged out. While it is folded it keeps nothing.
class WaylandPocketList {
public:
    /// Its surface.
    struct Surface {
        std::function<void(const LayerPlace& place)> show;
        std::function<void()> hide;
        std::function<void()> repaint;
    };

    /// All references outlive it.
    WaylandPocketList(Dispatch& dispatch, const IconDragSource& source, PocketListPainter paint, Surface surface);

    /// Whether it may unfold.
    void setAllowed(bool isAllowed);
    void pocketMoved(const LayerPlace& place);
    /// The pointer or a finger is there on that part; nothing when it has left.
    void pointAt(LayerPart part, const std::optional<QPointF>& point,
                 PocketFolding::By by = PocketFolding::By::pointer);
    void scroll(double steps, double points);
    void fold() { folding_.fold(); }
    /// Something was dropped on the pocket, over which the pointer is once more now.
    void dropped() { folding_.dismiss(); }

    [[nodiscard]] QImage picture(double scale, const QPalette& palette) const;
    [[nodiscard]] std::vector<FileURL> filesAt(const QPointF& point) const;

private:
    void becomeUnfolded(bool isUnfolded);
    void update();

    const IconDragSource& source_;
    const PocketListPainter paint_;
    const Surface surface_;
    bool isAllowed_ = true;
    LayerPlace pocket_;
    PocketFolding folding_;
    PocketList list_;
    std::vector<Subscription> changes_;
};

}  // namespace stowpocket
