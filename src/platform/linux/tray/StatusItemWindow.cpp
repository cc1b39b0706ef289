// SPDX-License-Identifier: MIT
#include "platform/linux/tray/StatusItemWindow.h"

#include "platform/linux/tray/StatusItemPainter.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/qt/QtDrops.h"
#include "platform/qt/QtWindow.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QMenu>
#include <QPainter>
#include <QWindow>

#include <cmath>

namespace stowpocket {
namespace {

void answer(QDropEvent& event, DragOperation operation) {
    if (operation == DragOperation::none || !event.possibleActions().testFlag(Qt::CopyAction))
        return event.ignore();
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

constexpr std::uint8_t blendingDepth = 32;
constexpr std::uint32_t requestDockOpcode = 0;
constexpr std::uint32_t xembedVersion = 0;
constexpr std::uint32_t xembedMapped = 1;
constexpr std::uint32_t verticalTray = 1;

bool wantsBlending(const X11Connection& connection, xcb_window_t manager) {
    const std::vector<std::uint32_t> visual = connection.property(manager, X11Atom::trayVisual);
    return !visual.empty() && connection.depthOfVisual(visual.front()) == blendingDepth;
}

}  // namespace

void showStatusItemMenu(const StatusItemMenu& menu, const QPoint& place) {
    if (!menu.entries)
        return;
    auto* const shown = new QMenu;
    shown->setAttribute(Qt::WA_DeleteOnClose);
    for (const StatusItemMenuEntry& entry : menu.entries()) {
        if (entry.beginsGroup)
            shown->addSeparator();
        QAction* const action = shown->addAction(QString::fromStdString(entry.title));
        action->setEnabled(entry.isEnabled);
        // Later, because the menu still holds the keyboard, and may be destroyed with the icon.
        QObject::connect(
            action, &QAction::triggered, qApp, [choose = menu.choose, id = entry.id] { choose(id); },
            Qt::QueuedConnection);
    }
    popUpAfterClick(*shown, place);
}

StatusItemWindow::StatusItemWindow(const StatusItemContent& content, IncomingDrops& drops)
    : content_(content), drops_(drops) {
    setWindowFlags(Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setFocusPolicy(Qt::NoFocus);
}

void StatusItemWindow::showContent() {
    if (isVisible())
        describe();
    update();
}

void StatusItemWindow::showEvent(QShowEvent*) {
    describe();
}

/// The first description in a program waits for the accessibility bus, which must not delay the icon.
void StatusItemWindow::describe() {
    const QString description = QString::fromStdString(content_.image.accessibilityDescription);
    setAccessibleName(description);
    setToolTip(description);
}

void StatusItemWindow::contextMenuEvent(QContextMenuEvent* event) {
    showStatusItemMenu(content_.menu, event->globalPos());
}

void StatusItemWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!content_.dropView || !offersAnyOf(*event->mimeData(), content_.dropView->registeredDraggedTypes(), drops_))
        return event->ignore();
    QtDraggingPasteboard pasteboard(*event->mimeData(), drops_);
    answer(*event, content_.dropView->draggingEntered(pasteboard));
    // A rejected drag is not heard of again.
    hovered.emit(event->isAccepted());
}

void StatusItemWindow::dragMoveEvent(QDragMoveEvent* event) {
    if (!content_.dropView)
        return event->ignore();
    QtDraggingPasteboard pasteboard(*event->mimeData(), drops_);
    answer(*event, content_.dropView->draggingUpdated(pasteboard));
}

void StatusItemWindow::dragLeaveEvent(QDragLeaveEvent*) {
    hovered.emit(false);
}

void StatusItemWindow::dropEvent(QDropEvent* event) {
    if (!content_.dropView)
        return event->ignore();
    QtDraggingPasteboard pasteboard(*event->mimeData(), drops_);
    answer(*event, content_.dropView->performDragOperation(pasteboard) ? DragOperation::copy : DragOperation::none);
    dropped.emit();
}

TrayWindow::TrayWindow(const X11Connection& connection, xcb_window_t manager, const StatusItemContent& content,
                       const SymbolPainter& paintSymbol, IncomingDrops& drops)
    : StatusItemWindow(content, drops),
      connection_(connection),
      manager_(manager),
      paintSymbol_(paintSymbol),
      direction_(barDirection()) {
    setAttribute(Qt::WA_TranslucentBackground, wantsBlending(connection, manager));
    setWindowTitle(QStringLiteral("stowpocket status item"));
    TrayWindow::showContent();
}

void TrayWindow::requestDock() {
    // Panels pass drags on only to windows that took drops before they were docked.
    setAcceptDrops(true);
    const QSize room = wish();
    resize(room);
    const auto window = static_cast<xcb_window_t>(winId());
    windowHandle()->setMinimumSize(room);
    const xcb_atom_t info = connection_.atom(X11Atom::xembedInfo);
    connection_.setProperty(window, info, info, {xembedVersion, xembedMapped});
    // No window manager sets this. Without it Qt would look for a frame in every surrounding window at each change of
    // the size.
    connection_.setProperty(window, connection_.atom(X11Atom::frameExtents), XCB_ATOM_CARDINAL, {0, 0, 0, 0});
    connection_.sendMessage(manager_, XCB_EVENT_MASK_NO_EVENT, manager_, X11Atom::trayOpcode,
                            {XCB_CURRENT_TIME, requestDockOpcode, window, 0, 0});
}

/// The tray alone sets the size. A size set through Qt would count as granted, and Qt does not notice when the tray
/// sets its own again.
void TrayWindow::showContent() {
    StatusItemWindow::showContent();
    if (windowHandle() != nullptr)
        windowHandle()->setMinimumSize(wish());
}

void TrayWindow::followBar() {
    direction_ = barDirection();
    showContent();
}

BarDirection TrayWindow::barDirection() const {
    const std::vector<std::uint32_t> orientation = connection_.property(manager_, X11Atom::trayOrientation);
    const bool isVertical = !orientation.empty() && orientation.front() == verticalTray;
    return isVertical ? BarDirection::vertical : BarDirection::horizontal;
}

QSize TrayWindow::wish() const {
    const Size wish = preferredStatusItemSize(measureContent(content()), direction_);
    return {static_cast<int>(std::ceil(wish.width)), static_cast<int>(std::ceil(wish.height))};
}

void TrayWindow::paintEvent(QPaintEvent*) {
    const QImage background = testAttribute(Qt::WA_TranslucentBackground) ? QImage() : paintedBackground();
    const QColor color = foregroundOn(background);
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (testAttribute(Qt::WA_TranslucentBackground))
        painter.fillRect(rect(), Qt::transparent);
    else
        painter.drawImage(rect(), background);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    const StatusItemLayout layout =
        layOutStatusItem(measureContent(content()), {static_cast<double>(width()), static_cast<double>(height())});
    paintContent(painter, content(), paintSymbol_, layout, color);
}

QImage TrayWindow::paintedBackground() const {
    QImage background = x11ParentBackground(connection_, id(), size() * devicePixelRatio());
    if (!background.isNull())
        return background;
    QImage plain(1, 1, QImage::Format_RGB32);
    plain.fill(palette().window().color());
    return plain;
}

/// Chosen by the pixels behind the icon, else by the colour that the bar announces, else by the pixel beside the
/// icon.
QColor TrayWindow::foregroundOn(const QImage& background) const {
    if (!background.isNull())
        return readableOn(background.pixelColor(0, 0));
    if (const auto announced = announcedForeground(connection_.property(manager_, X11Atom::trayColors)))
        return *announced;
    // There the server has no picture of the screen, and the bar that blends windows is that of GNOME, which is dark.
    if (isWaylandSession())
        return Qt::white;
    const std::optional<QRect> place = connection_.geometryOnRoot(id());
    const QPoint beside = place ? QPoint(place->left() - 1, place->center().y()) : QPoint();
    const QImage pixel = x11Pixels(connection_, connection_.root(), QRect(beside, QSize(1, 1)));
    return readableOn(pixel.isNull() ? palette().window().color() : pixel.pixelColor(0, 0));
}

}  // namespace stowpocket
