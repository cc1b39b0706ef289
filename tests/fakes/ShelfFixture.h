// SPDX-License-Identifier: MIT
#pragma once

#include "app/Preferences.h"
#include "fakes/FakeDispatch.h"
#include "fakes/FakeFiles.h"
#include "fakes/FakePictures.h"
#include "services/Preferences.h"
#include "shelf/PersistedShelf.h"
#include "shelf/ShelfViewModel.h"

namespace stowpocket {

/// Counts how often the shelf is written, which takes its time if the test wants it to.
class CountingPreferences : public LayeredPreferenceStore {
public:
    void setValue(std::string_view key, PropertyValue value) override {
        saves += key == shelfBookmarksKey ? 1 : 0;
        LayeredPreferenceStore::setValue(key, std::move(value));
    }
    void whenSaved(SaveCompletion completion) override {
        if (isSlow)
            waiting.push_back(std::move(completion));
        else
            LayeredPreferenceStore::whenSaved(std::move(completion));
    }
    void finishSaving(std::optional<std::string> problem) {
        setSaveProblem(problem);
        for (const SaveCompletion& completion : std::exchange(waiting, {}))
            completion(problem);
    }
    int saves = 0;
    bool isSlow = false;
    std::vector<SaveCompletion> waiting;
};

/// A shelf on fakes: what every test of it starts from.
struct ShelfFixture {
    CountingPreferences preferences;
    FakeFiles files;
    FakeThumbnails thumbnails;
    FakeIcons icons;
    FakeScreen screen;
    FakeDispatch dispatch;
    NotificationCenter notifications;
    ShelfServices services{preferences, files, files, thumbnails, icons, screen, dispatch, dispatch, notifications};

    int posts = 0;
    Subscription observer = notifications.observe(itemsChangedNotification, [this] { ++posts; });
    std::shared_ptr<ShelfManager> manager = ShelfManager::make(services);
    std::shared_ptr<ShelfViewModel> viewModel = ShelfViewModel::make(manager, files, dispatch);

    /// Files "/files/<first>.txt" and on, which exist.
    std::vector<FileURL> makeFiles(int count, int first = 0) {
        std::vector<FileURL> urls;
        for (int number = first; number < first + count; ++number) {
            const std::string path = "/files/" + std::to_string(number) + ".txt";
            files.add(path);
            urls.push_back(*FileURL::fromPath(path));
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

    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> list;
        for (const ShelfItem& item : manager->items())
            list.push_back(item.filename);
        return list;
    }

    /// A new manager on what is stored, as at the next start.
    void restart() {
        manager = ShelfManager::make(services);
        viewModel = ShelfViewModel::make(manager, files, dispatch);
        manager->load();
    }
};

}  // namespace stowpocket
