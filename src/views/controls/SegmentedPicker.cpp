// SPDX-License-Identifier: MIT
#include "views/controls/SegmentedPicker.h"

#include "views/controls/AccessibleRole.h"
#include "views/controls/Compose.h"
#include "views/controls/PaintedButton.h"

#include <QPainter>

namespace stowpocket {
namespace {

constexpr QSize segmentSize(46, 22);
constexpr int trackPadding = 2;
constexpr double trackRadius = 7;
constexpr double segmentRadius = 5;
constexpr double trackOpacity = 0.08;
constexpr int labelPointSize = 12;

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
        painter.setFont(Theme::font(labelPointSize, isChecked() ? FontWeight::semibold : FontWeight::regular));
        painter.setPen(Theme::color(isChecked() ? ColorRole::onBanner : ColorRole::primary, palette()));
        painter.drawText(rect(), Qt::AlignCenter, text());
        paintFocusRing(painter, *this, rect(), segmentRadius);
    }
};

}  // namespace

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
