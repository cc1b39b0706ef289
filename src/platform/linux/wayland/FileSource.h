// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/wayland/LayerPocket.h"
#include "platform/linux/wayland/SurfacePixels.h"
#include "platform/linux/wayland/WaylandDisplay.h"

#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <list>
#include <memory>
#include <string>

namespace stowpocket {

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
