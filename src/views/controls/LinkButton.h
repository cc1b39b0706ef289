// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Compose.h"
#include "views/controls/PaintedButton.h"

#include <string>

namespace stowpocket {

/// Opens a page elsewhere: an orange text, with or without a symbol, or whatever view is put into it.
class LinkButton : public PaintedButton {
public:
    /// `symbolName` may be empty.
    LinkButton(const QString& text, std::string_view symbolName, std::function<void()> action);
    /// Everything in `stack` is the link; `accessibleName` says it in words.
    LinkButton(const QString& accessibleName, QLayout* stack, std::function<void()> action);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    LinkButton(const QString& accessibleName, std::function<void()> action);
};

}  // namespace stowpocket
