// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPoint>
#include <QSize>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace stowpocket {

/// The surfaces: the pocket, and the list that unfolds beside it.
enum class LayerPart { pocket, list };

/// Where a surface is on a screen, in points.
struct LayerPlace {
    QSize size;
    /// Between the surface and the edges of the screen.
    int fromTop = 0;
    int fromRight = 0;
    /// The name of the screen. The compositor chooses one if it has none of this name.
    std::string output;
    friend bool operator==(const LayerPlace&, const LayerPlace&) = default;
};

/// What was dropped on the pocket. Destroyed on the main thread.
class OfferedData {
public:
    virtual ~OfferedData() = default;

    [[nodiscard]] virtual const std::vector<std::string>& formats() const = 0;
    /// Returns a descriptor that the source writes the data into, which the caller closes; -1 when there is none. Any
    /// thread. The source may write nothing, or anything, for any time.
    [[nodiscard]] virtual int open(const std::string& format) = 0;
    /// Tells the source that the drop was taken. Main thread.
    virtual void finish() = 0;
};

/// Files that are dragged out of the pocket, in the two forms that are offered. Without files nothing is dragged.
struct LayerDrag {
    std::string uriList;
    std::string paths;
    /// With its device pixel ratio.
    QImage picture;
};

/// What the pocket asks and tells. Main thread.
class LayerPocketOwner {
public:
    virtual ~LayerPocketOwner() = default;

    /// The compositor can show the pocket.
    virtual void layerReady() = 0;
    /// The pocket is gone for ever. Destroys nothing during the call.
    virtual void layerLost(const std::string& why) = 0;
    /// The part painted with that many pixels a point, of the size that it was shown with.
    [[nodiscard]] virtual QImage layerPicture(LayerPart part, double scale) = 0;
    /// The pointer is there on the part now; nothing when it has left.
    virtual void layerPointedAt(LayerPart part, const std::optional<QPointF>& point) = 0;
    /// A finger is there on the part now; nothing when it was lifted.
    virtual void layerTouched(LayerPart part, const std::optional<QPointF>& point) = 0;
    /// A button of the pointer was pressed.
    virtual void layerPressed(LayerPart part) = 0;
    /// A button was pressed and released, or a finger has tapped.
    virtual void layerClicked(LayerPart part) = 0;
    virtual void layerMenuAsked() = 0;
    /// The wheel has turned so many steps, or fingers have moved over so many points; down is positive.
    virtual void layerScrolled(LayerPart part, double steps, double points) = 0;
    /// A drag of data in these formats is over the pocket. Returns whether it may be dropped there.
    [[nodiscard]] virtual bool layerEntered(const std::vector<std::string>& formats) = 0;
    virtual void layerLeft() = 0;
    virtual void layerDropped(std::shared_ptr<OfferedData> data) = 0;
    /// A drag is to begin with a press at that point of the part.
    [[nodiscard]] virtual LayerDrag layerDrag(LayerPart part, const QPointF& pressed, double scale) = 0;
    virtual void layerDragBegan() = 0;
    virtual void layerDragEnded() = 0;
};

/// A pocket that is no window of the X server but a surface of a Wayland compositor, above all windows, and its list.
/// Main thread.
class LayerPocket {
public:
    virtual ~LayerPocket() = default;

    /// Shows the part, or moves it. Nothing happens before the owner is told that the pocket is ready.
    virtual void show(LayerPart part, const LayerPlace& place) = 0;
    virtual void hide(LayerPart part) = 0;
    /// Its picture has changed.
    virtual void repaint(LayerPart part) = 0;
    /// Calls `done` once, when the compositor has done what any program had asked of it before this call; never when
    /// it has gone. One caller at a time.
    virtual void whenAnswered(std::function<void()> done) = 0;
};

/// The one function of the module, so that nothing of Wayland is loaded where there is none. Null when no compositor
/// answers at the place that the environment names. `owner` outlives the pocket.
using MakeLayerPocket = LayerPocket* (*)(LayerPocketOwner& owner);
inline constexpr auto makeLayerPocketName = "stowpocketMakeLayerPocket";

}  // namespace stowpocket
