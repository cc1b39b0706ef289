// SPDX-License-Identifier: MIT
#include "OnboardingFixture.h"
#include "platform/qt/QtWindow.h"

#include <gtest/gtest.h>

#include <QTest>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;
using MotionPreference = OnboardingView::MotionPreference;

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
    QTest::mouseClick(window.button("Start Using stowpocket"), Qt::LeftButton);
    EXPECT_EQ(window.completed, 1);
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

    OnboardingFixture still(MotionPreference::reduced);
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
