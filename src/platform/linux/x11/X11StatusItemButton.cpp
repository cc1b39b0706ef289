// SPDX-License-Identifier: MIT
#include "platform/linux/x11/X11StatusItemButton.h"

#include <QGuiApplication>
#include <QScreen>

namespace stowpocket {
namespace {

/// Qt keeps each screen's corner in pixels and scales distances from there.
std::optional<QRect> pointsOf(const QRect& pixels) {
    for (const QScreen* const screen : QGuiApplication::screens()) {
        const QPoint corner = screen->geometry().topLeft();
        const double scale = screen->devicePixelRatio();
        if (!QRect(corner, screen->geometry().size() * scale).contains(pixels.center()))
            continue;
        const QPoint distance = pixels.topLeft() - corner;
        return QRect(corner + distance / scale, pixels.size() / scale);
    }
    return std::nullopt;
}

/// Where an icon would most likely be.
QRect usualCorner() {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return {};
    constexpr int distanceFromEdge = 24;
    return {screen->availableGeometry().topRight() - QPoint(distanceFromEdge, 0), QSize(1, 0)};
}

}  // namespace

void X11StatusItemButton::setImage(const StatusItemImage& image) {
    face_.image = image;
    if (window_)
        window_->showFace();
}

void X11StatusItemButton::setTitle(const StatusItemTitle& title) {
    face_.title = title;
    if (window_)
        window_->showFace();
}

QRect X11StatusItemButton::rectOnScreen() const {
    const std::optional<QRect> pixels = window_ ? connection_.geometryOnRoot(window_->id()) : std::nullopt;
    const std::optional<QRect> points = pixels ? pointsOf(*pixels) : std::nullopt;
    return points.value_or(usualCorner());
}

void X11StatusItemButton::dock(xcb_window_t manager) {
    undock();
    window_ = std::make_unique<X11TrayWindow>(connection_, manager, face_, paintSymbol_, nullptr);
    QObject::connect(window_.get(), &QAbstractButton::clicked, &context_, [this] {
        if (action_)
            action_();
    });
    windowResized_ = window_->resized.connect([this] { moved.emit(); });
    window_->requestDock();
}

void X11StatusItemButton::showDocked() {
    if (window_)
        window_->show();
}

void X11StatusItemButton::undock() {
    windowResized_.reset();
    if (window_)
        window_.release()->deleteLater();  // not at once: it may be handling a click or a drag
}

}  // namespace stowpocket
