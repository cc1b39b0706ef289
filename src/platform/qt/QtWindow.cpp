// SPDX-License-Identifier: MIT
#include "platform/qt/QtWindow.h"

#include <QApplication>
#include <QGuiApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QPainterPath>
#include <QScreen>
#include <QStyleHints>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>

namespace stowpocket {

void FramelessWindow::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        grab_ = event->position().toPoint();
}

/// Not every window manager can move windows. Without that help the window follows the pointer itself.
void FramelessWindow::mouseMoveEvent(QMouseEvent* event) {
    if (!grab_ || !event->buttons().testFlag(Qt::LeftButton))
        return;
    const QPoint offset = event->position().toPoint() - *grab_;
    if (offset.manhattanLength() < QGuiApplication::styleHints()->startDragDistance())
        return;
    if (windowHandle()->startSystemMove())
        grab_.reset();
    else
        move(pos() + offset);
}

void ClosableWindow::keyPressEvent(QKeyEvent* event) {
    const bool isControlW = event->key() == Qt::Key_W && event->modifiers() == Qt::ControlModifier;
    if (event->key() == Qt::Key_Escape || isControlW)
        close();
    else
        QWidget::keyPressEvent(event);
}

QtWindow::QtWindow(const QString& title, const QSize& contentSize, Level level, std::unique_ptr<QWidget> content,
                   Frame frame)
    : window_(frame == Frame::none ? new FramelessWindow : new ClosableWindow) {
    constexpr Qt::WindowFlags titled = Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint;
    window_->setWindowFlags(Qt::Window | (frame == Frame::none ? Qt::FramelessWindowHint : titled));
    window_->setWindowFlag(Qt::WindowStaysOnTopHint, level == Level::floating);
    window_->setAttribute(Qt::WA_DeleteOnClose);
    window_->setWindowTitle(title);
    window_->setFixedSize(contentSize);
    auto* const layout = new QVBoxLayout(window_);
    layout->setContentsMargins({});
    layout->addWidget(content.release());
}

void QtWindow::roundCorners(double radius, bool blends) {
    if (blends) {
        window_->setAttribute(Qt::WA_TranslucentBackground);
        return;
    }
    QPainterPath shape;
    shape.addRoundedRect(window_->rect(), radius, radius);
    window_->setMask(QRegion(shape.toFillPolygon().toPolygon()));
}

void QtWindow::center() {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (screen == nullptr || !window_)
        return;
    QRect place(QPoint(), window_->size());
    place.moveCenter(screen->availableGeometry().center());
    window_->move(place.topLeft());
}

void QtWindow::makeKeyAndOrderFront() {
    if (!window_)
        return;
    window_->show();
    window_->raise();
    window_->activateWindow();
}

void QtWindow::orderFrontRegardless() {
    if (window_)
        window_->raise();
}

void QtWindow::close() {
    if (window_)
        window_->close();
}

void DeferredWindow::center() {
    isCentered_ = true;
    if (window_)
        window_->center();
}

void DeferredWindow::makeKeyAndOrderFront() {
    if (window_)
        return window_->makeKeyAndOrderFront();
    request_ = std::make_shared<Request>();
    later_([this, request = std::weak_ptr(request_)] {
        if (!request.expired())
            appear();
    });
}

void DeferredWindow::orderFrontRegardless() {
    if (window_)
        window_->orderFrontRegardless();
}

void DeferredWindow::close() {
    request_.reset();
    if (window_)
        window_->close();
}

void DeferredWindow::appear() {
    request_.reset();
    window_ = make_();
    if (isCentered_)
        window_->center();
    window_->makeKeyAndOrderFront();
}

/// Here windows have the keyboard focus, not programs. If none of our windows can take it, there is nothing to do. A
/// window that already has it keeps it.
void popUpAfterClick(QMenu& menu, const QPoint& place) {
    const auto show = [&menu, place] {
        QApplication::activePopupWidget() == nullptr ? menu.popup(place) : menu.deleteLater();
    };
    // The keys that follow one that asks for the menu are the menu's.
    if (QGuiApplication::mouseButtons() == Qt::NoButton)
        return show();
    QMetaObject::invokeMethod(&menu, show, Qt::QueuedConnection);
}

void QtApplication::activate() {
    if (QApplication::activeWindow() != nullptr)
        return;
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window->windowFlags().testFlag(Qt::WindowDoesNotAcceptFocus))
            continue;
        window->activateWindow();
        return;
    }
}

void QtApplication::terminate() {
    QCoreApplication::exit();
}

std::optional<double> QtMainScreen::backingScaleFactor() const {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? std::nullopt : std::optional(screen->devicePixelRatio());
}

int MotionlessStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                               QStyleHintReturn* returnData) const {
    if (hint == SH_Widget_Animate || hint == SH_Widget_Animation_Duration)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

}  // namespace stowpocket
