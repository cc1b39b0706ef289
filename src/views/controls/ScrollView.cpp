// SPDX-License-Identifier: MIT
#include "views/controls/ScrollView.h"

#include "views/controls/Compose.h"
#include "views/controls/Theme.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace stowpocket {
namespace {

constexpr int indicatorWidth = 9;
constexpr int knobWidth = 5;
constexpr double minimumKnobLength = 24;
constexpr double endMargin = 2;
constexpr double knobOpacity = 0.3;
constexpr double grabbedKnobOpacity = 0.5;
/// Qt shares out fills of more than 95 lines to other threads and waits for them, which may take long.
constexpr int linesAtOnce = 64;

constexpr Padding pagePadding{.horizontal = 20, .top = 14, .bottom = 16};
constexpr int sectionSpacing = 14;
constexpr int titleBottom = 6;
constexpr int titleLeft = 10;
constexpr Padding rowPadding{.horizontal = 12, .top = 8};
constexpr int minimumRowHeight = 38;
constexpr double panelRadius = 9;

/// Paints the line between itself and the row above.
class Row : public QWidget {
public:
    explicit Row(QLayout* stack) {
        compose(*this, padded(stack, rowPadding));
        setMinimumHeight(minimumRowHeight);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        if (y() > 0)
            QPainter(this).fillRect(rowPadding.horizontal, 0, width() - 2 * rowPadding.horizontal, 1,
                                    Theme::color(ColorRole::separator, palette()));
    }
};

}  // namespace

ScrollIndicator::ScrollIndicator(QScrollBar& scrollBar, QWidget* parent) : QWidget(parent), scrollBar_(scrollBar) {
    hide();
    connect(&scrollBar, &QScrollBar::valueChanged, this, [this] { update(); });
    connect(&scrollBar, &QScrollBar::rangeChanged, this, [this](int minimum, int maximum) {
        setVisible(minimum < maximum);
        update();
    });
}

void ScrollIndicator::cover() {
    const QSize around = parentWidget()->size();
    setGeometry(around.width() - indicatorWidth, 0, indicatorWidth, around.height());
    raise();
}

QRectF ScrollIndicator::knob() const {
    const double track = height() - 2 * endMargin;
    const int range = std::max(1, scrollBar_.maximum() - scrollBar_.minimum());
    const double share = double(scrollBar_.pageStep()) / (range + scrollBar_.pageStep());
    const double length = std::clamp(track * share, std::min(minimumKnobLength, track), track);
    const double top = endMargin + (track - length) * (scrollBar_.value() - scrollBar_.minimum()) / range;
    return {(width() - knobWidth) / 2.0, top, knobWidth, length};
}

void ScrollIndicator::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::color(ColorRole::primary, palette(), grab_ ? grabbedKnobOpacity : knobOpacity));
    for (int top = 0; top < height(); top += linesAtOnce) {
        painter.setClipRect(0, top, width(), linesAtOnce);
        painter.drawRoundedRect(knob(), knobWidth / 2.0, knobWidth / 2.0);
    }
}

void ScrollIndicator::mousePressEvent(QMouseEvent* event) {
    grab_ = Grab{event->position().y(), scrollBar_.value()};
    update();
}

void ScrollIndicator::mouseMoveEvent(QMouseEvent* event) {
    const double room = height() - 2 * endMargin - knob().height();
    if (!grab_ || room <= 0)
        return;
    const double share = (event->position().y() - grab_->y) / room;
    scrollBar_.setValue(grab_->value +
                        static_cast<int>(std::lround(share * (scrollBar_.maximum() - scrollBar_.minimum()))));
}

void ScrollIndicator::mouseReleaseEvent(QMouseEvent*) {
    grab_.reset();
    update();
}

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
    // A nested layout is measured again only when it is activated. A hidden scroll area does not follow its content,
    // and does not catch up when it is shown at its old size.
    widget()->layout()->activate();
    QEvent layoutRequest(QEvent::LayoutRequest);
    QScrollArea::event(&layoutRequest);
    updateGeometry();
}

void ScrollView::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    indicator_->cover();
}

QWidget* formRow(QLayout* stack) {
    return new Row(stack);
}

QWidget* formSection(const QString& title, std::initializer_list<QWidget*> rows) {
    QLayout* const list = vstack(0);
    for (QWidget* const row : rows) {
        if (row != nullptr)
            list->addWidget(row);
    }
    QWidget* const box = panel(list, {.role = ColorRole::formBackground, .cornerRadius = panelRadius});
    if (title.isEmpty())
        return box;
    Text* const heading = text(title, {.pointSize = 13, .weight = FontWeight::semibold});
    QWidget* const section = group(vstack(titleBottom, padded(hstack(0, heading), {.horizontal = titleLeft}), box));
    setAccessibleRole(*section, QAccessible::Grouping);
    section->setAccessibleName(title);
    return section;
}

QWidget* form(std::initializer_list<QWidget*> sections) {
    QLayout* const list = vstack(sectionSpacing);
    for (QWidget* const section : sections) {
        if (section != nullptr)
            list->addWidget(section);
    }
    return new ScrollView(padded(vstack(0, list, Spacer{}), pagePadding));
}

}  // namespace stowpocket
