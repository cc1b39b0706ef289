// SPDX-License-Identifier: MIT
#pragma once

#include "services/Dispatch.h"

#include <functional>
#include <memory>
#include <string>

class QDBusConnection;

namespace stowpocket {

/// A request to the desktop to put a thumbnail of a file into the shared cache.
struct DesktopThumbnailRequest {
    std::string uri;
    std::string mimeType;
    std::string sizeName;  ///< as the cache calls it
};

/// The desktop's own thumbnailer, which knows documents and films. Many desktops have none. Main thread; the bus is
/// not used before the first request.
class DesktopThumbnailer {
public:
    using Connect = std::function<QDBusConnection()>;
    /// Whether the thumbnail is in the cache now.
    using Completion = std::function<void(bool)>;

    /// `connect` returns the session bus.
    DesktopThumbnailer(Dispatch& dispatch, Connect connect);
    ~DesktopThumbnailer();

    /// `completion` runs exactly once, perhaps before this returns; not after this object is destroyed.
    void make(const DesktopThumbnailRequest& request, Completion completion);

    /// The session bus, if one is running; never starts one. The first call blocks for the handshake.
    [[nodiscard]] static QDBusConnection sessionBus();

private:
    class Session;

    Dispatch& dispatch_;
    const Connect connect_;
    std::unique_ptr<Session> session_;
};

}  // namespace stowpocket
