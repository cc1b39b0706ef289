// SPDX-License-Identifier: MIT
#include "platform/linux/tray/X11Pocket.h"

#include "platform/linux/x11/WaylandSession.h"

#include <QGuiApplication>
#include <QScreen>

namespace stowpocket {
namespace {

constexpr int distanceFromEdge = 8;

}  // namespace

X11Pocket::X11Pocket(const X11Connection& connection, const StatusItemFace& face, const SymbolPainter& paintSymbol,
                     IncomingDrops& drops, std::function<void()> onClick)
    : connection_(connection), face_(face), paintSymbol_(paintSymbol), drops_(drops), onClick_(std::move(onClick)) {}

X11Pocket::~X11Pocket() = default;

void X11Pocket::setResident(bool isResident) {
    presence_.setResident(isResident);
    // As the icon itself it stands in the corner: where the icon was there is nothing left to lie over.
    if (isResident && icon_) {
        icon_.reset();
        close();
    }
    follow();
}

void X11Pocket::dragBegan(const std::optional<QRect>& icon) {
    presence_.dragBegan();
    if (icon != icon_)
        close();
    icon_ = icon;
    follow();
    // Windows that were opened since may stand over it.
    window_->raise();
}

void X11Pocket::dragEnded(DragEnd end) {
    presence_.dragEnded(end);
    follow();
}

void X11Pocket::showFace() {
    if (!window_)
        return;
    window_->showFace();
    standInCorner();
}

std::optional<QRect> X11Pocket::rectOnScreen() const {
    return window_ ? std::optional(window_->geometry()) : std::nullopt;
}

void X11Pocket::follow() {
    if (presence_.isShown() == (window_ != nullptr))
        return;
    if (presence_.isShown())
        makeWindow();
    else
        close();
    changed.emit();
}

void X11Pocket::makeWindow() {
    window_ = std::make_unique<X11PocketWindow>(connection_, face_, paintSymbol_, drops_);
    QObject::connect(window_.get(), &QAbstractButton::clicked, onClick_);
    hovered_ = window_->hovered.connect([this](bool isHovered) {
        presence_.setHovered(isHovered);
        follow();
    });
    dropped_ = window_->dropped.connect([this] {
        presence_.dropped();
        follow();
    });
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (screen != nullptr)
        QObject::connect(screen, &QScreen::availableGeometryChanged, window_.get(), [this] { standInCorner(); });
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, window_.get(), [this] { standInCorner(); });
    if (icon_)
        window_->cover(*icon_);
    else
        standInCorner();
    window_->show();
}

void X11Pocket::standInCorner() {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (icon_ || screen == nullptr)
        return;
    const QRect available = usableArea(*screen);
    window_->move(available.right() + 1 - distanceFromEdge - window_->width(), available.top() + distanceFromEdge);
    changed.emit();
}

void X11Pocket::close() {
    hovered_.reset();
    dropped_.reset();
    presence_.setHovered(false);
    if (!window_)
        return;
    window_->hide();
    window_.release()->deleteLater();  // not at once: it may be handling a click or a drop
}

}  // namespace stowpocket
