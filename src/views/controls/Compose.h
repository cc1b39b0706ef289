// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Theme.h"

#include <QBoxLayout>
#include <QFont>
#include <QLabel>
#include <QString>
#include <QStringList>

#include <initializer_list>
#include <string_view>
#include <variant>

/// The words in which a view's constructor describes the view. What these functions make belongs to the stack, and at
/// last to the view, that it is put into.
namespace stowpocket {

/// Empty room that takes what is left over.
struct Spacer {};
using Element = std::variant<QWidget*, QLayout*, Spacer>;

/// What a stack with nothing special about it leaves between its elements.
inline constexpr int defaultSpacing = 8;

struct Padding {
    int horizontal = 0;
    int top = 0;
    int bottom = top;
};

[[nodiscard]] QLayout* stack(Qt::Orientation orientation, int spacing, std::initializer_list<Element> elements);

/// Elements below each other, each as wide as the stack. Those that are hidden take no room, here and in hstack.
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
/// A view as wide as it wishes to be, in the middle of its row.
[[nodiscard]] QLayout* centred(QWidget* view);
/// Makes the stack the whole of the view.
void compose(QWidget& view, QLayout* stack);

struct TextStyle {
    int pointSize = 13;
    FontWeight weight = FontWeight::regular;
    ColorRole role = ColorRole::primary;
};

/// Plain text in a colour by role; whatever it says, nothing in it is taken for markup.
class Text : public QLabel {
public:
    Text(const QString& text, TextStyle style);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ColorRole role_;
};

[[nodiscard]] Text* text(const QString& text, TextStyle style);
/// A text that goes on in the next line where it is wider than its place.
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

/// A symbol that only decorates: nothing for assistive technology.
[[nodiscard]] QWidget* symbol(std::string_view name, SymbolStyle style);
[[nodiscard]] QWidget* divider();

/// A stack as one view, to be shown and hidden as a whole.
[[nodiscard]] QWidget* group(QLayout* stack);

struct Background {
    ColorRole role = ColorRole::controlBackground;
    double opacity = 1;
    /// As large as the panel allows when it is larger: a capsule.
    double cornerRadius = 0;
};
inline constexpr double capsule = 1000;

/// A stack on a background.
[[nodiscard]] QWidget* panel(QLayout* stack, Background background);

/// `text` broken into at most two lines of that width, between words where they fit and within one where it does
/// not. What is too long loses the middle of its second line, so that the end of a file name stays.
[[nodiscard]] QStringList brokenIntoTwoLines(const QString& text, const QFont& font, int width);

/// `text` broken into as many lines of that width as it takes.
[[nodiscard]] QStringList brokenIntoLines(const QString& text, const QFont& font, int width);

}  // namespace stowpocket
