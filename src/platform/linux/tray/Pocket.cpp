// SPDX-License-Identifier: MIT
#include "platform/linux/tray/Pocket.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/qt/QtPopover.h"
#include "presentation/Layout.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace stowpocket {
namespace {

/// KWin lets Wayland programs drop only into X11 windows that it manages.
bool needsManager(const X11Connection& connection) {
    return isWaylandSession() && connection.windowManagerName() == "KWin";
}

/// Compositors made with wlroots pass the drags of X11 programs to no Wayland program.
bool keepsX11DragsIn(const X11Connection& connection) {
    return connection.windowManagerName() == "wlroots wm";
}

bool hasWindow() {
    return std::ranges::any_of(QGuiApplication::topLevelWindows(), &QWindow::isVisible);
}

QPixmap picture(const QRect& place) {
    QScreen* const screen = QGuiApplication::screenAt(place.center());
    if (screen == nullptr)
        return {};
    const QPoint corner = place.topLeft() - screen->geometry().topLeft();
    return screen->grabWindow(0, corner.x(), corner.y(), place.width(), place.height());
}

}  // namespace

void PocketPresence::dragBegan() {
    isDragOn_ = true;
    // A source that died over the pocket never said that it left.
    isHovered_ = false;
}

void PocketPresence::dragEnded(DragEnd end) {
    isDragOn_ = false;
    if (end == DragEnd::sourceGone)
        isHovered_ = false;
}

/// One that nobody sees.
DragTelling::DragTelling(const X11Connection& connection, std::function<void()> onShown)
    : server_(connection.raw()), window_(xcb_generate_id(server_)), onShown_(std::move(onShown)) {
    const std::array<std::uint32_t, 3> values{0, 1, XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    xcb_create_window(server_, XCB_COPY_FROM_PARENT, window_, connection.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    xcb_map_window(server_, window_);
    xcb_flush(server_);
}

DragTelling::~DragTelling() {
    xcb_destroy_window(server_, window_);
    xcb_flush(server_);
}

bool DragTelling::handleEvent(const xcb_generic_event_t& event) {
    const auto* const shown = eventAs<xcb_map_notify_event_t>(event);
    if (shown != nullptr && shown->window == window_)
        later(onShown_);
    return false;
}

PocketWindow::PocketWindow(const X11Connection& connection, const StatusItemContent& content,
                           const SymbolPainter& paintSymbol, IncomingDrops& drops)
    : StatusItemWindow(content, drops), paintSymbol_(paintSymbol) {
    setWindowFlag(Qt::WindowStaysOnTopHint);
    setAttribute(Qt::WA_TranslucentBackground, connection.selectionOwner(X11Atom::compositorOwner) != x11None);
    setAcceptDrops(true);
    if (needsManager(connection)) {
        setWindowFlag(Qt::X11BypassWindowManagerHint, false);
        connection.keepAboveUnlisted(static_cast<xcb_window_t>(winId()));
    } else {
        // Drags from Java programs find only windows that seem to be managed (ICCCM, 4.1.3.1: state, icon).
        constexpr std::uint32_t normalState = 1;
        const xcb_atom_t state = connection.atom(X11Atom::windowManaged);
        connection.setProperty(static_cast<xcb_window_t>(winId()), state, state, {normalState, x11None});
    }
    setWindowTitle(QStringLiteral("stowpocket pocket"));
    PocketWindow::showContent();
}

void PocketWindow::cover(const QRect& place) {
    covered_ = picture(place);
    setFixedSize(place.size());
    move(place.topLeft());
}

void PocketWindow::showContent() {
    StatusItemWindow::showContent();
    if (!covered_.isNull())
        return;
    setFixedSize(pocketSize(content()));
}

void PocketWindow::resizeEvent(QResizeEvent*) {
    if (!testAttribute(Qt::WA_TranslucentBackground) && covered_.isNull())
        setMask(QRegion(pocketOutline(rect()).toFillPolygon().toPolygon()));
}

void PocketWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!covered_.isNull())
        return painter.drawPixmap(rect(), covered_);
    paintPocket(painter, size(), content(), paintSymbol_, palette(), testAttribute(Qt::WA_TranslucentBackground));
}

Pocket::Pocket(const X11Connection& connection, const StatusItemContent& content, const SymbolPainter& paintSymbol,
               IncomingDrops& drops, const WaylandSupport& wayland, const std::function<void()>& onClick)
    : connection_(connection),
      content_(content),
      paintSymbol_(paintSymbol),
      drops_(drops),
      onClick_(onClick),
      surface_(wayland, content, paintSymbol, onClick),
      surfaceReady_(surface_.readyChanged.connect([this] {
          presence_.setHovered(false);
          showOrHide();
          if (!surface_.isReady())
              dragTelling_.reset();
          else if (keepsX11DragsIn(connection_) && !hasWindow())
              haveDragsTold();
      })),
      surfaceHovered_(surface_.hovered.connect([this](bool isHovered) {
          surfaceSaw.emit(isHovered ? DragSign::entered : DragSign::left);
          hover(isHovered);
      })),
      surfaceDropped_(surface_.dropped.connect([this] {
          surfaceSaw.emit(DragSign::dropped);
          finishDrop();
      })),
      surfaceDragsOut_(surface_.dragsOut.connect([this](bool dragsOut) {
          surfaceSaw.emit(dragsOut ? DragSign::entered : DragSign::dropped);
          presence_.setDragsOut(dragsOut);
          showOrHide();
      })) {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (screen != nullptr)
        QObject::connect(screen, &QScreen::availableGeometryChanged, &context_, [this] { moveToPlace(); });
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &context_, [this] { moveToPlace(); });
}

