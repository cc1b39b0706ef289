// SPDX-License-Identifier: MIT
#include "fakes/FakeDesktop.h"
#include "intake/StatusItemDropHandler.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

class StatusItemDropTest : public testing::Test {
protected:
    StatusItemDropTest() { StatusItemDropHandler::install(handler); }

    DraggingDestination& view() { return *button->dropView; }

    std::shared_ptr<FakeStatusItemButton> button = std::make_shared<FakeStatusItemButton>();
    std::vector<std::vector<FileURL>> drops;
    int entered = 0;
    std::shared_ptr<StatusItemDropHandler> handler = std::make_shared<StatusItemDropHandler>(
        button, [this](const std::vector<FileURL>& urls) { drops.push_back(urls); }, [this] { ++entered; });
    FakePasteboard pasteboard;
};

TEST_F(StatusItemDropTest, asksForFilesAndForPromisedFiles) {
    EXPECT_EQ(view().registeredDraggedTypes(),
              (std::vector<std::string>{"public.file-url", "com.apple.pasteboard.promised-file-url"}));
}

TEST_F(StatusItemDropTest, deliversTheFilesOfOneDropTogetherAndSkipsTheRest) {
    pasteboard.addFileURL("file:///b");
    pasteboard.addFileURL("https://example.com/x");
    pasteboard.content.push_back({{{"public.utf8-plain-text", "file:///no"}}});
    pasteboard.addFileURL("file:///a");
    EXPECT_TRUE(view().performDragOperation(pasteboard));
    ASSERT_EQ(drops.size(), 1u);
    EXPECT_EQ(drops[0], (std::vector<FileURL>{*FileURL::fromPath("/b"), *FileURL::fromPath("/a")}));
}

TEST_F(StatusItemDropTest, refusesADropWithoutAnyFile) {
    pasteboard.addFileURL("file:relative");
    EXPECT_FALSE(view().performDragOperation(pasteboard));
    EXPECT_TRUE(drops.empty());
}

TEST_F(StatusItemDropTest, enteringTellsOnceAndMovingNever) {
    EXPECT_EQ(view().draggingEntered(pasteboard), DragOperation::copy);
    EXPECT_EQ(view().draggingUpdated(pasteboard), DragOperation::copy);
    EXPECT_EQ(view().draggingUpdated(pasteboard), DragOperation::copy);
    EXPECT_EQ(entered, 1);
}

TEST_F(StatusItemDropTest, takesNothingOnceItsHandlerIsGone) {
    pasteboard.addFileURL("file:///a");
    handler.reset();
    EXPECT_EQ(view().draggingEntered(pasteboard), DragOperation::none);
    EXPECT_FALSE(view().performDragOperation(pasteboard));
}

}  // namespace
}  // namespace stowpocket
