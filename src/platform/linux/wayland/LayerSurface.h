// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/wayland/LayerPocket.h"
#include "platform/linux/wayland/WaylandDisplay.h"

#include <QImage>

#include <functional>
#include <list>
#include <vector>

namespace stowpocket {

/// The pictures that a surface shows, in memory that is shared with the compositor. Each is kept until the compositor
/// no longer reads it.
class SurfacePixels {
public:
    /// `memory` outlives it.
    explicit SurfacePixels(wl_shm* memory) : memory_(memory) {}

    /// Attaches the picture to the surface, for the next commit. Returns false when there is no memory for it.
    [[nodiscard]] bool attach(wl_surface* surface, const QImage& picture);

private:
    wl_shm* const memory_;
    std::list<Owned<wl_buffer>> buffers_;
};

/// A surface in the top right corner of a screen, above everything there, which never takes the keyboard. It has as
/// many pixels a point as its screen, also where that is no whole number.
class LayerSurface {
public:
    using Paint = std::function<QImage(double scale)>;

    /// `display` outlives it. `closed` runs when the compositor has taken the surface away.
    LayerSurface(WaylandDisplay& display, const LayerPlace& place, Paint paint, std::function<void()> closed);
    LayerSurface(const LayerSurface&) = delete;
    LayerSurface& operator=(const LayerSurface&) = delete;

    void move(const LayerPlace& place);
    void repaint();
    [[nodiscard]] wl_surface* handle() const { return surface_.get(); }
    [[nodiscard]] const LayerPlace& place() const { return place_; }
    /// Whether the compositor has given it its place.
    [[nodiscard]] bool isPlaced() const { return isPlaced_; }
    /// In pixels a point.
    [[nodiscard]] double scale() const;
    /// Screens may have another scale now.
    void outputsChanged();

private:
    void configured(std::uint32_t serial);
    void listen();
    void request();

    WaylandDisplay& display_;
    LayerPlace place_;
    const Paint paint_;
    const std::function<void()> closed_;
    const Owned<wl_surface> surface_;
    const Owned<wp_viewport> viewport_;
    const Owned<wp_fractional_scale_v1> fractional_;
    const Owned<zwlr_layer_surface_v1> layer_;
    SurfacePixels pixels_;
    /// The screens that show a part of it.
    std::vector<wl_output*> outputs_;
    /// In 120ths; 0 until the compositor has told it.
    std::uint32_t preferredScale_ = 0;
    double paintedScale_ = 0;
    bool isPlaced_ = false;
};

}  // namespace stowpocket