Pocket::~Pocket() = default;

void Pocket::haveDragsTold() {
    dragTelling_ = std::make_unique<DragTelling>(connection_,
                                                 [this] { surface_.whenAnswered([this] { dragTelling_.reset(); }); });
}

void Pocket::setResident(bool isResident) {
    presence_.setResident(isResident);
    // As the icon itself it is in the corner: there is nothing left where the icon was.
    if (isResident && (icon_ || beside_)) {
        icon_.reset();
        beside_.reset();
        closeWindow();
    }
    showOrHide();
}

void Pocket::dragBegan(DragOrigin origin, const std::optional<QRect>& icon) {
    presence_.dragBegan();
    isX11Drag_ = origin == DragOrigin::x11;
    if (icon != icon_)
        closeWindow();
    icon_ = icon;
    beside_.reset();
    showOrHide();
    // Windows that were opened since may be above it.
    if (window_)
        window_->raise();
    if (window_ && icon_ && connection_.isUnderOverlay(static_cast<xcb_window_t>(window_->winId())))
        leaveIcon();
}

void Pocket::leaveIcon() {
    closeWindow();
    beside_ = std::exchange(icon_, std::nullopt);
    showOrHide();
}

void Pocket::dragEnded(DragEnd end) {
    presence_.dragEnded(end);
    showOrHide();
}

void Pocket::setShelfOpen(bool isOpen) {
    const bool isBesideShelf = isOpen && surface_.isReady() && keepsX11DragsIn(connection_);
    presence_.setBesideShelf(isBesideShelf);
    // Elsewhere the shelf itself is the better list, and would be below this one.
    surface_.setListAllowed(!isOpen || isBesideShelf);
    showOrHide();
}

void Pocket::showContent() {
    if (window_)
        window_->showContent();
    moveToPlace();
    if (isSurfaceShown_)
        surface_.showContent();
}

std::optional<QRect> Pocket::rectOnScreen() const {
    if (isSurfaceShown_)
        return place();
    return window_ ? std::optional(window_->geometry()) : std::nullopt;
}

void Pocket::hover(bool isHovered) {
    presence_.setHovered(isHovered);
    showOrHide();
}

void Pocket::finishDrop() {
    presence_.dropped();
    showOrHide();
}

/// An X11 drag that is over the window now may still be dropped there.
bool Pocket::wantsSurface() const {
    return presence_.isShown() && surface_.isReady() && !(isX11Drag_ && presence_.isInDrag());
}

void Pocket::showOrHide() {
    const bool hadSurface = std::exchange(isSurfaceShown_, wantsSurface());
    if (hadSurface && !isSurfaceShown_)
        surface_.hide();
    const bool wantsWindow = presence_.isShown() && !isSurfaceShown_;
    if (isSurfaceShown_ == hadSurface && wantsWindow == (window_ != nullptr))
        return;
    if (wantsWindow && !window_)
        makeWindow();
    else if (!wantsWindow)
        closeWindow();
    moveToPlace();
    changed.emit();
}

void Pocket::makeWindow() {
    window_ = std::make_unique<PocketWindow>(connection_, content_, paintSymbol_, drops_);
    QObject::connect(window_.get(), &QAbstractButton::clicked, onClick_);
    hovered_ = window_->hovered.connect([this](bool isHovered) { hover(isHovered); });
    dropped_ = window_->dropped.connect([this] { finishDrop(); });
    if (icon_)
        window_->cover(*icon_);
    else
        moveToPlace();
    window_->show();
}

QRect Pocket::place() const {
    const QScreen* screen = beside_ ? QGuiApplication::screenAt(beside_->center()) : nullptr;
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    const Rect usable = rectOf(screen == nullptr ? QRect() : usableArea(*screen));
    const QSize size = window_ ? window_->size() : pocketSize(content_);
    const Rect corner{usable.right(), usable.y, 0, 0};
    const Rect place =
        pocketBesideBar(beside_ ? rectOf(*beside_) : corner,
                        {static_cast<double>(size.width()), static_cast<double>(size.height())}, usable);
    return {static_cast<int>(place.x), static_cast<int>(place.y), size.width(), size.height()};
}

void Pocket::moveToPlace() {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (icon_ || screen == nullptr || (!window_ && !isSurfaceShown_))
        return;
    const QRect place = this->place();
    const QRect whole = screen->geometry();
    if (window_)
        window_->move(place.topLeft());
    if (isSurfaceShown_)
        surface_.show({.size = place.size(),
                       .fromTop = place.top() - whole.top(),
                       .fromRight = whole.right() - place.right(),
                       .output = screen->name().toStdString()});
    changed.emit();
}

void Pocket::closeWindow() {
    hovered_.reset();
    dropped_.reset();
    if (!window_)
        return;
    presence_.setHovered(false);
    window_->hide();
    window_.release()->deleteLater();  // later, since it may be handling a click or a drop
}

}  // namespace stowpocket
