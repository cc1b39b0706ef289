// SPDX-License-Identifier: MIT
#include "app/AppDelegate.h"

#include "fakes/AppFixture.h"
#include "presentation/ShelfPresentation.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

struct AppDelegateTest : testing::Test, AppFixture {
    void launchAndOpen() {
        launch();
        app->showPopover(Animation::animated);
    }
    [[nodiscard]] bool isOpen() const { return views.popover->isOpen; }
};

TEST_F(AppDelegateTest, theFirstLaunchSetsEverythingUpAndWelcomesTheUser) {
    addFiles(2);
    thumbnails.asked.clear();
    app->applicationDidFinishLaunching();
    EXPECT_EQ(loginItem.current, LoginItem::Status::enabled);
    EXPECT_TRUE(views.onboardingWindow->isOpen && views.onboardingWindow->isCentred && application.isActive);
    EXPECT_EQ(hotkeyService.registered.size(), 2u);
    EXPECT_EQ(thumbnails.asked.size(), 2u);
    EXPECT_EQ(dispatch.backgroundCount(), 1u) << "the first look for missing files";

    views.onComplete();
    EXPECT_TRUE(preferences.boolean(preferenceKey::onboardingShown));
    EXPECT_FALSE(views.onboardingWindow->isOpen) << "the window outlives the call from inside it";
    dispatch.runAll();
    views.onComplete();
}

TEST_F(AppDelegateTest, laterLaunchesLeaveAloneWhatIsAsTheUserWishesAndTellHowManyItemsWait) {
    loginItem.current = LoginItem::Status::enabled;
    bundle.bundleURL = fileAt("/Applications/stowpocket.app");
    launch();
    EXPECT_EQ(loginItem.changes, 0);
    dispatch.advance(8s);
    dispatch.runAll();
    EXPECT_EQ(imageTool.looks, 1);
    const FakeStatusItemButton& button = *statusBar.button;
    EXPECT_EQ(button.image, (StatusItemImage{"tray.and.arrow.down", 16, FontWeight::medium, "Shelf"}));
    shelf().addFiles(makeFiles(1));
    EXPECT_EQ(button.image,
              (StatusItemImage{"tray.and.arrow.down.fill", 16, FontWeight::medium, "Shelf with 1 items"}));
    EXPECT_EQ(button.title, (StatusItemTitle{" 1", 9, FontWeight::bold, 4}));
}

TEST_F(AppDelegateTest, dragsAndDropsOnTheIconOpenTheShelfAtOnce) {
    launch();
    FakePasteboard pasteboard;
    EXPECT_EQ(dropView().draggingEntered(pasteboard), DragOperation::copy);
    EXPECT_EQ(opening(), "at once");
    EXPECT_EQ(dropView().draggingUpdated(pasteboard), DragOperation::copy);
    EXPECT_EQ(dropView().draggingEntered(pasteboard), DragOperation::copy);
    EXPECT_EQ(opening(), "none") << "it is open";
    app->togglePopover();
    pasteboard.addFileURL("file:///files/7.txt");
    EXPECT_TRUE(dropView().performDragOperation(pasteboard));
    EXPECT_EQ(shelf().items().size(), 1u);
    EXPECT_EQ(opening(), "at once");
}

TEST_F(AppDelegateTest, theIconAndPressedHotkeysDoWhatTheyAreForAndQuitEndsTheProgram) {
    launch();
    statusBar.button->action();
    EXPECT_EQ(opening(), "animated");
    notifications.post(togglePopoverNotification);
    EXPECT_FALSE(isOpen());
    notifications.post(quickDropNotification);
    EXPECT_FALSE(isOpen()) << "nothing is selected";
    EXPECT_EQ(statusBar.button->image.symbolName, "exclamationmark.triangle.fill");
    dispatch.advance(2s);
    EXPECT_EQ(statusBar.button->image.accessibilityDescription, "Shelf");
    fileManagerSelection.files = makeFiles(1);
    notifications.post(quickDropNotification);
    EXPECT_EQ(shelf().items().size(), 1u);
    EXPECT_EQ(opening(), "animated");
    views.onQuit();
    EXPECT_TRUE(application.isTerminated);
}

TEST_F(AppDelegateTest, aQuickDropThatCannotKnowTheSelectionTakesCopiedFilesOrAsksForThem) {
    const auto message = [this] { return app->shelfViewModel().capacityMessage().value_or("none"); };
    launch();
    fileManagerSelection.known = false;
    clipboard.content = {std::make_shared<FakeItemProvider>()};
    notifications.post(quickDropNotification);
    EXPECT_EQ(opening(), "animated");
    dispatch.advance(999ms);
    EXPECT_EQ(message(), "none") << "the desktop may still hand the files over";
    dispatch.advance(1ms);
    EXPECT_EQ(message(), "Copy files first, then press the shortcut");

    const auto file = FakeItemProvider::withURL(makeFiles(1).front().string());
    clipboard.content.push_back(file);
    notifications.post(quickDropNotification);
    EXPECT_EQ(message(), "none");
    dispatch.advance(200ms);
    file->finish();
    dispatch.runAll();
    EXPECT_EQ(shelf().items().size(), 1u) << "without what is no file";

    clipboard.content.clear();
    for (const auto looking : {1000ms, 0ms}) {
        notifications.post(quickDropNotification);
        dispatch.advance(looking);
        app->closePopover();
        dispatch.advance(1s);
        EXPECT_EQ(message(), "none") << "it is forgotten with the closed shelf";
    }
}

