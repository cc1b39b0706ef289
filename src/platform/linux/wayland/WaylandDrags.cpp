// SPDX-License-Identifier: MIT
#include "platform/linux/wayland/WaylandDrags.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>
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

using namespace std::chrono_literals;

/// For a target that has asked for the files and takes none of them.
constexpr auto longestWriting = 15s;
/// More than any target asks for at a time.
constexpr std::size_t mostWritings = 8;
constexpr std::array textFormats{"text/plain;charset=utf-8", "text/plain"};

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
        .enter = [](void* self, wl_data_device*, std::uint32_t serial, wl_surface* surface, wl_fixed_t, wl_fixed_t,
                    wl_data_offer* offer) { static_cast<DropTarget*>(self)->entered(serial, surface, offer); },
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
void DropTarget::entered(std::uint32_t serial, const wl_surface* surface, wl_data_offer* offer) {
    over_ = take(offer);
    surface_ = surface;
    isWanted_ = over_ && events_.entered(over_->formats());
    if (over_)
        over_->accept(serial, isWanted_);
}

void DropTarget::left() {
    over_.reset();
    surface_ = nullptr;
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
