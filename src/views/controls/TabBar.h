// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <functional>

namespace stowpocket {

/// The row of tabs of the settings window; the first one is selected to begin with.
class TabBar : public QWidget {
public:
    /// `onSelect` gets the id of the tab that the user chose.
    explicit TabBar(const std::function<void(int)>& onSelect);
};

}  // namespace stowpocket
