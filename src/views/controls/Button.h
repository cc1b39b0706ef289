// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Compose.h"

#include <QPushButton>

#include <functional>
#include <string>

namespace stowpocket {

/// The ring around what has the keyboard, along the inside of `rect`; nothing while another than `view` has it.
void paintFocusRing(QPainter& painter, const QWidget& view, const QRectF& rect, double radius);

/// The base of buttons that paint themselves. Return presses them as Space does.
class PaintedButton : public QPushButton {
public:
    explicit PaintedButton(std::function<void()> action);

    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

/// A button that is nothing but its label, a symbol or a text, and answers to Space and Return when it has the
/// keyboard. Assistive technology reads its name.
class Button : public PaintedButton {
public:
    [[nodiscard]] static Button* ofSymbol(std::string_view symbolName, SymbolStyle style,
                                          const QString& accessibleName, std::function<void()> action);
    [[nodiscard]] static Button* ofText(const QString& text, TextStyle style, std::function<void()> action);
    /// A text on a rounded background, as alerts have them.
    [[nodiscard]] static Button* bordered(const QString& text, TextStyle style, std::function<void()> action);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    using PaintedButton::PaintedButton;

    void paintBorder(QPainter& painter) const;

    std::string symbolName_;
    SymbolStyle symbolStyle_;
    TextStyle textStyle_;
    bool isBordered_ = false;
};

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
