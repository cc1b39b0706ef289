// SPDX-License-Identifier: MIT
#pragma once

#include "fakes/FakeCore.h"
#include "fakes/FakeDragging.h"
#include "fakes/FakePictures.h"
#include "shelf/ShelfViewModel.h"

namespace stowpocket {

/// A shelf on fakes: what every test of it starts from.
struct ShelfFixture : FakeCore {
    FakeThumbnails thumbnails;
    FakeIcons icons;
    FakeScreen screen;
    FakeClipboard clipboard;
    ShelfServices services{core, files, thumbnails, icons, screen};

    int posts = 0;
    Subscription observer = notifications.observe(itemsChangedNotification, [this] { ++posts; });
    std::shared_ptr<ShelfManager> manager = ShelfManager::make(services);
    std::shared_ptr<ShelfViewModel> viewModel = ShelfViewModel::make(manager, files, dispatch, clipboard);

    /// Files "/files/<first>.txt" and on, which exist.
    std::vector<FileURL> makeFiles(int count, int first = 0) {
        std::vector<FileURL> urls;
        for (int number = first; number < first + count; ++number) {
            const std::string path = "/files/" + std::to_string(number) + ".txt";
            files.add(path);
            urls.push_back(fileAt(path));
        }
        return urls;
    }

    /// Adds that many files and lets their batch arrive.
    void addFiles(int count, int first = 0) {
        manager->addFiles(makeFiles(count, first));
        dispatch.runAll();
    }

    /// Takes the file of that item away and lets the shelf see it.
    void loseFile(std::size_t index) {
        files.removeItem(manager->items()[index].fileURL);
        manager->refreshAvailability();
        dispatch.runAll();
    }

    [[nodiscard]] Names names() const { return namesOf(manager->items(), &ShelfItem::filename); }

    /// A new manager on what is stored, as at the next start.
    void restart() {
        manager = ShelfManager::make(services);
        viewModel = ShelfViewModel::make(manager, files, dispatch, clipboard);
        manager->load();
    }
};

}  // namespace stowpocket
