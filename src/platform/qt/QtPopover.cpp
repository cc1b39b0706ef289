// SPDX-License-Identifier: MIT
#include "platform/qt/QtPopover.h"

#include "foundation/Invariant.h"

#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <QStyle>

namespace stowpocket {
namespace {

constexpr int fadeMs = 110;

Rect rectOf(const QRect& rect) {
    return {static_cast<double>(rect.x()), static_cast<double>(rect.y()), static_cast<double>(rect.width()),
            static_cast<double>(rect.height())};
}

QRect availableAround(const QRect& anchor) {
    const QScreen* screen = QGuiApplication::screenAt(anchor.center());
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? QRect() : screen->availableGeometry();
}

}  // namespace

void QtPopover::show(StatusItemButton& anchor) {
    auto* const button = dynamic_cast<QtStatusItemButton*>(&anchor);
    invariant(button != nullptr, "a popover hangs on an icon of its own desktop");
    anchor_ = button;
    isShown_ = true;
    prepareWindow();
    anchorMoved_ = button->moved.connect([this] { window_->follow(); });
    followScreens();
    window_->follow();
    if (fades()) {
        window_->setWindowOpacity(0);
        fade(0, 1);
    } else {
        window_->setWindowOpacity(1);
    }
    host_.willShow(*window_);
    window_->show();
    window_->raise();
}

void QtPopover::makeKey() {
    if (isShown_)
        host_.focus(*window_);
}

void QtPopover::performClose() {
    if (!isShown_)
        return;
    isShown_ = false;
    anchorMoved_.reset();
    screens_.reset();
    anchor_ = nullptr;
    if (fades())
        fade(window_->windowOpacity(), 0);
    else
        hide();
}

void QtPopover::hide() {
    host_.afterDrag([this, window = QPointer<QWidget>(window_.get())] {
        if (window && !isShown_)
            window->hide();
    });
}

/// A compositor may have started or ended since the last time, and a window cannot change its kind of edge.
void QtPopover::prepareWindow() {
    fade_.reset();
    const PopoverEdge edge = host_.blendsWindows() ? PopoverEdge::shadowed : PopoverEdge::cut;
    if (window_ && window_->edge() == edge)
        return;
    auto window = std::make_unique<PopoverWindow>(
        edge, [this](const QSize& size, int shadow) { return placementFor(size, shadow); }, [this] { onCancel(); });
    if (content_ == nullptr)
        content_ = makeContent_().release();
    window->setContent(content_);
    window->setWindowTitle(QStringLiteral("stowpocket shelf"));
    window_ = std::move(window);
}

PopoverPlacement QtPopover::placementFor(const QSize& content, int shadow) {
    if (anchor_ != nullptr) {
        anchorRect_ = anchor_->rectOnScreen();
        barRect_ = anchor_->barOnScreen();
    }
    return placePopover(rectOf(anchorRect_),
                        {static_cast<double>(content.width()), static_cast<double>(content.height())},
                        areaBesideBar(rectOf(availableAround(anchorRect_)), rectOf(barRect_)), shadow);
}

void QtPopover::followScreens() {
    screens_ = std::make_unique<QObject>();
    const auto follow = [this] { window_->follow(); };
    for (const QScreen* const screen : QGuiApplication::screens()) {
        QObject::connect(screen, &QScreen::geometryChanged, screens_.get(), follow, Qt::QueuedConnection);
        QObject::connect(screen, &QScreen::availableGeometryChanged, screens_.get(), follow, Qt::QueuedConnection);
    }
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, screens_.get(), follow, Qt::QueuedConnection);
}

/// Not without a compositor, nor where the desktop asks for reduced motion.
bool QtPopover::fades() const {
    const int duration = window_->style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, window_.get());
    return animates_ && window_->edge() == PopoverEdge::shadowed && duration > 0;
}

void QtPopover::fade(double from, double to) {
    fade_ = std::make_unique<QPropertyAnimation>(window_.get(), "windowOpacity");
    fade_->setDuration(fadeMs);
    fade_->setStartValue(from);
    fade_->setEndValue(to);
    QObject::connect(fade_.get(), &QPropertyAnimation::finished, window_.get(), [this] {
        if (!isShown_)
            hide();
    });
    fade_->start();
}

}  // namespace stowpocket
