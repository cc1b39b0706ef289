// SPDX-License-Identifier: MIT
#include "views/onboarding/OnboardingView.h"

#include "app/Settings.h"
#include "presentation/Texts.h"
#include "services/Preferences.h"
#include "views/controls/Button.h"

#include <QPainter>
#include <QPaintEvent>
#include <QWindow>

#include <cmath>

namespace stowpocket {
namespace {

/// At its highest point, before it drops, the emblem's square touches the window's edge.
constexpr int emblemTop = 12;
constexpr int titleTop = 20;
constexpr int pointsTop = 16;
constexpr int pointSpacing = 14;
constexpr int pointPadding = 60;
constexpr int getStartedTop = 28;
constexpr QPoint emblemPlace((onboardingWidth - OnboardingEmblem::side) / 2, emblemTop);

OnboardingPointView* point(std::string_view symbolName, const char* text) {
    return new OnboardingPointView(symbolName, displayText(text), onboardingWidth - 2 * pointPadding);
}

constexpr int badgeTop = 52;
constexpr int headlineTop = 24;
constexpr int subtextTop = 8;
constexpr int previewTop = 26;
constexpr int startUsingTop = 24;

constexpr int statusItemSpacing = 7;
constexpr double panelRadius = 10;
constexpr Padding statusItemPadding{.horizontal = 16, .top = 10};

QLayout* statusItem(std::string_view symbolName, const QString& caption, ColorRole role) {
    return padded(hstack(statusItemSpacing,
                         symbol(symbolName, {.pointSize = 16, .weight = FontWeight::medium, .role = role}),
                         text(caption, {.pointSize = 13, .weight = FontWeight::medium, .role = role})),
                  statusItemPadding);
}

/// A piece of the menu bar with a line between its two parts.
class PreviewPanel : public FadingView {
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

OnboardingWelcomeScreen::OnboardingWelcomeScreen(std::function<void()> onGetStarted)
    : emblem_(*this),
      title_(fading(text(QStringLiteral("Welcome to stowpocket"), {.pointSize = 24, .weight = FontWeight::bold}))),
      points_{
          point("arrow.down.doc", "Drag files onto the shelf to stage them temporarily. No more cluttered desktop."),
          point("arrow.up.doc", "Drag files out of the shelf into any app when you need them."),
          point("keyboard", "Open the shelf instantly with a global keyboard shortcut from anywhere.")},
      getStarted_(new OnboardingButton(QStringLiteral("Get Started"), {.textPointSize = 15, .symbolPointSize = 13},
                                       std::move(onGetStarted))) {
    // The points contain room below them to rise from, and the button contains room to grow.
    const auto column = vstack(pointSpacing - OnboardingPointView::travel, points_[0], points_[1], points_[2]);
    compose(
        *this,
        vstack(0, padded(centred(title_), {.top = emblemTop + OnboardingEmblem::side + titleTop, .bottom = 0}),
               padded(column, {.horizontal = pointPadding, .top = pointsTop, .bottom = 0}),
               padded(centred(getStarted_),
                      {.top = getStartedTop - OnboardingPointView::travel - OnboardingButton::margin, .bottom = 0}),
               Spacer{}));
}

void OnboardingWelcomeScreen::setPresentation(const OnboardingPresentation& shown) {
    setOpacity(shown.welcome.opacity);
    if (shown_.emblemOffset != shown.emblemOffset || shown_.emblemGlow != shown.emblemGlow)
        update(OnboardingEmblem::paintedArea(emblemPlace));
    shown_ = shown;
    title_->setOpacity(shown.titleOpacity);
    for (std::size_t index = 0; index < points_.size(); ++index)
        points_.at(index)->setPresentation(shown.points.at(index));
    getStarted_->setPresentation(shown.getStarted);
}

void OnboardingWelcomeScreen::paintEvent(QPaintEvent* event) {
    if (!event->rect().intersects(OnboardingEmblem::paintedArea(emblemPlace)))
        return;
    QPainter painter(this);
    applyOpacity(painter, *this);
    painter.setClipRect(
        OnboardingEmblem::paintedArea(emblemPlace));  // pictures are drawn quickly into one rectangle only
    emblem_.paint(painter, emblemPlace, shown_);
}

OnboardingClosingScreen::OnboardingClosingScreen(std::function<void()> onComplete)
    : badge_(new OnboardingBadge),
      headline_(fading(text(QStringLiteral("You're all set."), {.pointSize = 24, .weight = FontWeight::bold}))),
      subtext_(fading(
          text(QString::fromUtf8(platformTexts.whereTheIconIs), {.pointSize = 15, .role = ColorRole::secondary}))),
      preview_(new PreviewPanel),
      startUsing_(new OnboardingButton(QStringLiteral("Start Using stowpocket"),
                                       {.textPointSize = 16, .symbolPointSize = 14}, std::move(onComplete))) {
    compose(*this,
            vstack(0, padded(centred(badge_), {.top = badgeTop, .bottom = 0}),
                   padded(centred(headline_), {.top = headlineTop, .bottom = 0}),
                   padded(centred(subtext_), {.top = subtextTop, .bottom = 0}),
                   padded(centred(preview_), {.top = previewTop, .bottom = 0}),
                   padded(centred(startUsing_), {.top = startUsingTop - OnboardingButton::margin, .bottom = 0}),
                   Spacer{}));
}

void OnboardingClosingScreen::setPresentation(const OnboardingPresentation& shown) {
    setOpacity(shown.closing.opacity);
    badge_->setPresentation(shown);
    headline_->setOpacity(shown.headlineOpacity);
    subtext_->setOpacity(shown.subtextOpacity);
    preview_->setOpacity(shown.previewOpacity);
    startUsing_->setPresentation(shown.startUsing);
    startUsing_->setShimmerPhase(shown.shimmerPhase);
}

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
