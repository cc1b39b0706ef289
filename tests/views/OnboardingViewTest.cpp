// SPDX-License-Identifier: MIT
#include "OnboardingFixture.h"
#include "platform/qt/FramelessWindow.h"
#include "views/OnboardingButton.h"
#include "views/OnboardingCheckmarkShape.h"
#include "views/OnboardingPointView.h"

#include <gtest/gtest.h>

#include <QTest>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;
using MotionWish = OnboardingView::MotionWish;

/// The part of a button that is painted at its own size.
QRect face(const OnboardingFixture& window, const QWidget& button) {
    constexpr int margin = OnboardingButton::margin;
    return QRect(button.mapTo(&window.view, QPoint()), button.size()).adjusted(margin, margin, -margin, -margin);
}

TEST(OnboardingViewTest, welcomesWithThreePoints) {
    OnboardingFixture window(MotionWish::reduced);
    EXPECT_EQ(window.view.size(), QSize(520, 420));
    const QList<QLabel*> labels = window.shownLabels();
    ASSERT_EQ(labels.size(), 4);
    EXPECT_EQ(labels[0]->text(), QStringLiteral("Welcome to stowpocket"));
    EXPECT_EQ(labels[1]->text(),
              QStringLiteral("Drag files onto the shelf to stage them temporarily. No more cluttered desktop."));
    EXPECT_EQ(labels[2]->text(), QStringLiteral("Drag files out of the shelf into any app when you need them."));
    EXPECT_EQ(labels[3]->text(),
              QStringLiteral("Open the shelf instantly with a global keyboard shortcut from anywhere."));

    const auto bottom = [&](int row) { return window.frame(*labels[row]).bottom() - OnboardingPointView::travel; };
    EXPECT_EQ(window.frame(*labels[1]).left(), 60);
    EXPECT_EQ(window.frame(*labels[1]).width(), 400);
    for (const int row : {2, 3})
        EXPECT_EQ(window.frame(*labels[row]).top() - bottom(row - 1) - 1, 14);
    const QRect button = face(window, *window.button("Get Started"));
    EXPECT_EQ(button.top() - bottom(3) - 1, 28);
    EXPECT_LT(button.bottom(), 420 - 10) << "everything has its place in the window";
    EXPECT_EQ(window.view.grab().toImage().pixelColor(0, 0), QColor(13, 17, 23));
}

TEST(OnboardingViewTest, getStartedIsStoredAtOnceEvenBeforeTheWelcomeIsOver) {
    OnboardingFixture window;
    window.clock->advance(100ms);
    QAbstractButton* const getStarted = window.button("Get Started");
    EXPECT_NE(window.view.childAt(window.frame(*getStarted).center()), getStarted) << "not seen, not clicked";
    QTest::keyClick(getStarted, Qt::Key_Return);
    EXPECT_TRUE(window.preferences.boolean("onboardingShown"));

    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, QString(), true);
    QApplication::sendEvent(window.button("Start Using stowpocket"), &held);
    window.clock->advance(5s);
    EXPECT_EQ(window.completed, 0) << "the key was still down from the screen before";
    EXPECT_EQ(window.button("Get Started"), nullptr);
    QStringList texts;
    for (const QLabel* const label : window.shownLabels())
        texts.append(label->text());
    EXPECT_EQ(texts, QStringList({QStringLiteral("You're all set."),
                                  QStringLiteral("Look for the tray icon in your menu bar."), QStringLiteral("Empty"),
                                  QStringLiteral("3 Items")}));
    QTest::mouseClick(window.button("Start Using stowpocket"), Qt::LeftButton);
    EXPECT_EQ(window.completed, 1);
}

TEST(OnboardingViewTest, drawsTheBadgeByAndBy) {
    OnboardingFixture window;
    window.button("Get Started")->click();
    const QPoint middle(260, 52 + 50);
    const auto isDrawn = [&](QPoint fromMiddle) {
        return window.view.grab().toImage().pixelColor(middle + fromMiddle).red() > 200;
    };
    const QPoint right(36, 0);
    const QPoint left(-36, 0);
    const QPoint bend(30 - 36, 46 - 36);
    window.clock->advance(500ms);
    EXPECT_FALSE(isDrawn(right));
    window.clock->advance(120ms);
    EXPECT_TRUE(isDrawn(right)) << "the circle begins at its top and runs clockwise";
    EXPECT_FALSE(isDrawn(left));
    window.clock->advance(280ms);
    EXPECT_TRUE(isDrawn(left));
    EXPECT_FALSE(isDrawn(bend));
    window.clock->advance(300ms);
    EXPECT_TRUE(isDrawn(bend));
    EXPECT_EQ(OnboardingCheckmarkShape::path(QRectF(500, 500, 72, 72)).currentPosition(), QPointF(54, 21.6))
        << "the origin of the rectangle does not count";
}

TEST(OnboardingViewTest, movesOnlyWhileItIsSeenAndWanted) {
    OnboardingFixture window;
    window.clock->advance(10s);
    EXPECT_TRUE(window.clock->isRunning());
    const int frames = window.clock->frames;
    window.clock->advance(10s);
    EXPECT_NEAR(window.clock->frames - frames, 200, 2);
    window.view.hide();
    EXPECT_FALSE(window.clock->isRunning());
    window.view.show();
    EXPECT_TRUE(window.clock->isRunning());

    OnboardingFixture still(MotionWish::reduced);
    still.button("Get Started")->click();
    EXPECT_FALSE(still.clock->isRunning());
    EXPECT_NEAR(still.frame(*still.button("Start Using stowpocket")).center().x(), 260, 1);
}

TEST(FramelessWindowTest, isClosedByEscape) {
    FramelessWindow window;
    window.show();
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

}  // namespace
}  // namespace stowpocket
