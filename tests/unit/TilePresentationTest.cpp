// SPDX-License-Identifier: MIT
#include "presentation/TilePresentation.h"

#include "fakes/ShelfFixture.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

class TilePresentationTest : public testing::Test, protected ShelfFixture {};

TEST_F(TilePresentationTest, aMissingFileKeepsItsFactsButCannotBeDragged) {
    files.add("/files/notes.txt", std::string(1500, 'x'));
    manager->addFiles(std::vector{*FileURL::fromPath("/files/notes.txt")});
    const TilePresentation before = tilePresentation(manager->items()[0]);
    EXPECT_TRUE(before.isDraggable);
    EXPECT_EQ(before.accessibleName(), "notes.txt, 2 KB");

    files.removeItem(*FileURL::fromPath("/files/notes.txt"));
    manager->refreshAvailability();
    dispatch.runAll();
    const TilePresentation after = tilePresentation(manager->items()[0]);
    EXPECT_TRUE(after.isMissing);
    EXPECT_FALSE(after.isDraggable);
    EXPECT_EQ(after.accessibleName(), "notes.txt, 2 KB, Missing");
}

TEST_F(TilePresentationTest, aFileNameIsOneHonestLine) {
    using Case = std::pair<const char*, const char*>;
    for (const auto& [filename, shown] : {
             Case{"plain name.txt", "plain name.txt"},
             Case{"two\nlines\t\x7f.txt", "two lines  .txt"},
             Case{"next\u0085line\u2028and\u2029paragraph", "next line and paragraph"},
             Case{"invoice\u202egpj.exe", "invoicegpj.exe"},
             Case{"\u2066isolated\u2069", "isolated"},
             Case{"עברית.txt", "עברית.txt"},
             Case{"👩‍👩‍👧‍👦.png", "👩‍👩‍👧‍👦.png"},
             Case{"\ufffd", "\ufffd"},
         })
        EXPECT_EQ(displayName(filename), shown);
}

}  // namespace
}  // namespace stowpocket
