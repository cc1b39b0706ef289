// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/wayland/WaylandHandles.h"

#include <QImage>

#include <list>

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

}  // namespace stowpocket
