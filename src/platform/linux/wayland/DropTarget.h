// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/wayland/LayerPocket.h"
#include "platform/linux/wayland/WaylandDisplay.h"

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <vector>

namespace stowpocket {

/// What another program offers, as a drag or as its clipboard.
class WaylandOffer : public OfferedData {
public:
    /// The connection lives as long as the offer.
    WaylandOffer(std::shared_ptr<wl_display> display, wl_data_offer* offer);
    WaylandOffer(const WaylandOffer&) = delete;
    WaylandOffer& operator=(const WaylandOffer&) = delete;
    ~WaylandOffer() override;

    [[nodiscard]] const std::vector<std::string>& formats() const override { return formats_; }
    [[nodiscard]] int open(const std::string& format) override;
    void finish() override;

    [[nodiscard]] wl_data_offer* handle() const { return offer_.get(); }
    /// Says whether it may be dropped, which is only ever to be copied.
    void accept(std::uint32_t serial, bool isWanted);
    /// Whether the source lets it be copied.
    [[nodiscard]] bool isCopied() const;

private:
    const std::shared_ptr<wl_display> display_;
    const Owned<wl_data_offer> offer_;
    std::vector<std::string> formats_;
    std::uint32_t action_ = WL_DATA_DEVICE_MANAGER_DND_ACTION_NONE;
};

/// The drags of other programs over the surfaces of this one.
class DropTarget {
public:
    struct Events {
        std::function<bool(const std::vector<std::string>& formats)> entered;
        std::function<void()> left;
        std::function<void(std::shared_ptr<OfferedData> data)> dropped;
    };

    /// `display` outlives it, and has a seat.
    DropTarget(WaylandDisplay& display, Events events);
    DropTarget(const DropTarget&) = delete;
    DropTarget& operator=(const DropTarget&) = delete;

    [[nodiscard]] wl_data_device* device() const { return device_.get(); }
    /// What is over the pocket has left it, whether or not the compositor says so.
    void left();

private:
    void introduced(wl_data_offer* offer);
    [[nodiscard]] std::shared_ptr<WaylandOffer> take(const wl_data_offer* offer);
    void entered(std::uint32_t serial, wl_data_offer* offer);
    void dropped();

    WaylandDisplay& display_;
    const Events events_;
    const Owned<wl_data_device> device_;
    /// Offers of which it is not known yet what they are.
    std::list<std::shared_ptr<WaylandOffer>> introduced_;
    /// The drag that is over the pocket.
    std::shared_ptr<WaylandOffer> over_;
    bool isWanted_ = false;
};

}  // namespace stowpocket
