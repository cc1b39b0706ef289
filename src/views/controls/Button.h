// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Compose.h"

#include <QPushButton>

#include <functional>
#include <string>

namespace stowpocket {

/// Paints the focus ring along the inside of `rect`. Paints nothing unless `view` has the keyboard focus.
void paintFocusRing(QPainter& painter, const QWidget& view, const QRectF& rect, double radius);

/// Base of the buttons that paint themselves. Return presses them like Space.
class PaintedButton : public QPushButton {
public:
    explicit PaintedButton(std::function<void()> action);

    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

/// A button that consists only of its label, a symbol or a text. Assistive technology reads its accessible name.
/// The named constructors say what it looks like.
class Button : public PaintedButton {
public:
    [[nodiscard]] static Button* ofSymbol(std::string_view symbolName, SymbolStyle style,
                                          const QString& accessibleName, std::function<void()> action);
    [[nodiscard]] static Button* ofText(const QString& text, TextStyle style, std::function<void()> action);
    /// A text on a rounded background, as in alerts.
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

/// A link to a web page: an orange text with or without a symbol, or any stack of views.
class LinkButton : public PaintedButton {
public:
    /// `symbolName` may be empty.
    LinkButton(const QString& text, std::string_view symbolName, std::function<void()> action);
    /// All of `stack` is the link; `accessibleName` describes it in words.
    LinkButton(const QString& accessibleName, QLayout* stack, std::function<void()> action);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    LinkButton(const QString& accessibleName, std::function<void()> action);
};

}  // namespace stowpocket
