// SPDX-License-Identifier: MIT
#pragma once

#include <fractional-scale.h>
#include <layer-shell.h>
#include <viewporter.h>

#include <wayland-client.h>

#include <memory>

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

}  // namespace stowpocket
