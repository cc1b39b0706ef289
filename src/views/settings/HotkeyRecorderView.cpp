// SPDX-License-Identifier: MIT
#include "views/settings/HotkeyRecorderView.h"

#include "views/controls/Button.h"
#include "views/controls/ShortcutButton.h"

#include <QAccessible>

namespace stowpocket {
namespace {

constexpr int warningSpacing = 2;
constexpr int warningPointSize = 10;
constexpr int clearPointSize = 12;

}  // namespace

HotkeyRecorderView::HotkeyRecorderView(std::shared_ptr<HotkeyRecorder> recorder, const QString& label)
    : recorder_(std::move(recorder)),
      label_(text(label, {})),
      shortcut_(new ShortcutButton([this] { recorder_->toggleRecording(); })),
      clear_(Button::ofSymbol("xmark.circle.fill", {.pointSize = clearPointSize, .role = ColorRole::secondary},
                              QStringLiteral("Clear %1 shortcut").arg(label), [this] { recorder_->clear(); })),
      warning_(text(QStringLiteral("Conflicts with the other shortcut"),
                    {.pointSize = warningPointSize, .role = ColorRole::red})),
      observation_(recorder_->changed.connect([this] { evaluate(); })) {
    compose(*this, vstack(warningSpacing, hstack(defaultSpacing, label_, shortcut_, Spacer{}, clear_), warning_));
    evaluate();
}

int HotkeyRecorderView::labelWidth() const {
    return label_->sizeHint().width();
}

void HotkeyRecorderView::setLabelWidth(int width) {
    label_->setFixedWidth(width);
}

void HotkeyRecorderView::evaluate() {
    const HotkeyRecorderPresentation shown = recorder_->shown();
    const bool beganToConflict = shown.conflicts && warning_->isHidden();
    shortcut_->showShortcut(shown);
    // A changed name is read out.
    shortcut_->setAccessibleName(label_->text() + QStringLiteral(", ") + shortcut_->text());
    clear_->setVisible(shown.showsClearButton);
    warning_->setVisible(shown.conflicts);
    if (beganToConflict) {
        QAccessibleEvent alert(warning_, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

}  // namespace stowpocket
