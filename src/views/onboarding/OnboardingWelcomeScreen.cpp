// SPDX-License-Identifier: MIT
#include "views/onboarding/OnboardingWelcomeScreen.h"

#include "views/onboarding/OnboardingMetrics.h"

#include <QPainter>
#include <QPaintEvent>

namespace stowpocket {
namespace {

/// At its highest, before it drops, the emblem's square touches the edge of the window.
constexpr int emblemTop = 12;
constexpr int titleTop = 20;
constexpr int pointsTop = 16;
constexpr int pointSpacing = 14;
constexpr int pointPadding = 60;
constexpr int buttonTop = 28;
constexpr QPoint emblemPlace((onboardingWidth - OnboardingEmblem::side) / 2, emblemTop);

OnboardingPointView* point(std::string_view symbolName, const char* text) {
    return new OnboardingPointView(symbolName, QString::fromUtf8(text), onboardingWidth - 2 * pointPadding);
}

}  // namespace

OnboardingWelcomeScreen::OnboardingWelcomeScreen(std::function<void()> onGetStarted)
    : emblem_(*this),
      title_(layer(text(QStringLiteral("Welcome to stowpocket"), {.pointSize = 24, .weight = FontWeight::bold}))),
      points_{
          point("arrow.down.doc", "Drag files onto the shelf to stage them temporarily. No more cluttered desktop."),
          point("arrow.up.doc", "Drag files out of the shelf into any app when you need them."),
          point("keyboard", "Open the shelf instantly with a global keyboard shortcut from anywhere.")},
      getStarted_(new OnboardingButton(QStringLiteral("Get Started"), {.textPointSize = 15, .symbolPointSize = 13},
                                       std::move(onGetStarted))) {
    // Points leave room below them to rise from, the button leaves room around it to grow.
    const auto column = vstack(pointSpacing - OnboardingPointView::travel, points_[0], points_[1], points_[2]);
    compose(*this,
            vstack(0, padded(centred(title_), {.top = emblemTop + OnboardingEmblem::side + titleTop, .bottom = 0}),
                   padded(column, {.horizontal = pointPadding, .top = pointsTop, .bottom = 0}),
                   padded(centred(getStarted_),
                          {.top = buttonTop - OnboardingPointView::travel - OnboardingButton::margin, .bottom = 0}),
                   Spacer{}));
}

void OnboardingWelcomeScreen::evaluate(const OnboardingPresentation& shown) {
    setOpacity(shown.welcome.opacity);
    if (shown_.emblemOffset != shown.emblemOffset || shown_.emblemGlow != shown.emblemGlow)
        update(OnboardingEmblem::reach(emblemPlace));
    shown_ = shown;
    title_->setOpacity(shown.titleOpacity);
    for (std::size_t index = 0; index < points_.size(); ++index)
        points_.at(index)->evaluate(shown.points.at(index));
    getStarted_->evaluate(shown.getStarted);
}

void OnboardingWelcomeScreen::paintEvent(QPaintEvent* event) {
    if (!event->rect().intersects(OnboardingEmblem::reach(emblemPlace)))
        return;
    QPainter painter(this);
    applyOpacity(painter, *this);
    painter.setClipRect(OnboardingEmblem::reach(emblemPlace));  // pictures are drawn quickly into one rectangle only
    emblem_.paint(painter, emblemPlace, shown_);
}

}  // namespace stowpocket
