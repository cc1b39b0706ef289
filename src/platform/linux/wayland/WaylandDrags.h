// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/wayland/LayerPocket.h"
#include "platform/linux/wayland/LayerSurface.h"
#include "platform/linux/wayland/WaylandDisplay.h"

#include <QSocketNotifier>
#include <QTimer>

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
    /// What is over that surface has left it, whether or not the compositor says so.
    void left(const wl_surface* surface) {
        if (surface == surface_)
            left();
    }

private:
    void introduced(wl_data_offer* offer);
    [[nodiscard]] std::shared_ptr<WaylandOffer> take(const wl_data_offer* offer);
    void entered(std::uint32_t serial, const wl_surface* surface, wl_data_offer* offer);
    void left();
    void dropped();

    WaylandDisplay& display_;
    const Events events_;
    const Owned<wl_data_device> device_;
    /// Offers of which it is not known yet what they are.
    std::list<std::shared_ptr<WaylandOffer>> introduced_;
    /// The drag that is over a surface, and the surface.
    std::shared_ptr<WaylandOffer> over_;
    const wl_surface* surface_ = nullptr;
    bool isWanted_ = false;
};

/// Text on its way to another program, which may take it as slowly as it likes, or never.
class SlowWriting {
public:
    /// Takes the descriptor.
    SlowWriting(int descriptor, std::string text);
    SlowWriting(const SlowWriting&) = delete;
    SlowWriting& operator=(const SlowWriting&) = delete;
    ~SlowWriting() { end(); }

    /// Whether all is written, or nobody wants the rest.
    [[nodiscard]] bool isOver() const { return descriptor_ < 0; }

private:
    void write();
    void end();

    int descriptor_;
    const std::string text_;
    std::size_t written_ = 0;
    QSocketNotifier writable_;
    QTimer limit_;
};

/// One drag of files out of the pocket, which may only be copied. Kept until the next one, since some targets fetch
/// the files long after the drop.
class FileSource {
public:
    /// What a drag begins with: the surface that was pressed, and the serial of the press.
    struct Press {
        wl_data_device* device;
        wl_surface* surface;
        std::uint32_t serial;
    };

    /// `over` runs when the drag has ended, in whatever way.
    FileSource(WaylandDisplay& display, LayerDrag drag, const Press& press, std::function<void()> over);
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;

    [[nodiscard]] bool isOn() const { return isOn_; }

private:
    void listen();
    void showPicture();
    void send(const std::string& format, int descriptor);
    void end();

    const LayerDrag drag_;
    const std::function<void()> over_;
    bool isOn_ = true;
    SurfacePixels pixels_;
    const Owned<wl_surface> picture_;
    Owned<wl_data_source> source_;
    std::list<std::unique_ptr<SlowWriting>> writings_;
};

}  // namespace stowpocket
