// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Theme.h"

#include <QAccessible>
#include <QBoxLayout>
#include <QFont>
#include <QLabel>
#include <QString>
#include <QStringList>

#include <initializer_list>
#include <string_view>
#include <variant>

/// The vocabulary in which a view's constructor describes the view. What these functions create is owned by the stack
/// it is added to, and finally by the view.
namespace stowpocket {

/// Empty space that takes all remaining room.
struct Spacer {};
using Element = std::variant<QWidget*, QLayout*, Spacer>;

/// The usual space between the elements of a stack.
inline constexpr int defaultSpacing = 8;

struct Padding {
    int horizontal = 0;
    int top = 0;
    int bottom = top;
};

[[nodiscard]] QLayout* stack(Qt::Orientation orientation, int spacing, std::initializer_list<Element> elements);

/// Elements below each other, each as wide as the stack. Hidden elements take no room, here and in hstack.
template <class... Elements>
[[nodiscard]] QLayout* vstack(int spacing, Elements... elements) {
    return stack(Qt::Vertical, spacing, {Element(elements)...});
}

/// Elements beside each other, centred on one line.
template <class... Elements>
[[nodiscard]] QLayout* hstack(int spacing, Elements... elements) {
    return stack(Qt::Horizontal, spacing, {Element(elements)...});
}

[[nodiscard]] QLayout* padded(QLayout* stack, Padding padding);
[[nodiscard]] QLayout* padded(QWidget* view, Padding padding);
/// A view at its preferred width in the middle of its row.
[[nodiscard]] QLayout* centred(QWidget* view);
/// Makes the stack the view's entire content.
void compose(QWidget& view, QLayout* stack);

struct TextStyle {
    int pointSize = 13;
    FontWeight weight = FontWeight::regular;
    ColorRole role = ColorRole::primary;
};

/// Plain text in the colour of a role. It is never interpreted as markup.
class Text : public QLabel {
public:
    Text(const QString& text, TextStyle style);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ColorRole role_;
};

[[nodiscard]] Text* text(const QString& text, TextStyle style);
/// A text that wraps at the width of its place.
[[nodiscard]] Text* paragraph(const QString& text, TextStyle style,
                              Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter);
[[nodiscard]] QString displayText(std::string_view utf8);

struct SymbolStyle {
    int pointSize = 13;
    FontWeight weight = FontWeight::regular;
    ColorRole role = ColorRole::primary;
    double opacity = 1;
    ColorRole secondaryRole = role;
};

/// Draws a symbol in the middle of `rect` in the colours of `view`.
void drawSymbol(QPainter& painter, const QRectF& rect, std::string_view name, const SymbolStyle& style,
                const QWidget& view);

/// A decorative symbol, ignored by assistive technology.
[[nodiscard]] QWidget* symbol(std::string_view name, SymbolStyle style);
[[nodiscard]] QWidget* divider();

/// A stack as one view that can be shown and hidden as a whole.
[[nodiscard]] QWidget* group(QLayout* stack);

struct Background {
    ColorRole role = ColorRole::controlBackground;
    double opacity = 1;
    /// Limited to half the panel's size, which gives a capsule.
    double cornerRadius = 0;
};
inline constexpr double capsule = 1000;

/// A stack on a background.
[[nodiscard]] QWidget* panel(QLayout* stack, Background background);

/// Breaks `text` into at most two lines of that width, between words if possible. If it is too long, the middle of
/// the second line is replaced by an ellipsis, so that the end of a file name stays visible.
[[nodiscard]] QStringList brokenIntoTwoLines(const QString& text, const QFont& font, int width);

/// Breaks `text` into as many lines of that width as necessary.
[[nodiscard]] QStringList brokenIntoLines(const QString& text, const QFont& font, int width);

/// Tells assistive technology what the view is if the toolkit's own description would be wrong. Buttons with such a
/// role can be pressed, and tabs say which one is selected. Call it before setting the view's name or text, because
/// the toolkit then decides once and for all how it describes the view.
void setAccessibleRole(QWidget& view, QAccessible::Role role);

}  // namespace stowpocket
