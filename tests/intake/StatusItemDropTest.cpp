// SPDX-License-Identifier: MIT
#include "intake/StatusItemDrop.h"
#include "fakes/FakeDesktop.h"
#include "fakes/FakeDispatch.h"
#include "fakes/FakeFiles.h"
#include "services/MainBundle.h"
#include "shelf/ShelfManager.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

class StatusItemDropTest : public testing::Test {
protected:
    StatusItemDropTest() { handler->install(); }

    DraggingDestination& view() { return *button->dropView; }

    std::shared_ptr<FakeStatusItemButton> button = std::make_shared<FakeStatusItemButton>();
    std::vector<std::vector<FileURL>> drops;
    FakeFiles files;
    FakeDispatch dispatch;
    std::shared_ptr<StatusItemDropHandler> handler = std::make_shared<StatusItemDropHandler>(
        button, files, dispatch, [this](const std::vector<FileURL>& urls) { drops.push_back(urls); }, [] {});
    FakePasteboard pasteboard;
};

TEST_F(StatusItemDropTest, deliversTheFilesOfOneDropTogetherAndSkipsTheRest) {
    EXPECT_EQ(view().registeredDraggedTypes(),
              (std::vector<std::string>{"public.file-url", "com.apple.pasteboard.promised-file-url"}));
    pasteboard.addFileURL("file:relative");
    EXPECT_FALSE(view().performDragOperation(pasteboard)) << "no file at all";
    pasteboard.addFileURL("file:///b");
    pasteboard.addFileURL("https://example.com/x");
    pasteboard.content.push_back({{{"public.utf8-plain-text", "file:///no"}}});
    pasteboard.addFileURL("file:///a");
    EXPECT_TRUE(view().performDragOperation(pasteboard));
    ASSERT_EQ(drops.size(), 1u);
    EXPECT_EQ(drops[0], (std::vector<FileURL>{*FileURL::fromPath("/b"), *FileURL::fromPath("/a")}));
}

TEST_F(StatusItemDropTest, promisedFilesAreDeliveredTogetherInTheOrderOfTheirArrival) {
    const auto one = std::make_shared<FakePromiseReceiver>();
    const auto two = std::make_shared<FakePromiseReceiver>();
    const auto failing = std::make_shared<FakePromiseReceiver>();
    pasteboard.receivers = {one, two, failing};
    EXPECT_TRUE(view().performDragOperation(pasteboard)) << "before anything has arrived";
    const FileURL folder = ShelfManager::filePromiseDirectory(files);
    EXPECT_EQ(one->destination, folder);
    EXPECT_TRUE(files.fileExists(folder));
    EXPECT_EQ(dispatch.queueLabels, std::vector<std::string>{std::string(bundleIdentifier) + ".promises"});
    two->arrive("two");
    failing->reader(std::nullopt);
    dispatch.runAll();
    EXPECT_TRUE(drops.empty());
    one->arrive("one");
    EXPECT_TRUE(drops.empty()) << "delivered on the main queue";
    dispatch.runAll();
    ASSERT_EQ(drops.size(), 1u);
    EXPECT_EQ(drops[0], (std::vector<FileURL>{folder.appending("two"), folder.appending("one")}));
    one->arrive("surplus");
    dispatch.runAll();
    EXPECT_EQ(drops.size(), 1u);
}

TEST_F(StatusItemDropTest, eachReceiverIsWaitedForOnceHoweverManyFilesItBrings) {
    const auto generous = std::make_shared<FakePromiseReceiver>();
    const auto slow = std::make_shared<FakePromiseReceiver>();
    pasteboard.receivers = {generous, slow};
    EXPECT_TRUE(view().performDragOperation(pasteboard));
    generous->arrive("one");
    generous->arrive("two");
    dispatch.runAll();
    ASSERT_EQ(drops.size(), 1u);
    EXPECT_EQ(drops[0].size(), 2u);
}

TEST_F(StatusItemDropTest, promisesGiveWayToPlainFilesAndMayComeToNothing) {
    const auto receiver = std::make_shared<FakePromiseReceiver>();
    pasteboard.receivers = {receiver};
    pasteboard.addFileURL("file:///plain");
    EXPECT_TRUE(view().performDragOperation(pasteboard));
    EXPECT_FALSE(receiver->destination);
    EXPECT_EQ(drops.size(), 1u);

    pasteboard.content.clear();
    files.canCreateDirectories = false;
    EXPECT_TRUE(view().performDragOperation(pasteboard));
    receiver->reader(std::nullopt);
    dispatch.runAll();
    EXPECT_TRUE(view().performDragOperation(pasteboard));
    receiver->arrive("late");
    handler.reset();
    dispatch.runAll();
    EXPECT_EQ(drops.size(), 1u);
    EXPECT_FALSE(view().performDragOperation(pasteboard)) << "nothing is taken any more";
}

}  // namespace
}  // namespace stowpocket
