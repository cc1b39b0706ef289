// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/HotkeyRecorder.h"

#include <QWidget>

namespace stowpocket {

class Button;
class ShortcutButton;
class Text;

/// The control for one shortcut: its caption, a button that shows the shortcut and records another one, a button that
/// clears it, and a warning while it conflicts with the other shortcut.
class HotkeyRecorderView : public QWidget {
public:
    HotkeyRecorderView(std::shared_ptr<HotkeyRecorder> recorder, const QString& label);

    /// For recorders below each other, whose buttons begin in one line.
    [[nodiscard]] int labelWidth() const;
    void setLabelWidth(int width);

private:
    void evaluate();

    const std::shared_ptr<HotkeyRecorder> recorder_;
    Text* const label_;
    ShortcutButton* const shortcut_;
    Button* const clear_;
    Text* const warning_;
    const Subscription observation_;
};

}  // namespace stowpocket
