// SPDX-License-Identifier: MIT
#include "platform/linux/tray/X11PocketWindow.h"

#include "platform/linux/x11/WaylandSession.h"

#include <QGuiApplication>
#include <QPainterPath>
#include <QScreen>

namespace stowpocket {
namespace {

/// Alone on the screen the icon may be larger than in a bar, and is easier to hit.
constexpr double faceScale = 1.4;
constexpr double padding = 7;
constexpr double cornerRadius = 10;
constexpr float borderOpacity = 0.22F;

/// KWin lets Wayland programs drop into no X11 window that it does not manage.
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

}  // namespace

X11PocketWindow::X11PocketWindow(const X11Connection& connection, const StatusItemFace& face,
                                 const SymbolPainter& paintSymbol, IncomingDrops& drops)
    : X11FaceWindow(face, drops), paintSymbol_(paintSymbol) {
    setWindowFlag(Qt::WindowStaysOnTopHint);
    setAttribute(Qt::WA_TranslucentBackground, connection.selectionOwner(X11Atom::compositorOwner) != x11None);
    setAcceptDrops(true);
    if (needsManager(connection)) {
        setWindowFlag(Qt::X11BypassWindowManagerHint, false);
        connection.keepAboveUnlisted(static_cast<xcb_window_t>(winId()));
    }
    setWindowTitle(QStringLiteral("stowpocket pocket"));
    X11PocketWindow::showFace();
}

void X11PocketWindow::cover(const QRect& place) {
    covered_ = picture(place);
    setFixedSize(place.size());
    move(place.topLeft());
}

void X11PocketWindow::showFace() {
    X11FaceWindow::showFace();
    if (!covered_.isNull())
        return;
    const Size wish = statusItemWish(measureFace(face()));
    setFixedSize(QSizeF(wish.width * faceScale + 2 * padding, wish.height * faceScale + 2 * padding).toSize());
}

void X11PocketWindow::resizeEvent(QResizeEvent*) {
    if (!testAttribute(Qt::WA_TranslucentBackground) && covered_.isNull())
        setMask(QRegion(panelOutline(rect()).toFillPolygon().toPolygon()));
}

void X11PocketWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!covered_.isNull())
        return painter.drawPixmap(rect(), covered_);
    const bool isBlended = testAttribute(Qt::WA_TranslucentBackground);
    QColor border = palette().color(QPalette::WindowText);
    border.setAlphaF(borderOpacity);
    painter.setRenderHint(QPainter::Antialiasing, isBlended);
    // Half of the line falls outside; where the window ends there, it is drawn twice as wide.
    const QPainterPath outline = panelOutline(isBlended ? QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5) : rect());
    painter.fillPath(outline, palette().window());
    painter.setPen(QPen(border, isBlended ? 1 : 2));
    painter.drawPath(outline);
    painter.translate(padding, padding);
    const StatusItemLayout layout =
        layOutStatusItem(measureFace(face()), {width() - 2.0 * padding, height() - 2.0 * padding});
    paintFace(painter, face(), paintSymbol_, layout, palette().color(QPalette::WindowText));
}

}  // namespace stowpocket
