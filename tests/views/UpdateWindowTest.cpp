// SPDX-License-Identifier: MIT
#include "views/updates/UpdateWindow.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

/// The one window on the screen; null when there is none.
QWidget* window() {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible())
            return widget;
    }
    return nullptr;
}

QStringList buttons() {
    QStringList names;
    for (const QPushButton* const button : window()->findChildren<QPushButton*>()) {
        if (button->isVisible())
            names.push_back(button->text());
    }
    return names;
}

TEST(UpdateWindow, asksAnswersAndChangesWithTheUpdate) {
    QtUpdateWindow updates;
    std::vector<UpdateChoice> choices;
    const Subscription subscription =
        updates.chosen().connect([&choices](UpdateChoice choice) { choices.push_back(choice); });
    UpdateStatus status{.state = UpdateState::offered, .programName = "stowpocket", .runningVersion = "1"};
    status.item.version = "2";
    status.canInstall = true;
    updates.show(status);
    updates.bringToFront();
    EXPECT_EQ(window()->windowTitle(), QLatin1String("stowpocket 2 is available"));
    EXPECT_EQ(buttons(),
              (QStringList{QStringLiteral("Skip This Version"), QStringLiteral("Later"), QStringLiteral("Install")}));
    QTest::keyClick(window()->focusWidget(), Qt::Key_Return);
    QTest::keyClick(window()->focusWidget(), Qt::Key_Escape);
    window()->close();
    EXPECT_EQ(choices, (std::vector{UpdateChoice::install, UpdateChoice::later, UpdateChoice::later}));
    status.state = UpdateState::installing;
    updates.show(status);
    EXPECT_TRUE(buttons().isEmpty());
    window()->close();
    EXPECT_NE(window(), nullptr) << "it cannot be left";
    updates.close();
    EXPECT_EQ(window(), nullptr);
    EXPECT_EQ(choices.size(), 3u);
}

TEST(Alerts, sayWhatTheySayUntilTheyAreAnswered) {
    QtAlerts alerts;
    alerts.runModal({"You're up to date!", "<b>", "OK"});
    ASSERT_NE(window(), nullptr);
    EXPECT_TRUE(window()->isModal());
    EXPECT_EQ(buttons(), QStringList{QStringLiteral("OK")});
    QTest::keyClick(window()->focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(window(), nullptr);
}

}  // namespace
}  // namespace stowpocket
