// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>
#include <vector>

class QPoint;
class QWidget;

namespace stowpocket {

struct MenuEntry {
    QString title;
    std::function<void()> action;
    bool isEnabled = true;
    /// Whether a line separates it from the entry before.
    bool beginsGroup = false;
};

/// Opens a menu in the desktop's own look at this point of the screen and returns at once. The menu closes with the
/// window of `owner`.
void popUpMenu(QWidget& owner, const QPoint& point, const std::vector<MenuEntry>& entries);

}  // namespace stowpocket
