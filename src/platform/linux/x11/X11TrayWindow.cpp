// SPDX-License-Identifier: MIT
#include "platform/linux/x11/X11TrayWindow.h"

#include "platform/linux/x11/TrayColors.h"
#include "platform/linux/x11/X11Pixels.h"
#include "platform/qt/QtDropData.h"

#include <QDragEnterEvent>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace stowpocket {
namespace {

constexpr std::uint8_t blendingDepth = 32;
constexpr std::uint32_t requestDockOpcode = 0;
constexpr std::uint32_t xembedVersion = 0;
constexpr std::uint32_t xembedMapped = 1;

bool wantsBlending(const X11Connection& connection, xcb_window_t manager) {
    const std::vector<std::uint32_t> visual = connection.property(manager, X11Atom::trayVisual);
    return !visual.empty() && connection.depthOfVisual(visual.front()) == blendingDepth;
}

RgbColor rgb(const QColor& color) {
    return {static_cast<std::uint8_t>(color.red()), static_cast<std::uint8_t>(color.green()),
            static_cast<std::uint8_t>(color.blue())};
}

QColor qColor(const RgbColor& color) {
    return {color.red, color.green, color.blue};
}

QRectF qRect(const Rect& rect) {
    return {rect.x, rect.y, rect.width, rect.height};
}

/// Everything in `whole` but the badge and a gap around it, so that a filled symbol does not run into the badge.
QPainterPath around(const QRectF& badge, const QRectF& whole) {
    constexpr double gap = 1;
    const QRectF hole = badge.adjusted(-gap, -gap, gap, gap);
    QPainterPath path;
    path.addRect(whole);
    path.addRoundedRect(hole, hole.height() / 2, hole.height() / 2);
    return path;
}

QString countText(const StatusItemTitle& title) {
    return QString::fromStdString(title.text).trimmed();
}

}  // namespace

X11TrayWindow::X11TrayWindow(const X11Connection& connection, xcb_window_t manager, const StatusItemFace& face,
                             const SymbolPainter& paintSymbol)
    : connection_(connection), manager_(manager), face_(face), paintSymbol_(paintSymbol) {
    setWindowFlags(Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_TranslucentBackground, wantsBlending(connection, manager));
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setFocusPolicy(Qt::NoFocus);
    setWindowTitle(QStringLiteral("stowpocket status item"));
    showFace();
    resize(minimumSize());
}

void X11TrayWindow::requestDock() {
    // Panels pass drags on to windows that took drops before they were docked.
    setAcceptDrops(true);
    const auto window = static_cast<xcb_window_t>(winId());
    const xcb_atom_t info = connection_.atom(X11Atom::xembedInfo);
    connection_.setProperty(window, info, info, {xembedVersion, xembedMapped});
    connection_.sendMessage(manager_, XCB_EVENT_MASK_NO_EVENT, manager_, X11Atom::trayOpcode,
                            {XCB_CURRENT_TIME, requestDockOpcode, window, 0, 0});
}

void X11TrayWindow::showFace() {
    const QString description = QString::fromStdString(face_.image.accessibilityDescription);
    setAccessibleName(description);
    setToolTip(description);
    const Size wish = statusItemWish(measure());
    setMinimumSize(static_cast<int>(std::ceil(wish.width)), static_cast<int>(std::ceil(wish.height)));
    update();
}

StatusItemMeasure X11TrayWindow::measure() const {
    const QFontMetricsF metrics(titleFont(face_.title.fontSize));
    return {face_.image.pointSize, face_.title.fontSize,
            metrics.horizontalAdvance(QString::fromStdString(face_.title.text)),
            metrics.horizontalAdvance(countText(face_.title))};
}

QFont X11TrayWindow::titleFont(double size) const {
    QFont title = font();
    title.setPixelSize(std::max(1, static_cast<int>(std::lround(size))));
    title.setBold(face_.title.weight == FontWeight::bold);
    return title;
}

