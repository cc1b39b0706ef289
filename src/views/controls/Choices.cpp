// SPDX-License-Identifier: MIT
#include "views/controls/Choices.h"

#include "views/controls/Compose.h"
#include "views/controls/Theme.h"

#include <QPainter>

#include <algorithm>
#include <array>

namespace stowpocket {
namespace {

constexpr QSize switchSize(36, 20);
constexpr double knobMargin = 2;
constexpr double offOpacity = 0.28;

constexpr int boxSide = 14;
constexpr double boxRadius = 3.5;
constexpr double boxBorderOpacity = 0.5;
constexpr int labelLeft = 6;
constexpr int labelPointSize = 13;
constexpr int margin = 3;

constexpr QSize segmentSize(46, 22);
constexpr int trackPadding = 2;
constexpr double trackRadius = 7;
constexpr double segmentRadius = 5;
constexpr double trackOpacity = 0.08;
constexpr int segmentPointSize = 12;

class Segment : public ChoiceButton {
public:
    Segment(const QString& label, std::function<void()> action) : ChoiceButton(std::move(action)) {
        setText(label);
        setFixedSize(segmentSize);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        paintChosen(painter, segmentRadius);
        painter.setFont(Theme::font(segmentPointSize, isChecked() ? FontWeight::semibold : FontWeight::regular));
        painter.setPen(Theme::color(isChecked() ? ColorRole::onBanner : ColorRole::primary, palette()));
        painter.drawText(rect(), Qt::AlignCenter, text());
        paintFocusRing(painter, *this, rect(), segmentRadius);
    }
};

}  // namespace

ChoiceButton::ChoiceButton(std::function<void()> action) : PaintedButton(std::move(action)) {
    setCheckable(true);
    setAutoExclusive(true);
}

void ChoiceButton::setChosen(bool chosen) {
    setAutoExclusive(chosen);  // an exclusive button cannot be unchecked
    setChecked(chosen);
    setAutoExclusive(true);
}

void ChoiceButton::paintChosen(QPainter& painter, double radius) const {
    if (!isChecked())
        return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::color(ColorRole::accentFill, palette()));
    painter.drawRoundedRect(rect(), radius, radius);
}

Toggle::Toggle(Style style, const QString& label, std::function<void(bool)> onChange) : style_(style) {
    setText(label);
    setFont(Theme::font(labelPointSize));
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(style == Style::switchControl ? QSizePolicy::Expanding : QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QCheckBox::clicked, [onChange = std::move(onChange)](bool isOn) { onChange(isOn); });
}

QSize Toggle::sizeHint() const {
    const QFontMetrics metrics(font());
    if (style_ == Style::switchControl)
        return {metrics.horizontalAdvance(text()) + labelLeft + switchSize.width(), switchSize.height()};
    return {2 * margin + boxSide + labelLeft + metrics.horizontalAdvance(text()),
            2 * margin + std::max(boxSide, metrics.height())};
}

void Toggle::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF ring = style_ == Style::switchControl ? switchFrame() : QRectF(rect());
    if (style_ == Style::switchControl)
        paintSwitch(painter);
    else
        paintCheckbox(painter);
    paintFocusRing(painter, *this, ring, style_ == Style::switchControl ? ring.height() / 2 : boxRadius);
}

QRectF Toggle::switchFrame() const {
    return {double(width() - switchSize.width()), 0, double(switchSize.width()), double(switchSize.height())};
}

void Toggle::paintSwitch(QPainter& painter) const {
    painter.setPen(Theme::color(ColorRole::primary, palette()));
    painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeft, text());
    const QRectF frame = switchFrame();
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? Theme::color(ColorRole::accentFill, palette())
                                 : Theme::color(ColorRole::primary, palette(), offOpacity));
    painter.drawRoundedRect(frame, frame.height() / 2, frame.height() / 2);
    const double side = frame.height() - 2 * knobMargin;
    painter.setBrush(Theme::color(ColorRole::onBanner, palette()));
    const double left = isChecked() ? frame.right() - side - knobMargin : frame.left() + knobMargin;
    painter.drawEllipse(QRectF(left, knobMargin, side, side));
}

void Toggle::paintCheckbox(QPainter& painter) const {
    const int top = (height() - boxSide) / 2;
    const QRectF box(margin, top, boxSide, boxSide);
    if (isChecked()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(Theme::color(ColorRole::accentFill, palette()));
        painter.drawRoundedRect(box, boxRadius, boxRadius);
        painter.setPen(
            QPen(Theme::color(ColorRole::onBanner, palette()), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const std::array mark{box.topLeft() + QPointF(3.4, 7.4), box.topLeft() + QPointF(6, 10),
                              box.topLeft() + QPointF(10.6, 4.4)};
        painter.drawPolyline(mark.data(), int(mark.size()));
    } else {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(Theme::color(ColorRole::primary, palette(), boxBorderOpacity));
        painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), boxRadius, boxRadius);
    }
    painter.setPen(Theme::color(ColorRole::secondary, palette()));
    painter.drawText(rect().adjusted(margin + boxSide + labelLeft, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                     text());
}

SegmentedPicker::SegmentedPicker(const QString& accessibleName, const QStringList& choices,
                                 const std::function<void(std::size_t)>& onChoose) {
    setAccessibleRole(*this, QAccessible::Grouping);
    setAccessibleName(accessibleName);
    QLayout* const row = hstack(0);
    for (std::size_t index = 0; index < static_cast<std::size_t>(choices.size()); ++index) {
        segments_.push_back(new Segment(choices[qsizetype(index)], [onChoose, index] { onChoose(index); }));
        row->addWidget(segments_.back());
    }
    compose(*this, padded(row, {.horizontal = trackPadding, .top = trackPadding}));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SegmentedPicker::setChosen(std::optional<std::size_t> index) {
    for (std::size_t at = 0; at < segments_.size(); ++at)
        segments_[at]->setChosen(index == at);
}

void SegmentedPicker::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::color(ColorRole::primary, palette(), trackOpacity));
    painter.drawRoundedRect(rect(), trackRadius, trackRadius);
}

}  // namespace stowpocket
