// SPDX-License-Identifier: MIT
#include "platform/linux/wayland/SurfacePixels.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <limits>

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

}  // namespace stowpocket