TEST_F(AppDelegateTest, aClickElsewhereClosesTheShelfAfterAMomentUnlessADragIsOnAndEscapeAtOnce) {
    launchAndOpen();
    eventMonitors.clickElsewhere();
    dispatch.advance(200ms);
    eventMonitors.clickElsewhere();
    dispatch.advance(299ms);
    EXPECT_TRUE(isOpen()) << "only the second click's close is pending";
    dispatch.advance(1ms);
    EXPECT_FALSE(isOpen());
    EXPECT_TRUE(eventMonitors.clickHandlers.empty());
    app->showPopover(Animation::animated);
    eventMonitors.clickElsewhere();
    views.popover->onCancel();
    EXPECT_FALSE(isOpen());
    app->showPopover(Animation::animated);
    dispatch.advance(1s);
    EXPECT_TRUE(isOpen()) << "the pending close was cancelled";

    for (const auto& [button, keepsItOpen] : {std::pair(1U, true), {2U, false}}) {  // only the left one drags
        eventMonitors.pressed = button;
        eventMonitors.clickElsewhere();
        dispatch.advance(300ms);
        eventMonitors.pressed = 0;
        dispatch.advance(1s);
        EXPECT_EQ(isOpen(), keepsItOpen) << "nothing looks again later";
    }
}

TEST_F(AppDelegateTest, itsKeysWorkInsideTheApplicationWithExactlyTheirFlags) {
    launch();
    EXPECT_TRUE(eventMonitors.press(1, 0xA0000 | 0x120));
    EXPECT_EQ(opening(), "animated");
    EXPECT_FALSE(eventMonitors.press(1, 0xA0000 | 0x10000)) << "Caps Lock";
    fileManagerSelection.files = makeFiles(1);
    EXPECT_TRUE(eventMonitors.press(2, 0xA0000));
    EXPECT_EQ(shelf().items().size(), 1u);
}

TEST_F(AppDelegateTest, aChangedShortcutTakesOverAndAClearedOneIsDead) {
    launch();
    preferences.setValue(preferenceKey::shelfHotkeyKeyCode, 0);
    preferences.setValue(preferenceKey::quickDropKeyCode, -1);
    notifications.post(shortcutChangedNotification);
    ASSERT_EQ(hotkeyService.registered.size(), 1u);
    EXPECT_FALSE(eventMonitors.press(1, 0xA0000));
    EXPECT_TRUE(eventMonitors.press(0, 0xA0000));
    preferences.setValue(preferenceKey::shelfHotkeyKeyCode, 65536);
    notifications.post(shortcutChangedNotification);
    EXPECT_DEATH(eventMonitors.press(1, 0), "16 bits");
}

TEST_F(AppDelegateTest, aFileThatVanishesIsMarkedAtOneTickAndGoneAtTheNext) {
    addFiles(2);
    launch();
    files.removeItem(fileAt("/files/0.txt"));
    dispatch.advance(4999ms);
    dispatch.advance(1ms);
    dispatch.runAll();
    ASSERT_EQ(shelf().items().size(), 2u);
    dispatch.advance(5s);
    EXPECT_EQ(statusBar.button->title.text, " 1");
    for (Signal<>* const volume : {&volumes.mounted, &volumes.unmounted}) {
        dispatch.runAll();
        volume->emit();
        EXPECT_EQ(dispatch.backgroundCount(), 1u) << "volumes that come and go are looked at";
    }
}

TEST_F(AppDelegateTest, aDragOutOfTheIconCarriesTheNewestFileThatIsThereOrAllOfThemOrOneThatWasChosen) {
    launch();
    const IconDragSource& source = statusBar.button->dragSource;
    EXPECT_TRUE(source.files(IconDrag::newest).empty());
    int changes = 0;
    const std::vector<Subscription> watching = source.watch([&] { ++changes; });
    const std::vector<FileURL> added = makeFiles(3);
    shelf().addFiles(added);
    EXPECT_EQ(changes, 1);
    files.removeItem(added[2]);
    EXPECT_EQ(source.files(IconDrag::newest), std::vector{added[1]});
    EXPECT_EQ(source.files(IconDrag::everything), (std::vector{added[0], added[1]}));
    const std::vector<WaitingFile> list = source.list();
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(list[2].name, added[0].lastPathComponent());
    EXPECT_EQ(source.file(list[2].id), std::vector{added[0]});
    EXPECT_TRUE(source.file(list[0].id).empty()) << "it has just gone";
}

