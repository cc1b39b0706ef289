// SPDX-License-Identifier: MIT
#include "views/onboarding/OnboardingButton.h"

#include "views/controls/Drawing.h"
#include "views/controls/Theme.h"

#include <QKeyEvent>
#include <QPainter>

#include <utility>

namespace stowpocket {
namespace {

constexpr int faceHeight = 40;
constexpr int horizontalPadding = 22;
constexpr int labelSpacing = 8;
constexpr double cornerRadius = 10;
constexpr int hoverLightness = 107;  // percent
constexpr int pressedDarkness = 115;
constexpr float shimmerOpacity = 0.28F;
constexpr double focusRingWidth = 2;
constexpr double focusRingGap = 2;
/// While the button is scaled, its arrow is drawn from a larger picture and stays sharp.
constexpr double oversampling = 2;

/// As an outline the text can have any size between two pixels; drawn glyph by glyph it would tremble.
QPainterPath outline(const QString& text, int pointSize) {
    QPainterPath path;
    path.addText(0, 0, Theme::font(pointSize, FontWeight::semibold), text);
    return path;
}

QSize sizeOf(const QString& text, const OnboardingButton::Style& style) {
    const QFontMetrics metrics(Theme::font(style.textPointSize, FontWeight::semibold));
    const int label = metrics.horizontalAdvance(text) + labelSpacing + Symbol::side(style.symbolPointSize);
    return {label + 2 * (horizontalPadding + OnboardingButton::margin), faceHeight + 2 * OnboardingButton::margin};
}

}  // namespace

OnboardingButton::OnboardingButton(const QString& text, Style style, std::function<void()> action)
    : style_(style),
      label_(outline(text, style.textPointSize)),
      size_(sizeOf(text, style)),
      picture_(size_, [this](QPainter& painter) { paintFace(painter); }) {
    setText(text);
    setFont(Theme::font(style.textPointSize, FontWeight::semibold));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QAbstractButton::clicked, [action = std::move(action)] { action(); });
}

void OnboardingButton::setPresentation(const OnboardingPresentation::Button& shown) {
    setAttribute(Qt::WA_TransparentForMouseEvents, shown.opacity <= 0);
    if (shown_.opacity == shown.opacity && shown_.scale == shown.scale)
        return;
    shown_ = shown;
    update();
}

void OnboardingButton::setShimmerPhase(double phase) {
    if (shimmerPhase_ == phase)
        return;
    shimmerPhase_ = phase;
    update();
}

QRectF OnboardingButton::face() const {
    return QRectF(rect()).adjusted(margin, margin, -margin, -margin);
}

QColor OnboardingButton::faceColor() const {
    const QColor accent = Theme::color(ColorRole::accent, palette());
    if (isDown())
        return accent.darker(pressedDarkness);
    return underMouse() ? accent.lighter(hoverLightness) : accent;
}

bool OnboardingButton::hitButton(const QPoint& position) const {
    return face().contains(position);
}

void OnboardingButton::paintEvent(QPaintEvent*) {
    if (shown_.opacity <= 0)
        return;
    QPainter painter(this);
    FadingView::applyOpacity(painter, *this);
    painter.setOpacity(painter.opacity() * shown_.opacity);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF centre = face().center();
    painter.translate(centre);
    painter.scale(shown_.scale, shown_.scale);
    painter.translate(-centre);
    if (shown_.scale == 1)
        painter.drawImage(0, 0, picture_.image(devicePixelRatioF(), faceColor()));
    else
        paintFace(painter);
    paintShimmer(painter);
    if (hasFocus() && isFocusSeen_)
        paintFocusRing(painter);
}

void OnboardingButton::paintFace(QPainter& painter) const {
    const QRectF box = face();
    painter.fillPath(continuousRoundedRect(box, cornerRadius), faceColor());

    const QColor color = palette().color(QPalette::Window);
    const double baseline = box.center().y() + QFontMetricsF(font()).capHeight() / 2;
    painter.fillPath(label_.translated(box.left() + horizontalPadding, baseline), color);

    const int side = Symbol::side(style_.symbolPointSize);
    const QRectF arrow(box.right() - horizontalPadding - side, box.center().y() - side / 2.0, side, side);
    const double ratio = devicePixelRatioF() * (shown_.scale == 1 ? 1 : oversampling);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(arrow,
                      Symbol::image("arrow.right", style_.symbolPointSize, FontWeight::semibold, {color}, ratio));
}

void OnboardingButton::paintShimmer(QPainter& painter) const {
    if (shimmerPhase_ == 0)
        return;  // it has not started, and one of the buttons has none
    const QRectF box = face();
    const Shimmer band = shimmer(box.width(), shimmerPhase_);
    const QRectF lit = QRectF(box.left() + band.leadingEdge, box.top(), band.width, box.height()) & box;
    if (lit.isEmpty())
        return;
    QLinearGradient light(box.left() + band.leadingEdge, 0, box.left() + band.leadingEdge + band.width, 0);
    light.setColorAt(0, QColor(255, 255, 255, 0));
    light.setColorAt(0.5, QColor::fromRgbF(1, 1, 1, shimmerOpacity));
    light.setColorAt(1, QColor(255, 255, 255, 0));
    const double corner = 2 * cornerRadius;
    if (lit.left() < box.left() + corner || lit.right() > box.right() - corner)
        painter.fillPath(continuousRoundedRect(box, cornerRadius), light);
    else
        painter.fillRect(lit, light);  // most of the way, and much cheaper
}

void OnboardingButton::paintFocusRing(QPainter& painter) const {
    constexpr double distance = focusRingGap + focusRingWidth / 2;
    painter.strokePath(
        continuousRoundedRect(face().adjusted(-distance, -distance, distance, distance), cornerRadius + distance),
        QPen(Theme::color(ColorRole::focus, palette()), focusRingWidth));
}

/// A key that is held down has already pressed the button of the previous screen.
void OnboardingButton::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !event->isAutoRepeat())
        click();
    else if (!isReturn)
        QAbstractButton::keyPressEvent(event);
}

void OnboardingButton::focusInEvent(QFocusEvent* event) {
    const Qt::FocusReason reason = event->reason();
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
        isFocusSeen_ = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
    QAbstractButton::focusInEvent(event);
}

}  // namespace stowpocket
