// SPDX-License-Identifier: MIT
#include "platform/linux/wayland/WaylandDisplay.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>

namespace stowpocket {
namespace {

template <class Object>
Owned<Object> bound(wl_registry* registry, std::uint32_t id, const wl_interface& interface, std::uint32_t version) {
    return Owned<Object>(static_cast<Object*>(wl_registry_bind(registry, id, &interface, version)));
}

/// The newest versions of the protocols that are spoken here.
constexpr std::uint32_t compositorVersion = 4;
constexpr std::uint32_t seatVersion = 5;
constexpr std::uint32_t outputVersion = 4;
constexpr std::uint32_t dataDeviceVersion = 3;
constexpr std::uint32_t layerShellVersion = 3;
/// Without this one a buffer has one pixel a point.
constexpr std::uint32_t leastCompositorVersion = 3;

}  // namespace

std::unique_ptr<WaylandDisplay> WaylandDisplay::connect(Events events) {
    std::shared_ptr<wl_display> display(wl_display_connect(nullptr), [](wl_display* ended) {
        ended != nullptr ? wl_display_disconnect(ended) : void();
    });
    if (!display)
        return nullptr;
    return std::unique_ptr<WaylandDisplay>(new WaylandDisplay(std::move(display), std::move(events)));
}

WaylandDisplay::WaylandDisplay(std::shared_ptr<wl_display> display, Events events)
    : display_(std::move(display)),
      events_(std::move(events)),
      registry_(wl_display_get_registry(display_.get())),
      allOffered_(wl_display_sync(display_.get())),
      readable_(wl_display_get_fd(display_.get()), QSocketNotifier::Read),
      writable_(wl_display_get_fd(display_.get()), QSocketNotifier::Write) {
    static constexpr wl_registry_listener registryListener{
        .global = [](void* self, wl_registry*, std::uint32_t id, const char* interface,
                     std::uint32_t version) { static_cast<WaylandDisplay*>(self)->offered(id, interface, version); },
        .global_remove = [](void* self, wl_registry*,
                            std::uint32_t id) { static_cast<WaylandDisplay*>(self)->withdrawn(id); }};
    static constexpr wl_callback_listener allOfferedListener{.done = [](void* data, wl_callback*, std::uint32_t) {
        auto* const self = static_cast<WaylandDisplay*>(data);
        self->allOffered_.reset();
        self->isReady_ = true;
        self->events_.ready();
    }};
    wl_registry_add_listener(registry_.get(), &registryListener, this);
    wl_callback_add_listener(allOffered_.get(), &allOfferedListener, this);
    writable_.setEnabled(false);
    QObject::connect(&readable_, &QSocketNotifier::activated, [this] { read(); });
    QObject::connect(&writable_, &QSocketNotifier::activated, [this] { flush(); });
    wl_display_flush(display_.get());
}

WaylandDisplay::~WaylandDisplay() = default;

void WaylandDisplay::offered(std::uint32_t id, std::string_view interface, std::uint32_t version) {
    wl_registry* const registry = registry_.get();
    if (interface == wl_compositor_interface.name && version >= leastCompositorVersion) {
        compositor =
            bound<wl_compositor>(registry, id, wl_compositor_interface, std::min(version, compositorVersion));
    } else if (interface == wl_shm_interface.name) {
        memory = bound<wl_shm>(registry, id, wl_shm_interface, 1);
    } else if (interface == wl_data_device_manager_interface.name) {
        dataDevices = bound<wl_data_device_manager>(registry, id, wl_data_device_manager_interface,
                                                    std::min(version, dataDeviceVersion));
    } else if (interface == zwlr_layer_shell_v1_interface.name) {
        layerShell = bound<zwlr_layer_shell_v1>(registry, id, zwlr_layer_shell_v1_interface,
                                                std::min(version, layerShellVersion));
    } else if (interface == wp_viewporter_interface.name) {
        viewporter = bound<wp_viewporter>(registry, id, wp_viewporter_interface, 1);
    } else if (interface == wp_fractional_scale_manager_v1_interface.name) {
        fractionalScales =
            bound<wp_fractional_scale_manager_v1>(registry, id, wp_fractional_scale_manager_v1_interface, 1);
    } else if (interface == wl_seat_interface.name && !seat) {
        static constexpr wl_seat_listener seatListener{.capabilities =
                                                           [](void* data, wl_seat*, std::uint32_t has) {
                                                               auto* const self = static_cast<WaylandDisplay*>(data);
                                                               self->devices_ = has;
                                                               self->events_.seatChanged();
                                                           },
                                                       .name = [](void*, wl_seat*, const char*) {}};
        seatId_ = id;
        seat = bound<wl_seat>(registry, id, wl_seat_interface, std::min(version, seatVersion));
        wl_seat_add_listener(seat.get(), &seatListener, this);
    } else if (interface == wl_output_interface.name) {
        static constexpr wl_output_listener outputListener{
            .geometry = [](void*, wl_output*, std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                           const char*, const char*, std::int32_t) {},
            .mode = [](void*, wl_output*, std::uint32_t, std::int32_t, std::int32_t, std::int32_t) {},
            .done = [](void* data, wl_output*) { static_cast<WaylandDisplay*>(data)->outputChanged(); },
            .scale =
                [](void* data, wl_output* output, std::int32_t scale) {
                    for (const auto& each : static_cast<WaylandDisplay*>(data)->outputs_)
                        if (each->handle.get() == output)
                            each->scale = std::max(scale, 1);
                },
            .name =
                [](void* data, wl_output* output, const char* name) {
                    for (const auto& each : static_cast<WaylandDisplay*>(data)->outputs_)
                        if (each->handle.get() == output)
                            each->name = name;
                },
            .description = [](void*, wl_output*, const char*) {}};
        outputs_.push_back(std::make_unique<WaylandOutput>());
        outputs_.back()->id = id;
        outputs_.back()->handle =
            bound<wl_output>(registry, id, wl_output_interface, std::min(version, outputVersion));
        wl_output_add_listener(outputs_.back()->handle.get(), &outputListener, this);
        outputChanged();
    }
}

void WaylandDisplay::withdrawn(std::uint32_t id) {
    if (std::erase_if(outputs_, [&](const auto& output) { return output->id == id; }) > 0)
        return outputChanged();
    if (id != seatId_ || !seat)
        return;
    const Owned<wl_seat> gone = std::move(seat);
    devices_ = 0;
    events_.seatChanged();
}

void WaylandDisplay::outputChanged() {
    if (isReady_)
        events_.outputsChanged();
}

/// Reads what has come and never waits for more, as the functions for whole programs would.
void WaylandDisplay::read() {
    wl_display* const display = display_.get();
    while (wl_display_prepare_read(display) != 0)
        if (wl_display_dispatch_pending(display) < 0)
            return lose();
    if (wl_display_read_events(display) < 0 || wl_display_dispatch_pending(display) < 0)
        return lose();
    flush();
}

void WaylandDisplay::flush() {
    const bool isStuck = wl_display_flush(display_.get()) < 0;
    if (isStuck && errno != EAGAIN)
        return lose();
    writable_.setEnabled(isStuck);
}

/// A compositor reads from all programs that have sent something before it reads from one of them again.
void WaylandDisplay::whenAnswered(std::function<void()> done) {
    answered_ = std::move(done);
    answersMissing_ = 2;
    askForAnswer();
}

void WaylandDisplay::askForAnswer() {
    static constexpr wl_callback_listener listener{.done = [](void* data, wl_callback*, std::uint32_t) {
        auto* const self = static_cast<WaylandDisplay*>(data);
        self->answer_.reset();
        if (--self->answersMissing_ > 0)
            self->askForAnswer();
        else
            std::exchange(self->answered_, nullptr)();
    }};
    answer_.reset(wl_display_sync(display_.get()));
    wl_callback_add_listener(answer_.get(), &listener, this);
    flush();
}

void WaylandDisplay::lose() {
    if (!readable_.isEnabled())
        return;
    readable_.setEnabled(false);
    writable_.setEnabled(false);
    const int error = wl_display_get_error(display_.get());
    events_.lost(std::strerror(error != 0 ? error : errno));
}

const WaylandOutput* WaylandDisplay::outputNamed(const std::string& name) const {
    const auto found = std::ranges::find(outputs_, name, [](const auto& output) { return output->name; });
    return found == outputs_.end() ? nullptr : found->get();
}

int WaylandDisplay::scaleOf(const wl_output* output) const {
    const auto found = std::ranges::find(outputs_, output, [](const auto& each) { return each->handle.get(); });
    return found == outputs_.end() ? 1 : (*found)->scale;
}

int WaylandDisplay::largestScale() const {
    int largest = 1;
    for (const auto& output : outputs_)
        largest = std::max(largest, output->scale);
    return largest;
}

}  // namespace stowpocket
