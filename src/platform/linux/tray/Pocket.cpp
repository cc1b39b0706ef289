// SPDX-License-Identifier: MIT
#include "platform/linux/tray/Pocket.h"

#include "platform/linux/x11/X11Connection.h"

#include <QGuiApplication>
#include <QPainterPath>
#include <QScreen>

namespace stowpocket {
namespace {

/// Alone on the screen the icon may be larger than in a bar, which makes it easier to hit.
constexpr double contentScale = 1.4;
constexpr double padding = 7;
constexpr double cornerRadius = 10;
constexpr float borderOpacity = 0.22F;

/// KWin lets Wayland programs drop only into X11 windows that it manages.
bool needsManager(const X11Connection& connection) {
    return isWaylandSession() && connection.windowManagerName() == "KWin";
}

QPainterPath panelOutline(const QRectF& room) {
    QPainterPath path;
    path.addRoundedRect(room, cornerRadius, cornerRadius);
    return path;
}

QPixmap picture(const QRect& place) {
    QScreen* const screen = QGuiApplication::screenAt(place.center());
    if (screen == nullptr)
        return {};
    const QPoint corner = place.topLeft() - screen->geometry().topLeft();
    return screen->grabWindow(0, corner.x(), corner.y(), place.width(), place.height());
}

constexpr int distanceFromEdge = 8;

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

PocketWindow::PocketWindow(const X11Connection& connection, const StatusItemContent& content,
                           const SymbolPainter& paintSymbol, IncomingDrops& drops)
    : StatusItemWindow(content, drops), paintSymbol_(paintSymbol) {
    setWindowFlag(Qt::WindowStaysOnTopHint);
    setAttribute(Qt::WA_TranslucentBackground, connection.selectionOwner(X11Atom::compositorOwner) != x11None);
    setAcceptDrops(true);
    if (needsManager(connection)) {
        setWindowFlag(Qt::X11BypassWindowManagerHint, false);
        connection.keepAboveUnlisted(static_cast<xcb_window_t>(winId()));
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
    const Size wish = preferredStatusItemSize(measureContent(content()));
    setFixedSize(QSizeF(wish.width * contentScale + 2 * padding, wish.height * contentScale + 2 * padding).toSize());
}

void PocketWindow::resizeEvent(QResizeEvent*) {
    if (!testAttribute(Qt::WA_TranslucentBackground) && covered_.isNull())
        setMask(QRegion(panelOutline(rect()).toFillPolygon().toPolygon()));
}

void PocketWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!covered_.isNull())
        return painter.drawPixmap(rect(), covered_);
    const bool isBlended = testAttribute(Qt::WA_TranslucentBackground);
    QColor border = palette().color(QPalette::WindowText);
    border.setAlphaF(borderOpacity);
    painter.setRenderHint(QPainter::Antialiasing, isBlended);
    // Half of the line is outside the outline. Where the window ends at the outline, the line is drawn twice as wide.
    const QPainterPath outline = panelOutline(isBlended ? QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5) : rect());
    painter.fillPath(outline, palette().window());
    painter.setPen(QPen(border, isBlended ? 1 : 2));
    painter.drawPath(outline);
    painter.translate(padding, padding);
    const StatusItemLayout layout =
        layOutStatusItem(measureContent(content()), {width() - 2.0 * padding, height() - 2.0 * padding});
    paintContent(painter, content(), paintSymbol_, layout, palette().color(QPalette::WindowText));
}

Pocket::Pocket(const X11Connection& connection, const StatusItemContent& content, const SymbolPainter& paintSymbol,
               IncomingDrops& drops, std::function<void()> onClick)
    : connection_(connection),
      content_(content),
      paintSymbol_(paintSymbol),
      drops_(drops),
      onClick_(std::move(onClick)) {}

Pocket::~Pocket() = default;

void Pocket::setResident(bool isResident) {
    presence_.setResident(isResident);
    // As the icon itself it is in the corner: there is nothing left to cover where the icon was.
    if (isResident && icon_) {
        icon_.reset();
        closeWindow();
    }
    showOrHide();
}

void Pocket::dragBegan(const std::optional<QRect>& icon) {
    presence_.dragBegan();
    if (icon != icon_)
        closeWindow();
    icon_ = icon;
    showOrHide();
    // Windows that were opened since may be above it.
    window_->raise();
}

void Pocket::dragEnded(DragEnd end) {
    presence_.dragEnded(end);
    showOrHide();
}

void Pocket::showContent() {
    if (!window_)
        return;
    window_->showContent();
    moveToCorner();
}

std::optional<QRect> Pocket::rectOnScreen() const {
    return window_ ? std::optional(window_->geometry()) : std::nullopt;
}

void Pocket::showOrHide() {
    if (presence_.isShown() == (window_ != nullptr))
        return;
    if (presence_.isShown())
        makeWindow();
    else
        closeWindow();
    changed.emit();
}

void Pocket::makeWindow() {
    window_ = std::make_unique<PocketWindow>(connection_, content_, paintSymbol_, drops_);
    QObject::connect(window_.get(), &QAbstractButton::clicked, onClick_);
    hovered_ = window_->hovered.connect([this](bool isHovered) {
        presence_.setHovered(isHovered);
        showOrHide();
    });
    dropped_ = window_->dropped.connect([this] {
        presence_.dropped();
        showOrHide();
    });
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (screen != nullptr)
        QObject::connect(screen, &QScreen::availableGeometryChanged, window_.get(), [this] { moveToCorner(); });
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, window_.get(), [this] { moveToCorner(); });
    if (icon_)
        window_->cover(*icon_);
    else
        moveToCorner();
    window_->show();
}

void Pocket::moveToCorner() {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (icon_ || screen == nullptr)
        return;
    const QRect available = usableArea(*screen);
    window_->move(available.right() + 1 - distanceFromEdge - window_->width(), available.top() + distanceFromEdge);
    changed.emit();
}

void Pocket::closeWindow() {
    hovered_.reset();
    dropped_.reset();
    presence_.setHovered(false);
    if (!window_)
        return;
    window_->hide();
    window_.release()->deleteLater();  // later, since it may be handling a click or a drop
}

}  // namespace stowpocket
