// SPDX-License-Identifier: MIT
#include "app/CopiedFilesDrop.h"

#include "fakes/ShelfFixture.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

TEST(CopiedFilesDropTest, addsCopiedFilesOnceTheDesktopHandsThemOverAndAsksForThemOtherwise) {
    ShelfFixture shelf;
    CopiedFilesDrop drop(shelf.viewModel, shelf.clipboard, shelf.dispatch);
    shelf.clipboard.content = {std::make_shared<FakeItemProvider>()};
    drop.begin();
    shelf.dispatch.advance(999ms);
    EXPECT_EQ(shelf.viewModel->capacityMessage(), std::nullopt) << "the desktop may still hand the files over";
    shelf.dispatch.advance(1ms);
    EXPECT_EQ(shelf.viewModel->capacityMessage(), "Copy files first, then press the shortcut");

    const auto file = FakeItemProvider::withURL(shelf.makeFiles(1).front().string());
    shelf.clipboard.content.push_back(file);
    drop.begin();
    EXPECT_EQ(shelf.viewModel->capacityMessage(), std::nullopt);
    shelf.dispatch.advance(200ms);
    file->finish();
    shelf.dispatch.runAll();
    EXPECT_EQ(shelf.manager->items().size(), 1u) << "without what is no file";

    shelf.clipboard.content.clear();
    drop.begin();
    shelf.dispatch.advance(1s);
    drop.end();
    EXPECT_EQ(shelf.viewModel->capacityMessage(), std::nullopt) << "it is forgotten with the closed shelf";
    drop.begin();
    drop.end();
    EXPECT_EQ(shelf.dispatch.scheduledCount(), 0u);
}

}  // namespace
}  // namespace stowpocket
