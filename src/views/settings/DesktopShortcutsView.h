// SPDX-License-Identifier: MIT
#pragma once

#include "app/DesktopShortcuts.h"

#include <QWidget>

#include <array>
#include <cstddef>
#include <memory>

namespace stowpocket {

class Button;
class Text;
class Toggle;

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
