// SPDX-License-Identifier: MIT
#include "platform/qt/QtDispatch.h"
#include "platform/qt/QtWindow.h"
#include "views/QtViewFactory.h"
#include "WindowFixtures.h"

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

TEST(OnboardingViewTest, getStartedIsStoredAtOnceEvenBeforeTheWelcomeIsOver) {
    OnboardingFixture window;
    window.clock->advance(100ms);
    QAbstractButton* const getStarted = window.getStarted();
    EXPECT_NE(window.view.childAt(window.middle(*getStarted)), getStarted) << "not seen, not clicked";
    QTest::keyClick(getStarted, Qt::Key_Return);
    EXPECT_TRUE(window.preferences.boolean("onboardingShown"));

    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, QString(), true);
    QApplication::sendEvent(window.startUsing(), &held);
    window.clock->advance(5s);
    EXPECT_EQ(window.completed, 0) << "the key was still down from the screen before";
    click(window.startUsing());
    EXPECT_EQ(window.completed, 1);
}

TEST(OnboardingViewTest, movesOnlyWhileItIsSeenAndWanted) {
    OnboardingFixture window;
    window.clock->advance(10s);
    EXPECT_NEAR(window.clock->advance(10s), 200, 2);
    window.view.hide();
    EXPECT_FALSE(window.clock->isRunning());
    window.view.show();
    EXPECT_TRUE(window.clock->isRunning());

    OnboardingFixture still(OnboardingView::MotionPreference::reduced);
    still.getStarted()->click();
    EXPECT_FALSE(still.clock->isRunning());
    EXPECT_NEAR(still.middle(*still.startUsing()).x(), 260, 1);
}

struct FirstRun : testing::Test, SettingsViewFixture {
    /// The first-run views that there are, on the screen or not.
    static qsizetype views() {
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return std::ranges::count_if(QApplication::allWidgets(), [](const QWidget* widget) {
            return dynamic_cast<const OnboardingView*>(widget) != nullptr;
        });
    }
    std::unique_ptr<Window> openWindow() {
        auto window = factory.makeOnboardingWindow(preferences, [] {});
        window->makeKeyAndOrderFront();
        return window;
    }

    OneTimeEvent iconStands;
    QtViewFactory factory{{
        .makePopover = {},
        .drops = {},
        .tiles = {.startFileDrag = {}, .byteCountText = {}, .opener = opener},
        .settings = {core, monitors, loginItem, {}, {}},
        .whenIconStands = [this](std::function<void()> work) { iconStands.whenOccurred(std::move(work)); },
    }};
};

TEST_F(FirstRun, isMadeOnceTheIconStandsIfItIsStillWantedAndGoneOnceItIsClosed) {
    auto window = openWindow();
    auto closed = openWindow();
    closed->close();
    openWindow().reset();
    EXPECT_EQ(views(), 0);
    iconStands.occur();
    EXPECT_EQ(views(), 1);
    const QPixmap icon = QApplication::activeWindow()->windowIcon().pixmap(48, 48);
    EXPECT_GT(icon.toImage().pixelColor(24, 8).red(), 200) << "lists of windows show it";
    QApplication::activeWindow()->close();
    EXPECT_EQ(views(), 0) << "it would only take room";
    window = openWindow();
    EXPECT_EQ(views(), 1) << "the icon stands already";
}

}  // namespace
}  // namespace stowpocket
