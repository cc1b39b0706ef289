// SPDX-License-Identifier: MIT
#include "platform/qt/QtWindow.h"

#include "platform/qt/FramelessWindow.h"

#include <QGuiApplication>
#include <QPainterPath>
#include <QScreen>
#include <QVBoxLayout>

namespace stowpocket {

QtWindow::QtWindow(const QString& title, const QSize& contentSize, Level level, std::unique_ptr<QWidget> content,
                   Frame frame)
    : window_(frame == Frame::none ? new FramelessWindow : new QWidget) {
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

}  // namespace stowpocket
