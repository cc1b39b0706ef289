// SPDX-License-Identifier: MIT
#include "app/AppDelegate.h"

#include "fakes/AppFixture.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

class AppDelegateTest : public testing::Test, protected AppFixture {
protected:
    void launchAndOpen() {
        launch();
        app->showPopover(Animation::animated);
        log.clear();
    }
};

TEST_F(AppDelegateTest, launchesInOrderAndOpensTheFirstRunWindow) {
    addFiles(2);
    thumbnails.asked.clear();
    files.existsCalls = 0;
    app->applicationDidFinishLaunching();
    EXPECT_EQ(log, (CallLog{"downloads by itself", "popover", "login item on", "onboarding center",
                            "onboarding front", "activate", "hotkey 1", "hotkey 2"}));
    EXPECT_EQ(statusBar.button->title.text, " 2");
    EXPECT_EQ(thumbnails.asked.size(), 2u);
    EXPECT_EQ(dispatch.backgroundCount(), 1u) << "the first look for missing files";
}

TEST_F(AppDelegateTest, aLoginItemThatIsOnStaysOnAllTheWhile) {
    loginItem.current = LoginItem::Status::enabled;
    app->applicationDidFinishLaunching();
    EXPECT_EQ(std::ranges::count(log, "login item off"), 0);
}

TEST_F(AppDelegateTest, aCopyInTheApplicationsFolderPutsItsInstallerImageAway) {
    bundle.bundleURL = *FileURL::fromPath("/Applications/stowpocket.app");
    launch();
    dispatch.advance(8s);
    dispatch.runAll();
    EXPECT_EQ(log, CallLog{"/usr/bin/hdiutil info -plist"});
}

TEST_F(AppDelegateTest, theFirstRunWindowComesBackUntilItWasCompleted) {
    app->applicationDidFinishLaunching();
    log.clear();
    views.onComplete();
    EXPECT_TRUE(preferences.boolean(preferenceKey::onboardingShown));
    EXPECT_EQ(log, CallLog{"onboarding close"}) << "the window outlives the call from inside it";
    dispatch.runAll();
    EXPECT_EQ(log.back(), "onboarding gone");
    views.onComplete();
    dispatch.runAll();
    EXPECT_EQ(log.size(), 2u);
}

TEST_F(AppDelegateTest, theIconTellsHowManyItemsWait) {
    launch();
    const FakeStatusItemButton& button = *statusBar.button;
    EXPECT_EQ(button.image, (StatusItemImage{"tray.and.arrow.down", 16, FontWeight::medium, "Shelf"}));
    EXPECT_EQ(button.title.text, "");
    shelf().addFiles(makeFiles(1));
    EXPECT_EQ(button.image,
              (StatusItemImage{"tray.and.arrow.down.fill", 16, FontWeight::medium, "Shelf with 1 items"}));
    EXPECT_EQ(button.title, (StatusItemTitle{" 1", 9, FontWeight::bold, 4}));
}

TEST_F(AppDelegateTest, aDragOverTheIconOpensTheShelfAtOnceAndOnlyOnce) {
    launch();
    FakePasteboard pasteboard;
    EXPECT_EQ(dropView().draggingEntered(pasteboard), DragOperation::copy);
    EXPECT_EQ(dropView().draggingUpdated(pasteboard), DragOperation::copy);
    EXPECT_EQ(dropView().draggingEntered(pasteboard), DragOperation::copy);
    EXPECT_EQ(log, (CallLog{"no animation", "show", "key", "activate", "animates"}));
    EXPECT_EQ(monitors.clickHandlers.size(), 1u);
}

TEST_F(AppDelegateTest, aDropOnTheIconIsTakenInAndShown) {
    launch();
    FakePasteboard pasteboard;
    pasteboard.addFileURL("file:///files/7.txt");
    EXPECT_TRUE(dropView().performDragOperation(pasteboard));
    EXPECT_EQ(shelf().items().size(), 1u);
    EXPECT_EQ(log, (CallLog{"no animation", "show", "key", "activate", "animates"}));
}

