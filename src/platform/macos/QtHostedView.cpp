// SPDX-License-Identifier: MIT
#include "platform/macos/QtHostedView.h"

#include <QKeyEvent>
#include <QScreen>

namespace stowpocket {
namespace {

/// What a popover itself takes around its content: the arrow, and some air at the edge of the screen.
constexpr QSize aroundContent{24, 48};

}  // namespace

QtHostedView::QtHostedView(std::unique_ptr<QWidget> content, std::optional<QSize> fixedSize)
    : content_(std::move(content)), fixedSize_(fixedSize) {
    content_->setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    content_->setAttribute(Qt::WA_QuitOnClose, false);
    content_->installEventFilter(&watch_);
    announced_ = size();
}

void* QtHostedView::nativeView() {
    return reinterpret_cast<void*>(content_->winId());  // on macOS the identifier of a window is its NSView
}

Size QtHostedView::size() const {
    const QSize largest = content_->screen()->availableSize() - aroundContent;
    const QSize wanted = fixedSize_.value_or(content_->sizeHint().expandedTo(content_->minimumSizeHint()));
    const QSize size = wanted.boundedTo(largest);
    return {static_cast<double>(size.width()), static_cast<double>(size.height())};
}

void QtHostedView::layoutRequested() {
    const Size wanted = size();
    if (wanted == announced_)
        return;
    announced_ = wanted;
    sizeChanged_.emit();
}

bool QtHostedView::keyPressed(int key) {
    if (key != Qt::Key_Escape || !cancel_)
        return false;
    cancel_();
    return true;
}

bool QtHostedView::ContentWatch::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::LayoutRequest)
        view_.layoutRequested();
    else if (event->type() == QEvent::KeyPress && view_.keyPressed(static_cast<QKeyEvent*>(event)->key()))
        return true;
    return QObject::eventFilter(watched, event);
}

}  // namespace stowpocket
