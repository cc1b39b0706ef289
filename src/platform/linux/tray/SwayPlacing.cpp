// SPDX-License-Identifier: MIT
#include "platform/linux/tray/SwayPlacing.h"

#include <QByteArray>
#include <QEvent>
#include <QScreen>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <utility>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// A message is this, its length and its kind in the machine's order of bytes, then its text (sway-ipc(7)).
constexpr std::string_view messageMark = "i3-ipc";
constexpr std::uint32_t commandKind = 0;

constexpr auto timeBetweenLooks = 20ms;
constexpr int mostLooks = 15;
/// A window that is elsewhere after so many is there because its user has put it there.
constexpr int mostCorrections = 10;

std::string bytesOf(std::uint32_t number) {
    std::string bytes(sizeof number, '\0');
    std::memcpy(bytes.data(), &number, sizeof number);
    return bytes;
}

/// The command for this window of this process: sway knows no other window by it, also when this one has gone.
std::string movement(const QWidget& window, const QPoint& corner) {
    return "[pid=" + std::to_string(::getpid()) + " title=\"^" + window.windowTitle().toStdString() +
           "$\"] move absolute position " + std::to_string(corner.x()) + " " + std::to_string(corner.y());
}

/// Qt keeps the corner of each screen in pixels and scales distances from there.
QPoint pixelOf(const QPoint& point, const QWidget& window) {
    const QPoint origin = window.screen()->geometry().topLeft();
    return origin + (point - origin) * window.devicePixelRatio();
}

}  // namespace

SwayPlacing::SwayPlacing(const X11Connection& connection, std::string socket)
    : connection_(connection), socket_(std::move(socket)) {
    QObject::connect(&looking_, &QTimer::timeout, this, [this] { look(); });
}

std::unique_ptr<SwayPlacing> SwayPlacing::ofSession(const X11Connection& connection) {
    const QByteArray socket = qgetenv("SWAYSOCK");
    return socket.isEmpty() || !isWaylandSession() ? nullptr
                                                   : std::make_unique<SwayPlacing>(connection, socket.toStdString());
}

/// Windows that are about to be shown get their place by a rule, without being seen in the middle before. Sway keeps
/// one rule for all times that the window is shown in the same place.
void SwayPlacing::place(QWidget& window, const QPoint& corner) {
    if (std::exchange(window_, &window) != &window)
        window.installEventFilter(this);
    corner_ = pixelOf(corner, window);
    corrections_ = 0;
    if (window.isVisible())
        watch();
    else
        command("for_window " + movement(window, corner_));
}

bool SwayPlacing::eventFilter(QObject* watched, QEvent* event) {
    if (watched == window_ && event->type() == QEvent::Move && window_->isVisible() && !looking_.isActive())
        watch();
    return false;
}

void SwayPlacing::watch() {
    looks_ = 0;
    looking_.start(timeBetweenLooks);
}

/// Sway answers each of the several requests of a window that grows by centring it, some after this command, and Qt
/// takes the window to be where it has asked for.
void SwayPlacing::look() {
    if (!window_ || !window_->isVisible() || ++looks_ == mostLooks || corrections_ == mostCorrections)
        return looking_.stop();
    const auto place = connection_.geometryOnRoot(static_cast<xcb_window_t>(window_->winId()));
    if (!place || place->topLeft() == corner_)
        return;
    // Where sway takes the window to be there already, it tells the X server nothing: only another place helps.
    const QPoint detour(0, corrections_++ % 2);
    command(movement(*window_, corner_ + detour));
}

void SwayPlacing::command(const std::string& text) {
    if (!openSocket())
        return;
    const std::string message =
        std::string(messageMark) + bytesOf(static_cast<std::uint32_t>(text.size())) + bytesOf(commandKind) + text;
    const ssize_t sent = ::send(descriptor_, message.data(), message.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent != static_cast<ssize_t>(message.size()))
        closeSocket();
}

bool SwayPlacing::openSocket() {
    if (descriptor_ >= 0)
        return true;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socket_.size() >= sizeof address.sun_path)
        return false;
    socket_.copy(address.sun_path, socket_.size());
    descriptor_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor_ < 0)
        return false;
    if (::connect(descriptor_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        closeSocket();
        return false;
    }
    answers_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
    QObject::connect(answers_.get(), &QSocketNotifier::activated, this, [this] { discardAnswers(); });
    return true;
}

void SwayPlacing::closeSocket() {
    // Later, since it may be what is telling of the end.
    if (answers_) {
        answers_->setEnabled(false);
        answers_.release()->deleteLater();
    }
    if (descriptor_ >= 0)
        ::close(std::exchange(descriptor_, -1));
}

void SwayPlacing::discardAnswers() {
    std::array<char, 1024> answer{};
    const ssize_t received = ::recv(descriptor_, answer.data(), answer.size(), MSG_DONTWAIT);
    if (received == 0 || (received < 0 && errno != EAGAIN && errno != EINTR))
        closeSocket();
}

}  // namespace stowpocket
