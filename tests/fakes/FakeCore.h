// SPDX-License-Identifier: MIT
#pragma once

#include "app/Settings.h"
#include "fakes/FakeDispatch.h"
#include "fakes/FakeFiles.h"
#include "services/CoreServices.h"
#include "services/MainBundle.h"
#include "shelf/PersistedShelf.h"

namespace stowpocket {

/// Counts how often the shelf is written, which takes its time if the test wants it to.
struct CountingPreferences : LayeredPreferenceStore {
    void setValue(std::string_view key, PropertyValue value) override {
        if (key == shelfBookmarksKey) {
            ++saves;
            onSave();
        }
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
    std::function<void()> onSave = [] {};
    bool isSlow = false;
    std::vector<SaveCompletion> waiting;
};

/// What every room is built on, as fakes.
struct FakeCore {
    CountingPreferences preferences;
    FakeDispatch dispatch;
    Clock& clock = dispatch;
    NotificationCenter notifications;
    FakeFiles files;
    Bookmarks& bookmarks = files;
    MainBundle bundle{fileAt("/usr/bin/stowpocket"), {}};
    CoreServices core{preferences, dispatch, clock, notifications, files, bundle};
};

}  // namespace stowpocket
