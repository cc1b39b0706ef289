// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/HotkeyRecorder.h"
#include "views/controls/Button.h"

#include <QWidget>

namespace stowpocket {

/// Shows a shortcut, or that one is being recorded, on a rounded shape that fits the text.
class ShortcutButton : public PaintedButton {
public:
    explicit ShortcutButton(std::function<void()> action);

    void showShortcut(const HotkeyRecorderPresentation& shown);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    HotkeyRecorderPresentation::State state_ = HotkeyRecorderPresentation::State::none;
};

/// The control for one shortcut: a label, a button that shows the shortcut and records another one, a button that
/// clears it, and a warning while it conflicts with the other shortcut.
class HotkeyRecorderView : public QWidget {
public:
    HotkeyRecorderView(std::shared_ptr<HotkeyRecorder> recorder, const QString& label);

    /// Used to align the buttons of recorders below each other.
    [[nodiscard]] int labelWidth() const;
    void setLabelWidth(int width);

private:
    void refresh();

    const std::shared_ptr<HotkeyRecorder> recorder_;
    Text* const label_;
    ShortcutButton* const shortcut_;
    Button* const clear_;
    Text* const warning_;
    const Subscription observation_;
};

}  // namespace stowpocket
