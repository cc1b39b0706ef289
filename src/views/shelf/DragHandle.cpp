// SPDX-License-Identifier: MIT
#include "views/shelf/DragHandle.h"

#include <QApplication>
#include <QMouseEvent>

#include <utility>

namespace stowpocket {

DragHandle::DragHandle(QLayout* stack, std::function<void(QWidget& handle)> startDrag)
    : startDrag_(std::move(startDrag)) {
    setLayout(stack);
}

void DragHandle::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        pressedAt_ = event->position().toPoint();
}

void DragHandle::mouseMoveEvent(QMouseEvent* event) {
    if (!pressedAt_ ||
        (event->position().toPoint() - *pressedAt_).manhattanLength() < QApplication::startDragDistance())
        return;
    pressedAt_.reset();
    startDrag_(*this);
}

void DragHandle::mouseReleaseEvent(QMouseEvent*) {
    pressedAt_.reset();
}

}  // namespace stowpocket
