// SPDX-License-Identifier: MIT
#include "platform/linux/wayland/DropTarget.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

namespace stowpocket {
namespace {

constexpr auto fileList = "text/uri-list";
/// No honest source has more.
constexpr std::size_t mostFormats = 500;
/// The first version with actions, and with an answer to a drop.
constexpr auto versionWithActions = WL_DATA_OFFER_SET_ACTIONS_SINCE_VERSION;
constexpr std::uint32_t copyAction = WL_DATA_DEVICE_MANAGER_DND_ACTION_COPY;
constexpr std::uint32_t noAction = WL_DATA_DEVICE_MANAGER_DND_ACTION_NONE;

}  // namespace

WaylandOffer::WaylandOffer(std::shared_ptr<wl_display> display, wl_data_offer* offer)
    : display_(std::move(display)), offer_(offer) {
    static constexpr wl_data_offer_listener listener{
        .offer =
            [](void* self, wl_data_offer*, const char* format) {
                auto& formats = static_cast<WaylandOffer*>(self)->formats_;
                if (formats.size() < mostFormats)
                    formats.emplace_back(format);
            },
        .source_actions = [](void*, wl_data_offer*, std::uint32_t) {},
        .action = [](void* self, wl_data_offer*,
                     std::uint32_t action) { static_cast<WaylandOffer*>(self)->action_ = action; }};
    wl_data_offer_add_listener(offer, &listener, this);
}

WaylandOffer::~WaylandOffer() = default;

void WaylandOffer::accept(std::uint32_t serial, bool isWanted) {
    const bool hasList = std::ranges::find(formats_, fileList) != formats_.end();
    const char* const format = hasList || formats_.empty() ? fileList : formats_.front().c_str();
    wl_data_offer_accept(offer_.get(), serial, isWanted ? format : nullptr);
    if (wl_data_offer_get_version(offer_.get()) < versionWithActions)
        return;
    const std::uint32_t actions = isWanted ? copyAction : noAction;
    wl_data_offer_set_actions(offer_.get(), actions, actions);
}

bool WaylandOffer::isCopied() const {
    return wl_data_offer_get_version(offer_.get()) < versionWithActions || action_ == copyAction;
}

int WaylandOffer::open(const std::string& format) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return -1;
    wl_data_offer_receive(offer_.get(), format.c_str(), ends[1]);
    wl_display_flush(display_.get());
    ::close(ends[1]);
    return ends[0];
}

/// Only where the drop was to be copied: the compositor ends the connection of who says so of any other.
void WaylandOffer::finish() {
    if (action_ == copyAction && wl_data_offer_get_version(offer_.get()) >= versionWithActions)
        wl_data_offer_finish(offer_.get());
    wl_display_flush(display_.get());
}

DropTarget::DropTarget(WaylandDisplay& display, Events events)
    : display_(display),
      events_(std::move(events)),
      device_(wl_data_device_manager_get_data_device(display.dataDevices.get(), display.seat.get())) {
    static constexpr wl_data_device_listener listener{
        .data_offer = [](void* self, wl_data_device*,
                         wl_data_offer* offer) { static_cast<DropTarget*>(self)->introduced(offer); },
        .enter = [](void* self, wl_data_device*, std::uint32_t serial, wl_surface*, wl_fixed_t, wl_fixed_t,
                    wl_data_offer* offer) { static_cast<DropTarget*>(self)->entered(serial, offer); },
        .leave = [](void* self, wl_data_device*) { static_cast<DropTarget*>(self)->left(); },
        .motion = [](void*, wl_data_device*, std::uint32_t, wl_fixed_t, wl_fixed_t) {},
        .drop = [](void* self, wl_data_device*) { static_cast<DropTarget*>(self)->dropped(); },
        .selection =
            [](void* self, wl_data_device*, wl_data_offer* offer) {
                // The clipboard is none of the pocket's business.
                static_cast<void>(static_cast<DropTarget*>(self)->take(offer));
            }};
    wl_data_device_add_listener(device_.get(), &listener, this);
}

void DropTarget::introduced(wl_data_offer* offer) {
    introduced_.push_back(std::make_shared<WaylandOffer>(display_.shared(), offer));
}

std::shared_ptr<WaylandOffer> DropTarget::take(const wl_data_offer* offer) {
    const auto found = std::ranges::find(introduced_, offer, [](const auto& each) { return each->handle(); });
    std::shared_ptr<WaylandOffer> taken = found == introduced_.end() ? nullptr : *found;
    introduced_.clear();
    return taken;
}

/// Nothing is offered where a program drags within itself.
void DropTarget::entered(std::uint32_t serial, wl_data_offer* offer) {
    over_ = take(offer);
    isWanted_ = over_ && events_.entered(over_->formats());
    if (over_)
        over_->accept(serial, isWanted_);
}

void DropTarget::left() {
    over_.reset();
    if (std::exchange(isWanted_, false))
        events_.left();
}

/// Afterwards some compositors say that it left, and others do not.
void DropTarget::dropped() {
    const std::shared_ptr<WaylandOffer> data = std::exchange(over_, nullptr);
    if (std::exchange(isWanted_, false) && data && data->isCopied())
        events_.dropped(data);
    else
        events_.left();
}

}  // namespace stowpocket
