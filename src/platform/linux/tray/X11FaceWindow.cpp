// SPDX-License-Identifier: MIT
#include "platform/linux/tray/X11FaceWindow.h"

#include "platform/qt/QtDrops.h"

#include <QDragEnterEvent>

namespace stowpocket {
namespace {

void answer(QDropEvent& event, DragOperation operation) {
    if (operation == DragOperation::none || !event.possibleActions().testFlag(Qt::CopyAction))
        return event.ignore();
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

}  // namespace

X11FaceWindow::X11FaceWindow(const StatusItemFace& face, IncomingDrops& drops) : face_(face), drops_(drops) {
    setWindowFlags(Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setFocusPolicy(Qt::NoFocus);
}

void X11FaceWindow::showFace() {
    if (isVisible())
        describe();
    update();
}

void X11FaceWindow::showEvent(QShowEvent*) {
    describe();
}

/// The first description of a program waits for the accessibility bus, which is not to delay the icon.
void X11FaceWindow::describe() {
    const QString description = QString::fromStdString(face_.image.accessibilityDescription);
    setAccessibleName(description);
    setToolTip(description);
}

void X11FaceWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (!face_.dropView || !offersAnyOf(*event->mimeData(), face_.dropView->registeredDraggedTypes(), drops_))
        return event->ignore();
    QtDraggingPasteboard pasteboard(*event->mimeData(), drops_);
    answer(*event, face_.dropView->draggingEntered(pasteboard));
    // A drag that was turned away is not heard of again.
    hovered.emit(event->isAccepted());
}

void X11FaceWindow::dragMoveEvent(QDragMoveEvent* event) {
    if (!face_.dropView)
        return event->ignore();
    QtDraggingPasteboard pasteboard(*event->mimeData(), drops_);
    answer(*event, face_.dropView->draggingUpdated(pasteboard));
}

void X11FaceWindow::dragLeaveEvent(QDragLeaveEvent*) {
    hovered.emit(false);
}

void X11FaceWindow::dropEvent(QDropEvent* event) {
    if (!face_.dropView)
        return event->ignore();
    QtDraggingPasteboard pasteboard(*event->mimeData(), drops_);
    answer(*event, face_.dropView->performDragOperation(pasteboard) ? DragOperation::copy : DragOperation::none);
    dropped.emit();
}

}  // namespace stowpocket
