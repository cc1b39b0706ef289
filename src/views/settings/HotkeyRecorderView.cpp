// SPDX-License-Identifier: MIT
#include "views/settings/HotkeyRecorderView.h"

#include "views/controls/Button.h"
#include "views/controls/Theme.h"

#include <QAccessible>
#include <QPainter>

#include <algorithm>

namespace stowpocket {
namespace {

using State = HotkeyRecorderPresentation::State;

constexpr int pointSize = 12;
constexpr int paddingHorizontal = 10;
constexpr int paddingVertical = 4;
constexpr double radius = 5;
constexpr int frameWidth = 130;

constexpr double recordingFill = 0.15;
constexpr double recordingBorder = 0.4;
constexpr double idleFill = 0.1;

ColorRole textRole(State state) {
    switch (state) {
    case State::recording:
        return ColorRole::orange;
    case State::set:
        return ColorRole::primary;
    case State::none:
        return ColorRole::secondary;
    }
    return ColorRole::primary;
}

constexpr int warningSpacing = 2;
constexpr int warningPointSize = 10;
constexpr int clearPointSize = 12;

}  // namespace

ShortcutButton::ShortcutButton(std::function<void()> action) : PaintedButton(std::move(action)) {
    setFont(Theme::font(pointSize, FontWeight::medium));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ShortcutButton::showShortcut(const HotkeyRecorderPresentation& shown) {
    state_ = shown.state;
    setText(QString::fromStdString(shown.text));
    updateGeometry();
    update();
}

QSize ShortcutButton::sizeHint() const {
    const QFontMetrics metrics(font());
    return {std::max(frameWidth, metrics.horizontalAdvance(text()) + 2 * paddingHorizontal),
            metrics.height() + 2 * paddingVertical};
}

/// A text that is too long for its place is elided.
QSize ShortcutButton::minimumSizeHint() const {
    return {frameWidth, sizeHint().height()};
}

void ShortcutButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QFontMetrics metrics(font());
    const QString words = metrics.elidedText(text(), Qt::ElideRight, width() - 2 * paddingHorizontal);
    const QRectF shape(0, 0, metrics.horizontalAdvance(words) + 2 * paddingHorizontal, height());

    const bool isRecording = state_ == State::recording;
    painter.setPen(Qt::NoPen);
    painter.setBrush(isRecording ? Theme::color(ColorRole::orange, palette(), recordingFill)
                                 : Theme::color(ColorRole::secondary, palette(), idleFill));
    painter.drawRoundedRect(shape, radius, radius);
    if (isRecording) {
        constexpr double half = 0.5;  // of the border, so that it lies inside the shape
        painter.setPen(Theme::color(ColorRole::orange, palette(), recordingBorder));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(shape.adjusted(half, half, -half, -half), radius - half, radius - half);
    }
    painter.setPen(Theme::color(textRole(state_), palette()));
    painter.drawText(shape, Qt::AlignCenter, words);
    if (!isRecording)  // its border is enough, and it gets all keys
        paintFocusRing(painter, *this, shape, radius);
}

HotkeyRecorderView::HotkeyRecorderView(std::shared_ptr<HotkeyRecorder> recorder, const QString& label)
    : recorder_(std::move(recorder)),
      label_(text(label, {})),
      shortcut_(new ShortcutButton([this] { recorder_->toggleRecording(); })),
      clear_(Button::ofSymbol("xmark.circle.fill", {.pointSize = clearPointSize, .role = ColorRole::secondary},
                              QStringLiteral("Clear %1 shortcut").arg(label), [this] { recorder_->clear(); })),
      warning_(text(QStringLiteral("Conflicts with the other shortcut"),
                    {.pointSize = warningPointSize, .role = ColorRole::red})),
      observation_(recorder_->changed.connect([this] { refresh(); })) {
    compose(*this, vstack(warningSpacing, hstack(defaultSpacing, label_, shortcut_, Spacer{}, clear_), warning_));
    refresh();
}

int HotkeyRecorderView::labelWidth() const {
    return label_->sizeHint().width();
}

void HotkeyRecorderView::setLabelWidth(int width) {
    label_->setFixedWidth(width);
}

void HotkeyRecorderView::refresh() {
    const HotkeyRecorderPresentation shown = recorder_->shown();
    const bool beganToConflict = shown.conflicts && warning_->isHidden();
    shortcut_->showShortcut(shown);
    // Screen readers announce a changed name.
    shortcut_->setAccessibleName(label_->text() + QStringLiteral(", ") + shortcut_->text());
    clear_->setVisible(shown.showsClearButton);
    warning_->setVisible(shown.conflicts);
    if (beganToConflict) {
        QAccessibleEvent alert(warning_, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

}  // namespace stowpocket
