// SPDX-License-Identifier: MIT
#include "views/settings/ShortcutViews.h"

#include "views/controls/Button.h"
#include "views/controls/Choices.h"
#include "views/controls/ScrollView.h"
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

constexpr int spacing = 6;
constexpr int linePointSize = 12;
constexpr int copyWidth = 64;

/// The line with places to break it at, as the path of a program may be longer than the window is wide.
QString breakable(QString line) {
    constexpr char16_t zeroWidthSpace = 0x200B;
    return line.replace(u'/', QString(u'/') + QChar(zeroWidthSpace));
}

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

DesktopShortcutsView::DesktopShortcutsView(std::shared_ptr<DesktopShortcuts> shortcuts)
    : shortcuts_(std::move(shortcuts)),
      toggle_(new Toggle(Toggle::Style::switchControl, QStringLiteral("Use GNOME's custom shortcuts"),
                         [this](bool isOn) { shortcuts_->setAdded(isOn); })),
      explanation_(paragraph({}, {.pointSize = captionPointSize, .role = ColorRole::secondary})),
      lines_{line(0), line(1)},
      row_(formRow(vstack(0, this))),
      observation_(shortcuts_->changed.connect([this] { refresh(); })) {
    compose(*this, vstack(spacing, toggle_, explanation_, lines_[0].whole, lines_[1].whole));
    refresh();
}

DesktopShortcutsView::Line DesktopShortcutsView::line(std::size_t index) {
    Line line;
    line.text = paragraph({}, {.pointSize = linePointSize});
    line.copy = Button::bordered({}, {.pointSize = linePointSize}, [this, index] { copyLine(index); });
    line.copy->setFixedWidth(copyWidth);
    line.whole = group(hstack(defaultSpacing, line.text, line.copy));
    return line;
}

void DesktopShortcutsView::look() {
    labelCopies(lines_.size());
    shortcuts_->look();
}

void DesktopShortcutsView::refresh() {
    const BoundCommandsPresentation shown = shortcuts_->shown();
    toggle_->setVisible(shown.isAdded.has_value());
    toggle_->setChecked(shown.isAdded.value_or(false));
    explanation_->setText(QString::fromStdString(shown.explanation));
    for (std::size_t index = 0; index < lines_.size(); ++index)
        showLine(lines_.at(index),
                 index < shown.lines.size() ? QString::fromStdString(shown.lines[index]) : QString());
    row_->setVisible(!shown.explanation.empty());
}

void DesktopShortcutsView::showLine(const Line& line, const QString& words) {
    const bool isAnother = line.text->accessibleName() != words;
    line.text->setText(breakable(words));
    line.text->setAccessibleName(words);
    line.whole->setHidden(words.isEmpty());
    if (isAnother)
        labelCopies(lines_.size());
}

void DesktopShortcutsView::copyLine(std::size_t index) {
    shortcuts_->copyLine(index);
    labelCopies(index);
}

void DesktopShortcutsView::labelCopies(std::size_t copied) {
    for (std::size_t each = 0; each < lines_.size(); ++each) {
        const Line& line = lines_.at(each);
        line.copy->setText(each == copied ? QStringLiteral("Copied") : QStringLiteral("Copy"));
        line.copy->setAccessibleName(line.copy->text() + u' ' + line.text->accessibleName());
    }
}

}  // namespace stowpocket
