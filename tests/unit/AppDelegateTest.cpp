// SPDX-License-Identifier: MIT
#include "app/AppDelegate.h"

#include "fakes/FakeDesktop.h"
#include "fakes/ShelfFixture.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

class AppDelegateTest : public testing::Test, protected ShelfFixture {
protected:
    void launch() {
        app->applicationDidFinishLaunching();
        dispatch.runAll();
        log.clear();
    }
    [[nodiscard]] ShelfManager& shelf() const { return views.shelfViewModel->shelfManager(); }
    [[nodiscard]] DraggingDestination& dropView() const { return *statusBar.button->dropView; }

    CallLog log;
    FakeStatusBar statusBar;
    FakeViewFactory views{log};
    FakeApplication application{log};
    std::shared_ptr<AppDelegate> app = AppDelegate::make({services, statusBar, views, application});
    FakePasteboard pasteboard;
};

TEST_F(AppDelegateTest, theIconTellsHowManyItemsWait) {
    launch();
    const FakeStatusItemButton& button = *statusBar.button;
    EXPECT_EQ(button.image, (StatusItemImage{"tray.and.arrow.down", 16, FontWeight::medium, "Shelf"}));
    EXPECT_EQ(button.title.text, "");
    shelf().addFiles(makeFiles(1));
    EXPECT_EQ(button.image,
              (StatusItemImage{"tray.and.arrow.down.fill", 16, FontWeight::medium, "Shelf with 1 items"}));
    EXPECT_EQ(button.title, (StatusItemTitle{" 1", 9, FontWeight::bold, 4}));
    shelf().clear();
    EXPECT_EQ(button.image.symbolName, "tray.and.arrow.down");
    EXPECT_EQ(button.title.text, "");
}

TEST_F(AppDelegateTest, theLaunchShowsTheSavedShelfAndAsksForItsThumbnails) {
    addFiles(2);
    thumbnails.asked.clear();
    launch();
    EXPECT_EQ(statusBar.button->title.text, " 2");
    EXPECT_EQ(thumbnails.asked.size(), 2u);
}

TEST_F(AppDelegateTest, clickingTheIconOpensAndClosesTheShelf) {
    launch();
    statusBar.button->action();
    statusBar.button->action();
    EXPECT_EQ(log, (CallLog{"show", "key", "activate", "close"}));
}

TEST_F(AppDelegateTest, aDragOverTheIconOpensTheShelfAtOnceAndOnlyOnce) {
    launch();
    EXPECT_EQ(dropView().draggingEntered(pasteboard), DragOperation::copy);
    EXPECT_EQ(dropView().draggingUpdated(pasteboard), DragOperation::copy);
    EXPECT_EQ(dropView().draggingEntered(pasteboard), DragOperation::copy);
    EXPECT_EQ(log, (CallLog{"no animation", "show", "key", "activate", "animates"}));
}

TEST_F(AppDelegateTest, aDropOnTheIconGoesThroughTheIntake) {
    launch();
    for (const FileURL& url : makeFiles(25))
        pasteboard.addFileURL(url.string());
    EXPECT_TRUE(dropView().performDragOperation(pasteboard));
    dispatch.runAll();
    EXPECT_EQ(shelf().items().size(), 20u);
    EXPECT_EQ(views.shelfViewModel->capacityMessage(), "Added 20 of 25 files - shelf is full");
    EXPECT_EQ(log[1], "show");
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

TEST_F(AppDelegateTest, aCheckThatHangsDoesNotPileUp) {
    addFiles(1);
    launch();
    dispatch.advance(60s);
    EXPECT_EQ(dispatch.backgroundCount(), 1u);
}

TEST_F(AppDelegateTest, terminatingStopsTheTimer) {
    launch();
    app->applicationWillTerminate();
    EXPECT_EQ(dispatch.scheduledCount(), 0u);
    views.onQuit();
    EXPECT_EQ(log, CallLog{"terminate"});
}

TEST_F(AppDelegateTest, aBarWithoutRoomLeavesTheRestRunning) {
    statusBar.button = nullptr;
    launch();
    shelf().addFiles(makeFiles(1));
    app->statusItemClicked();
    EXPECT_TRUE(log.empty());
}

TEST_F(AppDelegateTest, whatItHandedOutDoesNothingOnceItIsGone) {
    launch();
    app.reset();
    statusBar.button->action();
    views.onOpenSettings();
    views.onQuit();
    EXPECT_EQ(dropView().draggingEntered(pasteboard), DragOperation::none);
    dispatch.advance(20s);
    EXPECT_TRUE(log.empty());
}

}  // namespace
}  // namespace stowpocket
