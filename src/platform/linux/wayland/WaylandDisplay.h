// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/wayland/WaylandHandles.h"

#include <QSocketNotifier>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace stowpocket {

/// A screen as the compositor describes it.
struct WaylandOutput {
    std::uint32_t id = 0;
    Owned<wl_output> handle;
    int scale = 1;
    std::string name;
};

/// A connection to the compositor that the environment names, and the global objects that it offers. Nothing here
/// waits for the compositor. Main thread.
class WaylandDisplay {
public:
    struct Events {
        /// All of the objects are known.
        std::function<void()> ready;
        /// The last call: the connection is broken.
        std::function<void(const std::string& why)> lost;
        /// Screens came or went, or changed their scale.
        std::function<void()> outputsChanged;
        /// There is another seat or none, or it has a pointer now or none any more.
        std::function<void()> seatChanged;
    };

    /// Null when nothing answers there.
    [[nodiscard]] static std::unique_ptr<WaylandDisplay> connect(Events events);
    WaylandDisplay(const WaylandDisplay&) = delete;
    WaylandDisplay& operator=(const WaylandDisplay&) = delete;
    ~WaylandDisplay();

    /// The connection itself, for those who may outlive this object: it ends with the last of them.
    [[nodiscard]] const std::shared_ptr<wl_display>& shared() const { return display_; }
    /// Sends what was requested. Called at the end of each turn that requests anything.
    void flush();

    [[nodiscard]] const WaylandOutput* outputNamed(const std::string& name) const;
    /// 1 for an output that is gone.
    [[nodiscard]] int scaleOf(const wl_output* output) const;
    [[nodiscard]] int largestScale() const;
    [[nodiscard]] bool hasOutputs() const { return !outputs_.empty(); }
    [[nodiscard]] bool hasPointer() const { return hasPointer_; }

private:
    /// Declared first, so that it is ended after all that belongs to it.
    const std::shared_ptr<wl_display> display_;
    const Events events_;

public:
    // Null where the compositor does not offer it.
    Owned<wl_compositor> compositor;
    Owned<wl_shm> memory;
    Owned<wl_seat> seat;
    Owned<wl_data_device_manager> dataDevices;
    Owned<zwlr_layer_shell_v1> layerShell;
    Owned<wp_viewporter> viewporter;
    Owned<wp_fractional_scale_manager_v1> fractionalScales;

private:
    WaylandDisplay(std::shared_ptr<wl_display> display, Events events);

    void offered(std::uint32_t id, std::string_view interface, std::uint32_t version);
    void withdrawn(std::uint32_t id);
    void read();
    void lose();
    void outputChanged();

    Owned<wl_registry> registry_;
    Owned<wl_callback> allOffered_;
    std::vector<std::unique_ptr<WaylandOutput>> outputs_;
    std::uint32_t seatId_ = 0;
    bool hasPointer_ = false;
    bool isReady_ = false;
    QSocketNotifier readable_;
    QSocketNotifier writable_;
};

}  // namespace stowpocket
