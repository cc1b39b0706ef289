// SPDX-License-Identifier: MIT
#include "views/controls/ScrollView.h"

#include "views/controls/Compose.h"
#include "views/controls/ScrollIndicator.h"

#include <QEvent>
#include <QScrollBar>

namespace stowpocket {

ScrollView::ScrollView(QLayout* stack) : indicator_(new ScrollIndicator(*verticalScrollBar(), this)) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    QWidget* const content = group(stack);
    setWidget(content);
    // The window paints the background of all that is in it.
    content->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
}

QSize ScrollView::sizeHint() const {
    return widget()->sizeHint();
}

void ScrollView::measureContent() {
    // A layout inside another is measured anew only when it is activated, and a scroll area that is hidden does not
    // follow its content, neither then nor when it is shown with the size that it had before.
    widget()->layout()->activate();
    QEvent layoutRequest(QEvent::LayoutRequest);
    QScrollArea::event(&layoutRequest);
    updateGeometry();
}

void ScrollView::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    indicator_->setGeometry(width() - ScrollIndicator::width, 0, ScrollIndicator::width, height());
    indicator_->raise();
}

}  // namespace stowpocket