TEST_F(AppDelegateTest, aProgramAtRestWakesUpForNoMoreThanItsFiles) {
    launch();
    const auto wakeUpsIn = [this](std::chrono::seconds time) {
        dispatch.runAll();
        dispatch.wakeUps = 0;
        for (; time > 0s; time -= 1s) {
            dispatch.advance(1s);
            dispatch.runAll();
        }
        return dispatch.wakeUps;
    };
    EXPECT_EQ(wakeUpsIn(58s), 0) << "on an empty shelf";
    shelf().addFiles(makeFiles(20));
    EXPECT_EQ(wakeUpsIn(2s), 2) << "in the rhythm of the start";
    EXPECT_EQ(wakeUpsIn(60s), 12 * 2) << "the timer and its turn on the main queue, no answer";
    shelf().clear();
    EXPECT_EQ(wakeUpsIn(61s), 1) << "when it can no longer be undone";
}

TEST_F(AppDelegateTest, theIconsMenuOffersWhatCanBeDoneAndNothingElseIsDone) {
    const auto titles = [this] {
        std::string line;
        for (const StatusItemMenuEntry& entry : statusBar.button->menu.entries())
            line += (entry.isEnabled ? entry.title : "-") + "|";
        return line;
    };
    const auto choose = [this](IconCommand command) {
        statusBar.button->menu.choose(static_cast<int>(command));
        dispatch.runAll();
    };
    launch();
    EXPECT_EQ(titles(), "Open Shelf|Quick Drop|Paste|-|Settings\u2026|Quit stowpocket|");
    statusBar.button->menu.choose(-4);
    choose(IconCommand::clear);
    EXPECT_FALSE(views.popover->isOpen);

    files.add("/pasted");
    clipboard.content = {FakeItemProvider::withURL("file:///pasted")};
    choose(IconCommand::paste);
    static_cast<FakeItemProvider&>(*clipboard.content[0]).finish();
    dispatch.runAll();
    EXPECT_EQ(opening(), "animated");
    int questions = 0;
    const Subscription asked = app->shelfViewModel().clearRequested.connect([&] { ++questions; });
    choose(IconCommand::clear);
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(shelf().items().size(), 1U) << "only once the question is answered";
    shelf().clear();
    EXPECT_EQ(titles(), "Open Shelf|Quick Drop|Paste|Undo Clear|-|Settings\u2026|Quit stowpocket|");
    choose(IconCommand::undo);
    choose(IconCommand::settings);
    EXPECT_TRUE(views.settingsWindow->isOpen);
    choose(IconCommand::quit);
    EXPECT_TRUE(application.isTerminated);
}

TEST_F(AppDelegateTest, oneSettingsWindowIsReusedOnlyWhileItIsOpen) {
    launchAndOpen();
    for (const bool isReused : {false, true, false}) {
        application.isActive = false;
        views.onOpenSettings();
        const FakeWindow& window = *views.settingsWindow;
        EXPECT_FALSE(isOpen());
        EXPECT_TRUE(window.isOpen && window.isCentred && application.isActive);
        EXPECT_EQ(window.isInFrontOfAll, isReused);
        if (isReused)
            views.settingsWindow->close();
    }
}

TEST_F(AppDelegateTest, terminatingStopsWhatWaitsAndNothingElse) {
    launchAndOpen();
    eventMonitors.clickElsewhere();
    app->applicationWillTerminate();
    EXPECT_EQ(dispatch.scheduledCount(), 0u);
    EXPECT_TRUE(eventMonitors.clickHandlers.empty());
    EXPECT_EQ(eventMonitors.keyHandlers.size(), 2u);
    EXPECT_EQ(hotkeyService.registered.size(), 2u);
}

TEST_F(AppDelegateTest, aShelfThatFindsNoPlaceCountsAsClosed) {
    launch();
    views.popover->hasPlace = false;
    app->showPopover(Animation::none);
    EXPECT_FALSE(views.popover->isKey || application.isActive || !eventMonitors.clickHandlers.empty());

    statusBar.button = nullptr;  // a bar without room
    app = AppDelegate::make(appServices());
    launch();
    shelf().addFiles(makeFiles(1));
    app->statusItemClicked();
    EXPECT_FALSE(isOpen());
}

TEST_F(AppDelegateTest, whatItHandedOutDoesNothingOnceItIsGone) {
    launchAndOpen();
    fileManagerSelection.files = makeFiles(1);
    app.reset();
    FakePasteboard pasteboard;
    statusBar.button->action();
    views.onOpenSettings();
    views.onQuit();
    notifications.post(quickDropNotification);
    eventMonitors.clickElsewhere();
    EXPECT_EQ(dropView().draggingEntered(pasteboard), DragOperation::none);
    dispatch.advance(20s);
    EXPECT_EQ(views.settingsWindow, nullptr);
    EXPECT_FALSE(application.isTerminated);
}

}  // namespace
}  // namespace stowpocket
