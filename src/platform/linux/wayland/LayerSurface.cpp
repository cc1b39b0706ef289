// SPDX-License-Identifier: MIT
#include "platform/linux/wayland/LayerSurface.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace stowpocket {
namespace {

/// A file in memory with these bytes; -1 when there is no memory.
int memoryWith(const uchar* bytes, std::size_t size) {
    const int file = ::memfd_create("stowpocket", MFD_CLOEXEC);
    if (file < 0)
        return -1;
    std::size_t written = 0;
    while (written < size) {
        const ssize_t part = ::write(file, bytes + written, size - written);
        if (part <= 0) {
            ::close(file);
            return -1;
        }
        written += static_cast<std::size_t>(part);
    }
    return file;
}

constexpr double fractionsPerScale = 120;
/// The place is a distance from the edges of the screen, whatever panels take of it.
constexpr std::int32_t overPanels = -1;
/// Compositors know surfaces of this kind by it.
constexpr auto purpose = "stowpocket";

}  // namespace

bool SurfacePixels::attach(wl_surface* surface, const QImage& picture) {
    const QImage pixels = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (pixels.isNull() || pixels.sizeInBytes() > std::numeric_limits<std::int32_t>::max())
        return false;
    const int file = memoryWith(pixels.constBits(), static_cast<std::size_t>(pixels.sizeInBytes()));
    if (file < 0)
        return false;
    wl_shm_pool* const pool = wl_shm_create_pool(memory_, file, static_cast<std::int32_t>(pixels.sizeInBytes()));
    ::close(file);
    static constexpr wl_buffer_listener bufferListener{.release = [](void* self, wl_buffer* released) {
        static_cast<SurfacePixels*>(self)->buffers_.remove_if(
            [released](const auto& buffer) { return buffer.get() == released; });
    }};
    wl_buffer* const buffer =
        wl_shm_pool_create_buffer(pool, 0, pixels.width(), pixels.height(),
                                  static_cast<std::int32_t>(pixels.bytesPerLine()), WL_SHM_FORMAT_ARGB8888);
    wl_shm_pool_destroy(pool);
    buffers_.emplace_back(buffer);
    wl_buffer_add_listener(buffer, &bufferListener, this);
    wl_surface_attach(surface, buffer, 0, 0);
    wl_surface_damage(surface, 0, 0, std::numeric_limits<std::int32_t>::max(),
                      std::numeric_limits<std::int32_t>::max());
    return true;
}

LayerSurface::LayerSurface(WaylandDisplay& display, const LayerPlace& place, Paint paint,
                           std::function<void()> closed)
    : display_(display),
      place_(place),
      paint_(std::move(paint)),
      closed_(std::move(closed)),
      surface_(wl_compositor_create_surface(display.compositor.get())),
      viewport_(display.viewporter && display.fractionalScales
                    ? wp_viewporter_get_viewport(display.viewporter.get(), surface_.get())
                    : nullptr),
      fractional_(viewport_ ? wp_fractional_scale_manager_v1_get_fractional_scale(display.fractionalScales.get(),
                                                                                  surface_.get())
                            : nullptr),
      layer_([&] {
          const WaylandOutput* const output = display.outputNamed(place.output);
          return zwlr_layer_shell_v1_get_layer_surface(display.layerShell.get(), surface_.get(),
                                                       output != nullptr ? output->handle.get() : nullptr,
                                                       ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, purpose);
      }()),
      pixels_(display.memory.get()) {
    listen();
    request();
}

void LayerSurface::listen() {
    static constexpr wl_surface_listener surfaceListener{.enter =
                                                             [](void* data, wl_surface*, wl_output* output) {
                                                                 auto* const self = static_cast<LayerSurface*>(data);
                                                                 self->outputs_.push_back(output);
                                                                 self->outputsChanged();
                                                             },
                                                         .leave =
                                                             [](void* data, wl_surface*, wl_output* output) {
                                                                 auto* const self = static_cast<LayerSurface*>(data);
                                                                 std::erase(self->outputs_, output);
                                                                 self->outputsChanged();
                                                             }};
    static constexpr wp_fractional_scale_v1_listener fractionalListener{
        .preferred_scale = [](void* data, wp_fractional_scale_v1*, std::uint32_t scale) {
            auto* const self = static_cast<LayerSurface*>(data);
            self->preferredScale_ = scale;
            self->outputsChanged();
        }};
    static constexpr zwlr_layer_surface_v1_listener layerListener{
        // The size is a wish, and not obeyed: the pocket is as large as its content.
        .configure = [](void* data, zwlr_layer_surface_v1*, std::uint32_t serial, std::uint32_t,
                        std::uint32_t) { static_cast<LayerSurface*>(data)->configured(serial); },
        .closed = [](void* data, zwlr_layer_surface_v1*) { static_cast<LayerSurface*>(data)->closed_(); }};
    wl_surface_add_listener(surface_.get(), &surfaceListener, this);
    if (fractional_)
        wp_fractional_scale_v1_add_listener(fractional_.get(), &fractionalListener, this);
    zwlr_layer_surface_v1_add_listener(layer_.get(), &layerListener, this);
}

void LayerSurface::move(const LayerPlace& place) {
    if (place == place_)
        return;
    place_ = place;
    request();
}

void LayerSurface::request() {
    zwlr_layer_surface_v1_set_size(layer_.get(), static_cast<std::uint32_t>(place_.size.width()),
                                   static_cast<std::uint32_t>(place_.size.height()));
    zwlr_layer_surface_v1_set_anchor(layer_.get(),
                                     ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT);
    zwlr_layer_surface_v1_set_exclusive_zone(layer_.get(), overPanels);
    zwlr_layer_surface_v1_set_margin(layer_.get(), place_.fromTop, place_.fromRight, 0, 0);
    if (isPlaced_)
        repaint();
    else
        wl_surface_commit(surface_.get());
}

void LayerSurface::configured(std::uint32_t serial) {
    zwlr_layer_surface_v1_ack_configure(layer_.get(), serial);
    isPlaced_ = true;
    repaint();
}

double LayerSurface::scale() const {
    if (preferredScale_ > 0)
        return preferredScale_ / fractionsPerScale;
    if (outputs_.empty())
        return display_.largestScale();
    int largest = 1;
    for (const wl_output* const output : outputs_)
        largest = std::max(largest, display_.scaleOf(output));
    return largest;
}

void LayerSurface::outputsChanged() {
    if (isPlaced_ && scale() != paintedScale_)
        repaint();
}

void LayerSurface::repaint() {
    if (!isPlaced_)
        return;
    paintedScale_ = scale();
    if (!pixels_.attach(surface_.get(), paint_(paintedScale_)))
        return;
    const bool isFractional = preferredScale_ > 0;
    if (isFractional)
        wp_viewport_set_destination(viewport_.get(), place_.size.width(), place_.size.height());
    wl_surface_set_buffer_scale(surface_.get(), isFractional ? 1 : static_cast<std::int32_t>(paintedScale_));
    wl_surface_commit(surface_.get());
}

}  // namespace stowpocket
