// SPDX-License-Identifier: MIT
#include "ReferencePicture.h"
#include "ShelfViewFixture.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using Scene = std::function<void(ShelfViewFixture& shelf)>;

void missing(ShelfViewFixture& shelf) {
    shelf.addThreeFiles();
    shelf.files.removeItem(shelf.manager->items()[1].fileURL);
    shelf.manager->refreshAvailability();
    shelf.dispatch.runAll();
}

void full(ShelfViewFixture& shelf) {
    shelf.room = 420;
    shelf.addThreeFiles();
    shelf.addFiles(15);
    shelf.viewModel->addFileURLs(shelf.makeFiles(5, 100));
}

TEST(ShelfPictureTest, theShelfLooksAsItShould) {
    const std::vector<std::pair<std::string, Scene>> scenes{
        {"empty", [](ShelfViewFixture&) {}},
        {"three", [](ShelfViewFixture& shelf) { shelf.addThreeFiles(); }},
        {"missing", missing},
        {"full", full},
    };
    for (const auto& [appearance, suffix] : {std::pair(Appearance::light, "-light"), {Appearance::dark, "-dark"}}) {
        const FixedLook look(appearance);
        for (const auto& [name, scene] : scenes) {
            ShelfViewFixture shelf;
            scene(shelf);
            shelf.open();
            expectLooksLike(shelf.host, ("shelf-" + name + suffix).c_str());
        }
    }
}

/// What a picture must tell apart, each on its own.
TEST(ShelfPictureTest, picturesTellWhatIsMissingMovedOrOfAnotherColour) {
    const FixedLook look(Appearance::light);
    const auto painted = [](const Scene& change) {
        ShelfViewFixture shelf;
        shelf.addThreeFiles();
        shelf.open();
        change(shelf);
        return shelf.host.grab().toImage();
    };
    const QImage before = painted([](ShelfViewFixture&) {});
    const QImage smoothed = before.scaled(before.size() * 3, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                                .scaled(before.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    EXPECT_NE(smoothed, before);
    EXPECT_TRUE(looksAlike(before, smoothed));
    const std::vector<std::pair<const char*, Scene>> changes{
        {"a tile moved",
         [](ShelfViewFixture& shelf) {
             QWidget* const tile = visible<ShelfItemView>(*shelf.view)[1];
             tile->move(tile->x() + 3, tile->y());
         }},
        {"a symbol gone", [](ShelfViewFixture& shelf) { button(*shelf.view, "Settings")->hide(); }},
        {"a text gone", [](ShelfViewFixture& shelf) { visible<Text>(*shelf.view)[1]->clear(); }},
        {"a zone highlighted",
         [](ShelfViewFixture& shelf) {
             DropZoneView& zone = *visible<DropZoneView>(*shelf.view)[0];
             zone.hide();
             zone.setTargeted(true);
             zone.show();
         }},
    };
    for (const auto& [what, change] : changes)
        EXPECT_FALSE(looksAlike(before, painted(change))) << what;
}

}  // namespace
}  // namespace stowpocket
