// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/HotkeyRecorder.h"
#include "views/controls/PaintedButton.h"

namespace stowpocket {

/// Shows a shortcut, or that one is being recorded, on a rounded shape as wide as the text.
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

}  // namespace stowpocket