TEST_F(AppDelegateTest, pressedHotkeysDoWhatTheyAreForAndQuitEndsTheProgram) {
    launch();
    notifications.post(quickDropNotification);
    EXPECT_TRUE(log.empty()) << "nothing is selected";
    selection.files = makeFiles(1);
    notifications.post(quickDropNotification);
    EXPECT_EQ(shelf().items().size(), 1u);
    EXPECT_EQ(log, (CallLog{"show", "key", "activate"}));
    notifications.post(togglePopoverNotification);
    EXPECT_EQ(log.back(), "close");
    views.onQuit();
    EXPECT_EQ(log.back(), "terminate");
}

TEST_F(AppDelegateTest, aClickElsewhereClosesTheShelfAfterAMomentAndEscapeAtOnce) {
    launchAndOpen();
    monitors.clickElsewhere();
    dispatch.advance(200ms);
    monitors.clickElsewhere();
    dispatch.advance(299ms);
    EXPECT_TRUE(log.empty()) << "only the second click's close is pending";
    dispatch.advance(1ms);
    EXPECT_EQ(log, CallLog{"close"});
    EXPECT_TRUE(monitors.clickHandlers.empty());
    app->showPopover(Animation::animated);
    log.clear();
    views.popover->onCancel();
    EXPECT_EQ(log, CallLog{"close"});
    EXPECT_TRUE(monitors.clickHandlers.empty());
}

TEST_F(AppDelegateTest, aButtonStillHeldKeepsTheShelfOpen) {
    launchAndOpen();
    monitors.pressed = 1;
    monitors.clickElsewhere();
    dispatch.advance(300ms);
    monitors.pressed = 0;
    dispatch.advance(1s);
    EXPECT_TRUE(log.empty()) << "nothing looks again later";
    monitors.pressed = 2;
    monitors.clickElsewhere();
    dispatch.advance(300ms);
    EXPECT_EQ(log, CallLog{"close"}) << "only the left button drags";
}

TEST_F(AppDelegateTest, closingCancelsTheDelayedClose) {
    launchAndOpen();
    monitors.clickElsewhere();
    statusBar.button->action();
    statusBar.button->action();
    log.clear();
    dispatch.advance(1s);
    EXPECT_TRUE(log.empty()) << "the shelf opened since stays open";
}

TEST_F(AppDelegateTest, itsKeysWorkInsideTheApplicationWithExactlyTheirFlags) {
    launch();
    EXPECT_TRUE(monitors.press(1, 0xA0000 | 0x120));
    EXPECT_EQ(log, (CallLog{"show", "key", "activate"}));
    EXPECT_FALSE(monitors.press(1, 0xA0000 | 0x10000)) << "Caps Lock";
    EXPECT_FALSE(monitors.press(1, 0x80000));
    EXPECT_FALSE(monitors.press(0, 0xA0000));
    selection.files = makeFiles(1);
    EXPECT_TRUE(monitors.press(2, 0xA0000));
    EXPECT_EQ(shelf().items().size(), 1u);
}

TEST_F(AppDelegateTest, aChangedShortcutTakesOverAndAClearedOneIsDead) {
    launch();
    preferences.setValue(preferenceKey::shelfHotkeyKeyCode, 0);
    preferences.setValue(preferenceKey::quickDropKeyCode, -1);
    notifications.post(shortcutChangedNotification);
    EXPECT_EQ(log, CallLog{"hotkey 1"});
    EXPECT_EQ(hotkeyService.registered.size(), 1u);
    EXPECT_FALSE(monitors.press(1, 0xA0000));
    EXPECT_FALSE(monitors.press(2, 0xA0000));
    EXPECT_TRUE(monitors.press(0, 0xA0000));
    preferences.setValue(preferenceKey::shelfHotkeyKeyCode, 65536);
    notifications.post(shortcutChangedNotification);
    EXPECT_DEATH(monitors.press(1, 0), "16 bits");
}

TEST_F(AppDelegateTest, aFileThatVanishesIsMarkedAtOneTickAndGoneAtTheNext) {
    addFiles(2);
    launch();
    files.removeItem(*FileURL::fromPath("/files/0.txt"));
    dispatch.advance(4999ms);
    EXPECT_EQ(dispatch.backgroundCount(), 0u);
    dispatch.advance(1ms);
    dispatch.runAll();
    ASSERT_EQ(shelf().items().size(), 2u);
    EXPECT_FALSE(shelf().items()[0].isAvailable);
    dispatch.advance(5s);
    EXPECT_EQ(shelf().items().size(), 1u);
    EXPECT_EQ(statusBar.button->title.text, " 1");
}