void X11TrayWindow::paintEvent(QPaintEvent*) {
    const QImage background = testAttribute(Qt::WA_TranslucentBackground) ? QImage() : paintedBackground();
    const QColor color = foregroundOn(background);
    const StatusItemLayout layout =
        layOutStatusItem(measure(), {static_cast<double>(width()), static_cast<double>(height())});
    const double pixels = layout.symbol.width * devicePixelRatioF();

    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (testAttribute(Qt::WA_TranslucentBackground))
        painter.fillRect(rect(), Qt::transparent);
    else
        painter.drawImage(rect(), background);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setRenderHint(QPainter::Antialiasing);
    const QImage symbol = paintSymbol_(face_.image, color, static_cast<int>(std::lround(pixels)));
    if (layout.countPlace == CountPlace::badge)
        painter.setClipPath(around(qRect(layout.count), rect()));
    painter.drawImage(qRect(layout.symbol).toAlignedRect(), symbol);
    painter.setClipping(false);
    paintCount(painter, layout, color);
}

void X11TrayWindow::paintCount(QPainter& painter, const StatusItemLayout& layout, const QColor& color) const {
    const QRectF room = qRect(layout.count);
    painter.setFont(titleFont(layout.fontSize));
    if (layout.countPlace == CountPlace::beside) {
        painter.setPen(color);
        const QRectF raised = room.translated(0, -face_.title.baselineOffset * layout.scale);
        painter.drawText(raised, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip,
                         QString::fromStdString(face_.title.text));
    } else if (layout.countPlace == CountPlace::badge) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
        painter.drawRoundedRect(room, room.height() / 2, room.height() / 2);
        painter.setPen(qColor(readableOn(rgb(color))));
        painter.drawText(room, Qt::AlignCenter | Qt::TextDontClip, countText(face_.title));
    }
}

QImage X11TrayWindow::paintedBackground() const {
    QImage background = x11ParentBackground(connection_, id());
    if (!background.isNull())
        return background;
    QImage plain(1, 1, QImage::Format_RGB32);
    plain.fill(palette().window().color());
    return plain;
}

/// By the pixels behind the icon, else by what the bar announces, else by the pixel beside it.
QColor X11TrayWindow::foregroundOn(const QImage& background) const {
    if (!background.isNull())
        return qColor(readableOn(rgb(background.pixelColor(0, 0))));
    if (const auto announced = announcedForeground(connection_.property(manager_, X11Atom::trayColors)))
        return qColor(*announced);
    const std::optional<QRect> place = connection_.geometryOnRoot(id());
    const QPoint beside = place ? QPoint(place->left() - 1, place->center().y()) : QPoint();
    const QImage pixel = x11Pixels(connection_, connection_.root(), QRect(beside, QSize(1, 1)));
    return qColor(readableOn(rgb(pixel.isNull() ? palette().window().color() : pixel.pixelColor(0, 0))));
}

void X11TrayWindow::resizeEvent(QResizeEvent*) {
    resized.emit();
}

void X11TrayWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!face_.dropView || !offersAnyOf(*event->mimeData(), face_.dropView->registeredDraggedTypes()))
        return event->ignore();
    QtDraggingPasteboard pasteboard(*event->mimeData());
    answer(*event, face_.dropView->draggingEntered(pasteboard));
}

void X11TrayWindow::dragMoveEvent(QDragMoveEvent* event) {
    if (!face_.dropView)
        return event->ignore();
    QtDraggingPasteboard pasteboard(*event->mimeData());
    answer(*event, face_.dropView->draggingUpdated(pasteboard));
}

void X11TrayWindow::dropEvent(QDropEvent* event) {
    if (!face_.dropView)
        return event->ignore();
    QtDraggingPasteboard pasteboard(*event->mimeData());
    answer(*event, face_.dropView->performDragOperation(pasteboard) ? DragOperation::copy : DragOperation::none);
}

void X11TrayWindow::answer(QDropEvent& event, DragOperation operation) const {
    if (operation == DragOperation::none || !event.possibleActions().testFlag(Qt::CopyAction))
        return event.ignore();
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

}  // namespace stowpocket
