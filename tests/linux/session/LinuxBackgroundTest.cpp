// SPDX-License-Identifier: MIT
#include "main/linux/LinuxServices.h"
#include "support/ComesTrue.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <atomic>

namespace stowpocket {
namespace {

TEST(LinuxBackgroundTest, whatWorkUsesStaysForItWhenItDoesNotEnd) {
    TemporaryFolder folder;
    folder.write("a", "text");
    const FileURL file = *FileURL::fromPath(folder.path("a"));
    auto* const background = new LinuxBackground;
    OutlivesBackgroundWork<LinuxBackground> owner(background);
    std::atomic<bool> isToEnd = false;
    std::atomic<int> rounds = 0;
    std::atomic<int> failures = 0;
    background->dispatch.background([&] {
        for (; !isToEnd; ++rounds) {
            const bool isRight = background->files.fileExists(file) && background->bookmarks.create(file) &&
                                 background->clock.now() > Date{};
            background->dispatch.async([] {});
            failures += isRight ? 0 : 1;
        }
    });
    const auto worksOn = [&] {
        return comesTrue([] {}, [&, before = rounds.load()] { return rounds > before + 10; });
    };
    EXPECT_TRUE(worksOn());
    owner.reset();
    EXPECT_TRUE(worksOn());
    isToEnd = true;
    EXPECT_EQ(failures, 0);
    EXPECT_TRUE(comesTrue([&] { return background->dispatch.finish(); }));
    delete background;
}

}  // namespace
}  // namespace stowpocket