TEST_F(AppDelegateTest, aProgramAtRestWakesUpForNoMoreThanItsFiles) {
    launch();
    dispatch.runAll();
    dispatch.wakeUps = 0;
    dispatch.advance(58s);
    EXPECT_EQ(dispatch.wakeUps, 0) << "on an empty shelf";
    shelf().addFiles(makeFiles(20));
    dispatch.runAll();
    dispatch.wakeUps = 0;
    dispatch.advance(2s);
    EXPECT_EQ(dispatch.backgroundCount(), 1u) << "in the rhythm of the start";
    for (int tick = 0; tick < 12; ++tick) {
        dispatch.runAll();
        dispatch.advance(5s);
    }
    EXPECT_EQ(dispatch.wakeUps, 13 * 2) << "the timer and its turn on the main queue, no answer";
    shelf().clear();
    dispatch.runAll();
    dispatch.wakeUps = 0;
    dispatch.advance(60s);
    EXPECT_EQ(dispatch.wakeUps, 0);
}

TEST_F(AppDelegateTest, volumesThatComeAndGoAreLookedAtAndAHangingLookDoesNotPileUp) {
    addFiles(1);
    launch();
    volumes.mounted.emit();
    EXPECT_EQ(dispatch.backgroundCount(), 1u);
    dispatch.runAll();
    volumes.unmounted.emit();
    EXPECT_EQ(dispatch.backgroundCount(), 1u);
    dispatch.advance(60s);
    EXPECT_EQ(dispatch.backgroundCount(), 1u);
}

TEST_F(AppDelegateTest, oneSettingsWindowIsReusedOnlyWhileItIsOpen) {
    launchAndOpen();
    views.onOpenSettings();
    EXPECT_EQ(log, (CallLog{"close", "settings center", "settings front", "activate"}));
    log.clear();
    views.onOpenSettings();
    EXPECT_EQ(log, (CallLog{"close", "settings front", "settings front of all", "activate"}));
    views.settingsWindow->close();
    log.clear();
    views.onOpenSettings();
    EXPECT_EQ(log, (CallLog{"close", "settings gone", "settings center", "settings front", "activate"}));
}

TEST_F(AppDelegateTest, terminatingStopsWhatWaitsAndNothingElse) {
    launchAndOpen();
    monitors.clickElsewhere();
    app->applicationWillTerminate();
    EXPECT_EQ(dispatch.scheduledCount(), 0u);
    EXPECT_TRUE(monitors.clickHandlers.empty());
    EXPECT_EQ(monitors.keyHandlers.size(), 2u);
    EXPECT_EQ(hotkeyService.registered.size(), 2u);
}

TEST_F(AppDelegateTest, aBarWithoutRoomLeavesTheRestRunning) {
    statusBar.button = nullptr;
    launch();
    shelf().addFiles(makeFiles(1));
    app->statusItemClicked();
    EXPECT_TRUE(log.empty());
}

TEST_F(AppDelegateTest, aShelfThatFindsNoPlaceCountsAsClosed) {
    launch();
    views.popover->hasPlace = false;
    app->showPopover(Animation::none);
    EXPECT_EQ(log, (CallLog{"no animation", "animates"}));
    EXPECT_TRUE(monitors.clickHandlers.empty());
}

TEST_F(AppDelegateTest, whatItHandedOutDoesNothingOnceItIsGone) {
    launchAndOpen();
    DraggingDestination& dropView = *statusBar.button->dropView;
    selection.files = makeFiles(1);
    app.reset();
    log.clear();
    FakePasteboard pasteboard;
    statusBar.button->action();
    views.onOpenSettings();
    views.onQuit();
    notifications.post(quickDropNotification);
    monitors.clickElsewhere();
    EXPECT_EQ(dropView.draggingEntered(pasteboard), DragOperation::none);
    dispatch.advance(20s);
    EXPECT_TRUE(log.empty());
}

}  // namespace
}  // namespace stowpocket
