// SPDX-License-Identifier: MIT
#include "views/onboarding/OnboardingView.h"

#include "app/Settings.h"
#include "services/Preferences.h"
#include "views/controls/Button.h"
#include "views/onboarding/OnboardingScreens.h"

#include <QPainter>
#include <QPaintEvent>
#include <QWindow>

#include <cmath>

namespace stowpocket {
namespace {

/// The window is dark regardless of the desktop's colours.
const QColor background(13, 17, 23);
const QColor foreground(240, 244, 248);
const QColor focusColor(255, 255, 255);

constexpr double containerEdgeOpacity = 0.1;
const QColor containerTop(22, 28, 37);
constexpr int closeSide = 28;
constexpr int closeInset = 8;

QPalette darkPalette() {
    QPalette palette(background, background);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, foreground);
    palette.setColor(QPalette::Highlight, focusColor);
    return palette;
}

}  // namespace

OnboardingView::OnboardingView(Dependencies dependencies)
    : dependencies_(std::move(dependencies)),
      welcome_(new OnboardingWelcomeScreen([this] { getStarted(); })),
      closing_(new OnboardingClosingScreen([this] { dependencies_.onComplete(); })),
      container_({onboardingWidth, onboardingHeight}, [this](QPainter& painter) { paintContainer(painter); }) {
    setPalette(darkPalette());
    setFixedSize(onboardingWidth, onboardingHeight);
    setAttribute(Qt::WA_OpaquePaintEvent);
    for (FadingView* const screen : {static_cast<FadingView*>(welcome_), static_cast<FadingView*>(closing_)}) {
        screen->setParent(this);
        screen->resize(size());
    }
    closing_->hide();
    if (dependencies_.closeControl == CloseControl::own)
        addCloseControl();
}

/// The button belongs to the window, not to a screen, and stays while the screens change.
void OnboardingView::addCloseControl() {
    constexpr SymbolStyle cross{.pointSize = 11, .weight = FontWeight::semibold, .role = ColorRole::secondary};
    Button* const button = Button::ofSymbol("xmark", cross, QStringLiteral("Close"), [this] { window()->close(); });
    button->setParent(this);
    button->setGeometry(width() - closeInset - closeSide, closeInset, closeSide, closeSide);
}

void OnboardingView::showEvent(QShowEvent* event) {
    if (!shownAt_) {
        shownAt_ = dependencies_.clock->now();
        welcome_->button().setFocus(Qt::OtherFocusReason);
    }
    if (QWindow* const handle = window()->windowHandle())
        handle->installEventFilter(this);
    renderFrame();
    FadingView::showEvent(event);
}

void OnboardingView::hideEvent(QHideEvent* event) {
    dependencies_.clock->stop();
    container_.clear();
    FadingView::hideEvent(event);
}

/// On another virtual desktop the window is not hidden, but nothing of it is on the screen.
bool OnboardingView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Expose) {
        if (window()->windowHandle()->isExposed())
            renderFrame();
        else
            dependencies_.clock->stop();
    }
    return FadingView::eventFilter(watched, event);
}

void OnboardingView::getStarted() {
    if (getStartedAt_)
        return;
    dependencies_.preferences.setValue(preferenceKey::onboardingShown, true);
    getStartedAt_ = dependencies_.clock->now();
    closing_->show();
    closing_->button().setFocus(Qt::OtherFocusReason);
    renderFrame();
}

OnboardingMoment OnboardingView::moment() const {
    const Seconds now = dependencies_.clock->now();
    OnboardingMoment moment{.sinceShown = now - shownAt_.value_or(now), .sinceGetStarted = {}};
    if (getStartedAt_)
        moment.sinceGetStarted = now - *getStartedAt_;
    return moment;
}

void OnboardingView::renderFrame() {
    const OnboardingMoment now = moment();
    showMoment(now);
    if (dependencies_.motion == MotionPreference::reduced)
        return;
    if (const std::optional<Seconds> wait = timeToNextFrame(now))
        dependencies_.clock->callAfter(*wait, [this] { renderFrame(); });
}

void OnboardingView::showMoment(const OnboardingMoment& moment) {
    const bool isReduced = dependencies_.motion == MotionPreference::reduced;
    const OnboardingPresentation shown =
        onboardingPresentation(isReduced ? onboardingEndState(moment) : onboardingState(moment));
    setOpacity(shown.opacity);
    welcome_->setPresentation(shown);
    welcome_->move(static_cast<int>(std::lround(shown.welcome.shift * width())), 0);
    welcome_->setVisible(shown.welcome.opacity > 0);
    closing_->setPresentation(shown);
    closing_->move(static_cast<int>(std::lround(shown.closing.shift * width())), 0);
}

void OnboardingView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const bool isTranslucent = window()->testAttribute(Qt::WA_TranslucentBackground);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(event->rect(), isTranslucent ? QColor(Qt::transparent) : background);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    applyOpacity(painter, *this);
    for (const QRect& part : event->region()) {
        painter.setClipRect(part);  // one at a time: copying a picture is fast only into a single rectangle
        painter.drawImage(0, 0, container_.image(devicePixelRatioF()));
    }
}

void OnboardingView::paintContainer(QPainter& painter) const {
    QLinearGradient fill(0, 0, 0, height());
    fill.setColorAt(0, containerTop);
    fill.setColorAt(1, background);
    painter.setBrush(fill);
    painter.setPen(Theme::color(ColorRole::primary, palette(), containerEdgeOpacity));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), onboardingCornerRadius,
                            onboardingCornerRadius);
}

}  // namespace stowpocket
