// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPoint>
#include <QSize>

#include <memory>
#include <string>
#include <vector>

namespace stowpocket {

/// Where the pocket is on a screen, in points.
struct LayerPlace {
    QSize size;
    /// Between the pocket and the edges of the screen.
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
    /// The pocket painted with that many pixels a point, of the size that it was shown with.
    [[nodiscard]] virtual QImage layerPicture(double scale) = 0;
    virtual void layerClicked() = 0;
    virtual void layerMenuAsked() = 0;
    /// A drag of data in these formats is over the pocket. Returns whether it may be dropped there.
    [[nodiscard]] virtual bool layerEntered(const std::vector<std::string>& formats) = 0;
    virtual void layerLeft() = 0;
    virtual void layerDropped(std::shared_ptr<OfferedData> data) = 0;
    /// A drag begins with a press at that point of the pocket.
    [[nodiscard]] virtual LayerDrag layerDrag(const QPointF& pressed, double scale) = 0;
    virtual void layerDragEnded() = 0;
};

/// A pocket that is no window of the X server but a surface of a Wayland compositor, above all windows. Main thread.
class LayerPocket {
public:
    virtual ~LayerPocket() = default;

    /// Shows it, or moves it. Nothing happens before the owner is told that it is ready.
    virtual void show(const LayerPlace& place) = 0;
    virtual void hide() = 0;
    /// Its picture has changed.
    virtual void repaint() = 0;
};

/// The one function of the module, so that nothing of Wayland is loaded where there is none. Null when no compositor
/// answers at the place that the environment names. `owner` outlives the pocket.
using MakeLayerPocket = LayerPocket* (*)(LayerPocketOwner& owner);
inline constexpr auto makeLayerPocketName = "stowpocketMakeLayerPocket";

}  // namespace stowpocket
