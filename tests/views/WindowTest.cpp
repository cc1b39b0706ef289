// SPDX-License-Identifier: MIT
#include "platform/qt/QtDispatch.h"
#include "SettingsViewFixture.h"
#include "views/onboarding/OnboardingView.h"
#include "views/QtViewFactory.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

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
        window->center();
        window->makeKeyAndOrderFront();
        return window;
    }

    OneTimeEvent iconStands;
    QtViewFactory factory{{
        .makePopover = {},
        .drops = {},
        .tiles = {},
        .settings = {core, monitors, loginItem, {}, {}},
        .whenIconStands = [this](std::function<void()> work) { iconStands.whenOccurred(std::move(work)); },
    }};
};

TEST_F(FirstRun, isMadeOnceTheIconStandsAndGoneOnceItIsClosed) {
    auto window = openWindow();
    EXPECT_EQ(views(), 0);
    iconStands.occur();
    EXPECT_EQ(views(), 1);
    EXPECT_TRUE(window->isVisible());
    const QPixmap icon = QApplication::activeWindow()->windowIcon().pixmap(48, 48);
    EXPECT_GT(icon.toImage().pixelColor(24, 8).red(), 200) << "lists of windows show it";
    QApplication::activeWindow()->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(views(), 0) << "it would only take room";
    window->makeKeyAndOrderFront();
    EXPECT_EQ(views(), 0);
    window = openWindow();
    EXPECT_EQ(views(), 1) << "the icon stands already";
}

TEST_F(FirstRun, doesNotComeOnceItIsNoLongerWanted) {
    auto closed = openWindow();
    closed->close();
    openWindow().reset();
    iconStands.occur();
    EXPECT_EQ(views(), 0);
}

}  // namespace
}  // namespace stowpocket
