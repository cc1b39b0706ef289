// SPDX-License-Identifier: MIT
#include "views/settings/DesktopShortcutsView.h"

#include "views/controls/Button.h"
#include "views/controls/Choices.h"
#include "views/controls/ScrollView.h"

namespace stowpocket {
namespace {

constexpr int spacing = 6;
constexpr int linePointSize = 12;
constexpr int copyWidth = 64;

/// The line with places to break it at, as the path of a program may be longer than the window is wide.
QString breakable(QString line) {
    constexpr char16_t zeroWidthSpace = 0x200B;
    return line.replace(u'/', QString(u'/') + QChar(zeroWidthSpace));
}

}  // namespace

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
