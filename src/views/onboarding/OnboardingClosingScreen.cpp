// SPDX-License-Identifier: MIT
#include "views/onboarding/OnboardingClosingScreen.h"

#include "views/onboarding/OnboardingMetrics.h"

#include <QPainter>

namespace stowpocket {
namespace {

constexpr int badgeTop = 52;
constexpr int headlineTop = 24;
constexpr int subtextTop = 8;
constexpr int previewTop = 26;
constexpr int buttonTop = 24;

constexpr int statusItemSpacing = 7;
constexpr double panelRadius = 10;
constexpr Padding statusItemPadding{.horizontal = 16, .top = 10};

QLayout* statusItem(std::string_view symbolName, const QString& caption, ColorRole role) {
    return padded(hstack(statusItemSpacing,
                         symbol(symbolName, {.pointSize = 16, .weight = FontWeight::medium, .role = role}),
                         text(caption, {.pointSize = 13, .weight = FontWeight::medium, .role = role})),
                  statusItemPadding);
}

/// A piece of the bar, with a stroke between its two parts.
class PreviewPanel : public Layer {
public:
    PreviewPanel() : stroke_(new QWidget) {
        stroke_->setFixedWidth(1);
        compose(*this,
                hstack(0, statusItem("tray.and.arrow.down", QStringLiteral("Empty"), ColorRole::secondary), stroke_,
                       statusItem("tray.and.arrow.down.fill", QStringLiteral("3 Items"), ColorRole::primary)));
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        applyOpacity(painter, *this);
        painter.setRenderHint(QPainter::Antialiasing);
        constexpr double fillOpacity = 0.06;
        constexpr double strokeOpacity = 0.14;
        painter.setPen(Theme::color(ColorRole::primary, palette(), strokeOpacity));
        painter.setBrush(Theme::color(ColorRole::primary, palette(), fillOpacity));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), panelRadius, panelRadius);
        painter.drawLine(QPointF(stroke_->x() + 0.5, 1), QPointF(stroke_->x() + 0.5, height() - 1));
    }

private:
    QWidget* const stroke_;
};

}  // namespace

OnboardingClosingScreen::OnboardingClosingScreen(std::function<void()> onComplete)
    : badge_(new OnboardingBadge),
      headline_(layer(text(QStringLiteral("You're all set."), {.pointSize = 24, .weight = FontWeight::bold}))),
      subtext_(layer(text(QStringLiteral("Look for the tray icon in your menu bar."),
                          {.pointSize = 15, .role = ColorRole::secondary}))),
      preview_(new PreviewPanel),
      startUsing_(new OnboardingButton(QStringLiteral("Start Using stowpocket"),
                                       {.textPointSize = 16, .symbolPointSize = 14}, std::move(onComplete))) {
    compose(*this, vstack(0, padded(centred(badge_), {.top = badgeTop, .bottom = 0}),
                          padded(centred(headline_), {.top = headlineTop, .bottom = 0}),
                          padded(centred(subtext_), {.top = subtextTop, .bottom = 0}),
                          padded(centred(preview_), {.top = previewTop, .bottom = 0}),
                          padded(centred(startUsing_), {.top = buttonTop - OnboardingButton::margin, .bottom = 0}),
                          Spacer{}));
}

void OnboardingClosingScreen::evaluate(const OnboardingPresentation& shown) {
    setOpacity(shown.closing.opacity);
    badge_->evaluate(shown);
    headline_->setOpacity(shown.headlineOpacity);
    subtext_->setOpacity(shown.subtextOpacity);
    preview_->setOpacity(shown.previewOpacity);
    startUsing_->evaluate(shown.startUsing);
    startUsing_->setShimmerPhase(shown.shimmerPhase);
}

}  // namespace stowpocket
