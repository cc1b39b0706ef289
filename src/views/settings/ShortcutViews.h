// SPDX-License-Identifier: MIT
#pragma once

#include "app/DesktopShortcuts.h"
#include "presentation/HotkeyRecorder.h"
#include "views/controls/Button.h"

#include <QWidget>

#include <array>
#include <cstddef>
#include <memory>

namespace stowpocket {

class Text;
class Toggle;

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

/// What the user can do about shortcuts that the desktop gives: a switch that adds them to the desktop's own, or
/// lines to copy into its settings.
class DesktopShortcutsView : public QWidget {
public:
    explicit DesktopShortcutsView(std::shared_ptr<DesktopShortcuts> shortcuts);

    /// The row of a form that contains this view, hidden when there is nothing to say.
    [[nodiscard]] QWidget* row() const { return row_; }
    /// Shows what is true now.
    void look();

private:
    struct Line {
        Text* text = nullptr;
        Button* copy = nullptr;
        QWidget* whole = nullptr;
    };

    [[nodiscard]] Line line(std::size_t index);
    void refresh();
    void showLine(const Line& line, const QString& words);
    void copyLine(std::size_t index);
    /// The buttons tell which of the lines was copied last, if any was.
    void labelCopies(std::size_t copied);

    const std::shared_ptr<DesktopShortcuts> shortcuts_;
    Toggle* const toggle_;
    Text* const explanation_;
    const std::array<Line, 2> lines_;
    QWidget* const row_;
    const Subscription observation_;
};

}  // namespace stowpocket
