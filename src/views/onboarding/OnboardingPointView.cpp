// SPDX-License-Identifier: MIT
#include "views/onboarding/OnboardingPointView.h"

#include "views/controls/Compose.h"
#include "views/controls/Layer.h"
#include "views/controls/Symbol.h"
#include "views/controls/TextLines.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace stowpocket {
namespace {

constexpr int symbolFrame = 24;
constexpr int symbolPointSize = 16;
constexpr int symbolSpacing = 12;
constexpr int textPointSize = 14;

/// The same for every font: those with much room between their lines would not leave enough for the button.
constexpr int lineHeight = 17;
constexpr int textLeft = symbolFrame + symbolSpacing;

/// The middle of the first line is that of the symbol.
int firstLineTop() {
    return (Symbol::side(symbolPointSize) - lineHeight) / 2;
}

}  // namespace

OnboardingPointView::OnboardingPointView(std::string_view symbolName, const QString& text, int width)
    : QLabel(text),
      symbolName_(symbolName),
      lines_(brokenIntoLines(text, Theme::font(textPointSize), width - textLeft)) {
    setTextFormat(Qt::PlainText);
    setFont(Theme::font(textPointSize));
    const int textHeight = firstLineTop() + static_cast<int>(lines_.size()) * lineHeight;
    setFixedSize(width, std::max(textHeight, Symbol::side(symbolPointSize)) + travel);
}

void OnboardingPointView::evaluate(const OnboardingPresentation::Point& shown) {
    if (shown_.opacity == shown.opacity && shown_.offset == shown.offset)
        return;
    shown_ = shown;
    update();
}

/// The movement stops at the pixels of the screen; text and symbol would blur between them.
void OnboardingPointView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Layer::applyOpacity(painter, *this);
    painter.setOpacity(painter.opacity() * shown_.opacity);
    const double ratio = devicePixelRatioF();
    painter.translate(0, std::round(shown_.offset * ratio) / ratio);

    const int side = Symbol::side(symbolPointSize);
    drawSymbol(painter, QRectF((symbolFrame - side) / 2.0, 0, side, side), symbolName_,
               {.pointSize = symbolPointSize, .weight = FontWeight::medium, .role = ColorRole::accent}, *this);
    painter.setPen(Theme::color(ColorRole::secondary, palette()));
    QRect place(textLeft, firstLineTop(), width() - textLeft, lineHeight);
    for (const QString& line : lines_) {
        painter.drawText(place, Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip, line);
        place.translate(0, lineHeight);
    }
}

}  // namespace stowpocket
