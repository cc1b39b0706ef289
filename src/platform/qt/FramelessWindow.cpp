// SPDX-License-Identifier: MIT
#include "platform/qt/FramelessWindow.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWindow>

namespace stowpocket {

void FramelessWindow::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        grab_ = event->position().toPoint();
}

/// Not every window manager offers to move windows; without that the window follows the pointer itself.
void FramelessWindow::mouseMoveEvent(QMouseEvent* event) {
    if (!grab_ || !event->buttons().testFlag(Qt::LeftButton))
        return;
    const QPoint way = event->position().toPoint() - *grab_;
    if (way.manhattanLength() < QGuiApplication::styleHints()->startDragDistance())
        return;
    if (windowHandle()->startSystemMove())
        grab_.reset();
    else
        move(pos() + way);
}

void FramelessWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

}  // namespace stowpocket
