// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Compose.h"

#include <QPushButton>

#include <functional>
#include <string>

namespace stowpocket {

/// A button that is nothing but its label, a symbol or a text, and answers to Space and Return when it has the
/// keyboard. Assistive technology reads its name.
class Button : public QPushButton {
public:
    [[nodiscard]] static Button* ofSymbol(std::string_view symbolName, SymbolStyle style,
                                          const QString& accessibleName, std::function<void()> action);
    [[nodiscard]] static Button* ofText(const QString& text, TextStyle style, std::function<void()> action);
    /// A text on a rounded background, as alerts have them.
    [[nodiscard]] static Button* bordered(const QString& text, TextStyle style, std::function<void()> action);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    explicit Button(std::function<void()> action);

    void paintBorder(QPainter& painter) const;
    void paintFocusRing(QPainter& painter) const;

    std::string symbolName_;
    SymbolStyle symbolStyle_;
    TextStyle textStyle_;
    bool isBordered_ = false;
};

}  // namespace stowpocket
