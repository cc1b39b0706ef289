// SPDX-License-Identifier: MIT
#include "platform/linux/tray/X11StatusItemButton.h"

#include "platform/linux/tray/StatusItemPainter.h"
#include "platform/linux/x11/X11Connection.h"
#include "presentation/Layout.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include <utility>

namespace stowpocket {
namespace {

/// Qt keeps the corner of each screen in pixels and scales distances from there.
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

/// In pixels. Panels take the nearest size and scale it.
constexpr std::array<int, 4> notifierSizes{16, 22, 32, 48};
/// Readable on light and dark bars, for hosts that do not announce their colour.
constexpr QRgb neutralColor = 0xFF8C8C8C;

/// Some hosts report no position, and some report it within the icon instead of on the screen.
bool isPlaceOnScreen(const QPoint& pixels) {
    constexpr int largestIcon = 64;
    return pixels.x() > largestIcon || pixels.y() > largestIcon;
}

QRect usualPlace() {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return {};
    const Rect place = likelyIconPlace(rectOf(screen->geometry()), rectOf(usableArea(*screen)));
    return {static_cast<int>(place.x), static_cast<int>(place.y), 1, 0};
}

}  // namespace

X11StatusItemButton::X11StatusItemButton(const X11Connection& connection, SymbolPainter paintSymbol,
                                         IncomingDrops& drops, const WaylandSupport& wayland)
    : connection_(connection),
      paintSymbol_(std::move(paintSymbol)),
      drops_(drops),
      pocket_(connection_, content_, paintSymbol_, drops_, wayland, [this] { click(); }),
      pocketChanged_(pocket_.changed.connect([this] { pocketChanged(); })) {}

void X11StatusItemButton::setImage(const StatusItemImage& image) {
    content_.image = image;
    showContent();
}

void X11StatusItemButton::setTitle(const StatusItemTitle& title) {
    title_ = title;
    if (window_ && !title.text.empty())
        countFont_.whenLoaded([this] { showTitle(); });
    else
        showTitle();
}

void X11StatusItemButton::addDropView(std::shared_ptr<DraggingDestination> dropView) {
    content_.dropView = std::move(dropView);
    completed.emit();
}

void X11StatusItemButton::showTitle() {
    content_.title = title_;
    showContent();
}

void X11StatusItemButton::showContent() {
    if (window_)
        window_->showContent();
    pocket_.showContent();
    if (notifier_)
        notifier_->setContent(notifierContent());
}

QRect X11StatusItemButton::rectOnScreen() const {
    if (pocket_.isBesideBar())
        return *pocket_.rectOnScreen();
    if (const std::optional<QRect> docked = dockedRect())
        return *docked;
    return lastPlace_.value_or(usualPlace());
}

QRect X11StatusItemButton::barOnScreen() const {
    if (!window_ || bar_ == x11None)
        return {};
    const std::optional<QRect> pixels = barPlace_.of(connection_, bar_);
    return pixels ? pointsOf(*pixels).value_or(QRect()) : QRect();
}

std::optional<QRect> X11StatusItemButton::dockedRect() const {
    if (!window_)
        return std::nullopt;
    if (bar_ == x11None)
        iconPlace_.forget();
    const std::optional<QRect> pixels = iconPlace_.of(connection_, window_->id());
    return pixels ? pointsOf(*pixels) : std::nullopt;
}

std::optional<QRect> X11StatusItemButton::KnownPlace::of(const X11Connection& connection, xcb_window_t window) {
    if (!pixels_)
        pixels_ = connection.geometryOnRoot(window);
    return pixels_;
}

void X11StatusItemButton::forgetPlaces() {
    iconPlace_.forget();
    barPlace_.forget();
}

void X11StatusItemButton::dock(xcb_window_t manager) {
    undock();
    window_ = std::make_unique<TrayWindow>(connection_, manager, content_, paintSymbol_, drops_);
    QObject::connect(window_.get(), &QAbstractButton::clicked, &context_, [this] { click(); });
    window_->requestDock();
}

void X11StatusItemButton::showDocked() {
    if (window_)
        window_->show();
}

void X11StatusItemButton::undock() {
    bar_ = x11None;
    forgetPlaces();
    if (!window_)
        return;
    window_.release()->deleteLater();  // later, since it may be handling a click or a drag
    moved.emit();
}

void X11StatusItemButton::barChanged(xcb_window_t bar) {
    bar_ = bar;
    barPlace_.forget();
    if (window_)
        window_->followBar();
    iconMoved();
}

void X11StatusItemButton::iconMoved() {
    iconPlace_.forget();
    if (const std::optional<QRect> docked = dockedRect())
        lastPlace_ = docked;
    moved.emit();
}

void X11StatusItemButton::setPlace(const IconPlacing& placing) {
    pocket_.setResident(placing.wantsPocket());
    if (std::exchange(isPocketResident_, placing.wantsPocket()) && !isPocketResident_)
        lastPlace_.reset();
    if (placing.place() != IconPlacing::Place::notifier)
        notifier_.reset();
    else if (!notifier_)
        notifier_ =
            std::make_unique<NotifierItem>(QDBusConnection::sessionBus(), notifierContent(), notifierActions());
}

void X11StatusItemButton::dragBegan(DragOrigin origin) {
    // In a Wayland session the server has no picture of the screen to lay over the icon.
    const bool isSeen = window_ && window_->isVisible() && !isWaylandSession();
    pocket_.dragBegan(origin, isSeen ? dockedRect() : std::nullopt);
}

NotifierContent X11StatusItemButton::notifierContent() const {
    const xcb_window_t manager = connection_.selectionOwner(X11Atom::trayOwner);
    const auto announced = announcedForeground(connection_.property(manager, X11Atom::trayColors));
    const QColor color = announced.value_or(QColor(neutralColor));
    NotifierContent shown{QString::fromStdString(content_.image.accessibilityDescription), {}};
    for (const int size : notifierSizes) {
        QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        const auto side = static_cast<double>(size);
        paintContent(painter, content_, paintSymbol_, layOutBadge(measureContent(content_), {side, side}), color);
        painter.end();
        shown.pictures.push_back(std::move(picture));
    }
    return shown;
}

void X11StatusItemButton::click() {
    if (action_)
        action_();
}

NotifierActions X11StatusItemButton::notifierActions() {
    return {.menu = content_.menu,
            .onActivate =
                [this](const QPoint& pixels) {
                    meet(pixels);
                    click();
                },
            .onContextMenu =
                [this](const QPoint& pixels) {
                    meet(pixels);
                    showStatusItemMenu(content_.menu, rectOnScreen().center());
                },
            .onSeen = [this](bool isSeen) { itemSeen.emit(isSeen); }};
}

void X11StatusItemButton::meet(const QPoint& pixels) {
    lastPlace_ = isPlaceOnScreen(pixels) ? pointsOf(QRect(pixels, QSize(1, 1))) : std::nullopt;
    if (!lastPlace_ && !isWaylandSession())
        lastPlace_ = QRect(QCursor::pos(), QSize(1, 1));
}

void X11StatusItemButton::pocketChanged() {
    if (const std::optional<QRect> place = pocket_.rectOnScreen()) {
        lastPlace_ = place;
        moved.emit();
    } else if (window_) {
        // What was painted under the pocket may have taken the pocket for the background.
        window_->update();
        moved.emit();
    }
}

}  // namespace stowpocket
