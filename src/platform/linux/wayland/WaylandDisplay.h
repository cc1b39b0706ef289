// SPDX-License-Identifier: MIT
#pragma once

#include <QSocketNotifier>

#include <fractional-scale.h>
#include <layer-shell.h>
#include <viewporter.h>
#include <wayland-client.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace stowpocket {

/// Ends what the compositor made for this program. Those that have a request for it tell the compositor.
struct WaylandEnd {
    void operator()(wl_registry* ended) const { wl_registry_destroy(ended); }
    void operator()(wl_callback* ended) const { wl_callback_destroy(ended); }
    void operator()(wl_compositor* ended) const { wl_compositor_destroy(ended); }
    void operator()(wl_shm* ended) const { wl_shm_destroy(ended); }
    void operator()(wl_buffer* ended) const { wl_buffer_destroy(ended); }
    void operator()(wl_surface* ended) const { wl_surface_destroy(ended); }
    void operator()(wl_output* ended) const { wl_output_destroy(ended); }
    void operator()(wl_seat* ended) const { wl_seat_destroy(ended); }
    void operator()(wl_pointer* ended) const {
        if (wl_pointer_get_version(ended) >= WL_POINTER_RELEASE_SINCE_VERSION)
            wl_pointer_release(ended);
        else
            wl_pointer_destroy(ended);
    }
    void operator()(wl_touch* ended) const {
        if (wl_touch_get_version(ended) >= WL_TOUCH_RELEASE_SINCE_VERSION)
            wl_touch_release(ended);
        else
            wl_touch_destroy(ended);
    }
    void operator()(wl_data_device_manager* ended) const { wl_data_device_manager_destroy(ended); }
    void operator()(wl_data_device* ended) const {
        if (wl_data_device_get_version(ended) >= WL_DATA_DEVICE_RELEASE_SINCE_VERSION)
            wl_data_device_release(ended);
        else
            wl_data_device_destroy(ended);
    }
    void operator()(wl_data_offer* ended) const { wl_data_offer_destroy(ended); }
    void operator()(wl_data_source* ended) const { wl_data_source_destroy(ended); }
    void operator()(zwlr_layer_shell_v1* ended) const {
        if (zwlr_layer_shell_v1_get_version(ended) >= ZWLR_LAYER_SHELL_V1_DESTROY_SINCE_VERSION)
            zwlr_layer_shell_v1_destroy(ended);
        else
            wl_proxy_destroy(reinterpret_cast<wl_proxy*>(ended));
    }
    void operator()(zwlr_layer_surface_v1* ended) const { zwlr_layer_surface_v1_destroy(ended); }
    void operator()(wp_viewporter* ended) const { wp_viewporter_destroy(ended); }
    void operator()(wp_viewport* ended) const { wp_viewport_destroy(ended); }
    void operator()(wp_fractional_scale_manager_v1* ended) const { wp_fractional_scale_manager_v1_destroy(ended); }
    void operator()(wp_fractional_scale_v1* ended) const { wp_fractional_scale_v1_destroy(ended); }
};

template <class Object>
using Owned = std::unique_ptr<Object, WaylandEnd>;

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
        /// There is another seat or none, or it has other devices now.
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
    /// Calls `done` once, when the compositor has done what any program had asked of it before this call.
    void whenAnswered(std::function<void()> done);

    [[nodiscard]] const WaylandOutput* outputNamed(const std::string& name) const;
    /// 1 for an output that is gone.
    [[nodiscard]] int scaleOf(const wl_output* output) const;
    [[nodiscard]] int largestScale() const;
    [[nodiscard]] bool hasOutputs() const { return !outputs_.empty(); }
    [[nodiscard]] bool hasPointer() const { return (devices_ & WL_SEAT_CAPABILITY_POINTER) != 0; }
    [[nodiscard]] bool hasTouch() const { return (devices_ & WL_SEAT_CAPABILITY_TOUCH) != 0; }

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
    void askForAnswer();

    Owned<wl_registry> registry_;
    Owned<wl_callback> allOffered_;
    Owned<wl_callback> answer_;
    int answersMissing_ = 0;
    std::function<void()> answered_;
    std::vector<std::unique_ptr<WaylandOutput>> outputs_;
    std::uint32_t seatId_ = 0;
    /// Those of the seat.
    std::uint32_t devices_ = 0;
    bool isReady_ = false;
    QSocketNotifier readable_;
    QSocketNotifier writable_;
};

}  // namespace stowpocket
