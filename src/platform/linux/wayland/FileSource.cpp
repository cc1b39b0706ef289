// SPDX-License-Identifier: MIT
#include "platform/linux/wayland/FileSource.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>
#include <utility>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// For a target that has asked for the files and takes none of them.
constexpr auto longestWriting = 15s;
/// More than any target asks for at a time.
constexpr std::size_t mostWritings = 8;
constexpr auto fileList = "text/uri-list";
constexpr std::array textFormats{"text/plain;charset=utf-8", "text/plain"};

}  // namespace

SlowWriting::SlowWriting(int descriptor, std::string text)
    : descriptor_(descriptor), text_(std::move(text)), writable_(descriptor, QSocketNotifier::Write) {
    ::fcntl(descriptor_, F_SETFL, ::fcntl(descriptor_, F_GETFL) | O_NONBLOCK);
    limit_.setSingleShot(true);
    QObject::connect(&writable_, &QSocketNotifier::activated, &limit_, [this] { write(); });
    QObject::connect(&limit_, &QTimer::timeout, &limit_, [this] { end(); });
    limit_.start(longestWriting);
}

void SlowWriting::write() {
    const ssize_t part = ::write(descriptor_, text_.data() + written_, text_.size() - written_);
    if (part < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    written_ += part > 0 ? static_cast<std::size_t>(part) : 0;
    if (part <= 0 || written_ == text_.size())
        end();
}

void SlowWriting::end() {
    limit_.stop();
    writable_.setEnabled(false);
    if (!isOver())
        ::close(std::exchange(descriptor_, -1));
}

FileSource::FileSource(WaylandDisplay& display, LayerDrag drag, const Press& press, std::function<void()> over)
    : drag_(std::move(drag)),
      over_(std::move(over)),
      pixels_(display.memory.get()),
      picture_(wl_compositor_create_surface(display.compositor.get())),
      source_(wl_data_device_manager_create_data_source(display.dataDevices.get())) {
    // A target that closes its end early would end this program.
    std::signal(SIGPIPE, SIG_IGN);
    listen();
    wl_data_source_offer(source_.get(), fileList);
    for (const char* const format : textFormats)
        wl_data_source_offer(source_.get(), format);
    if (wl_data_source_get_version(source_.get()) >= WL_DATA_SOURCE_SET_ACTIONS_SINCE_VERSION)
        wl_data_source_set_actions(source_.get(), WL_DATA_DEVICE_MANAGER_DND_ACTION_COPY);
    wl_data_device_start_drag(press.device, source_.get(), press.surface, picture_.get(), press.serial);
    showPicture();
}

void FileSource::listen() {
    static constexpr wl_data_source_listener listener{
        .target = [](void*, wl_data_source*, const char*) {},
        .send = [](void* self, wl_data_source*, const char* format,
                   std::int32_t descriptor) { static_cast<FileSource*>(self)->send(format, descriptor); },
        .cancelled = [](void* self, wl_data_source*) { static_cast<FileSource*>(self)->end(); },
        .dnd_drop_performed =
            [](void* data, wl_data_source*) {
                auto* const self = static_cast<FileSource*>(data);
                self->isOn_ = false;
                self->over_();
            },
        .dnd_finished = [](void* self, wl_data_source*) { static_cast<FileSource*>(self)->end(); },
        .action = [](void*, wl_data_source*, std::uint32_t) {}};
    wl_data_source_add_listener(source_.get(), &listener, this);
}

/// It becomes the surface of a drag only by the request for that, so it gets its picture afterwards.
void FileSource::showPicture() {
    if (!pixels_.attach(picture_.get(), drag_.picture))
        return;
    wl_surface_set_buffer_scale(picture_.get(), static_cast<std::int32_t>(drag_.picture.devicePixelRatio()));
    wl_surface_commit(picture_.get());
}

void FileSource::send(const std::string& format, int descriptor) {
    writings_.remove_if([](const auto& writing) { return writing->isOver(); });
    if (writings_.size() < mostWritings)
        writings_.push_back(
            std::make_unique<SlowWriting>(descriptor, format == fileList ? drag_.uriList : drag_.paths));
    else
        ::close(descriptor);
}

void FileSource::end() {
    source_.reset();
    if (std::exchange(isOn_, false))
        over_();
}

}  // namespace stowpocket
