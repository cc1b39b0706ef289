// SPDX-License-Identifier: MIT
#pragma once

#include "services/OtherPrograms.h"
#include "services/UpdateFramework.h"
#include "services/Windows.h"
#include "updates/UpdateStatus.h"

#include <set>

namespace stowpocket {

struct FakeUpdateFramework : UpdateFramework {
    [[nodiscard]] bool canCheckForUpdates() const override { return true; }
    [[nodiscard]] Signal<bool>& canCheckForUpdatesChanged() override { return changed; }
    void setAutomaticallyDownloadsUpdates(bool automatically) override { downloads = automatically; }
    void checkForUpdates() override { ++windows; }

    Signal<bool> changed;
    /// None until it was told.
    std::optional<bool> downloads;
    int windows = 0;
};

/// Keeps each request until the test answers it.
struct FakeFeedSession : FeedSession {
    [[nodiscard]] bool isValid(const std::string& url) const override { return url.starts_with("https:"); }
    void dataTask(const std::string& url, Completion newCompletion) override {
        asked.push_back(url);
        completion = std::move(newCompletion);
    }
    void answer(std::optional<int> status, const std::string& body) {
        completion(FeedResponse{status, Bytes(body.begin(), body.end())});
    }

    std::vector<std::string> asked;
    Completion completion;
};

struct FakeAlerts : Alerts {
    void runModal(const InformationalAlert& alert) override { shown.push_back(alert); }
    std::vector<InformationalAlert> shown;
};

/// A machine on which disk images are mounted: its tool, a parser for what that says, and a trash.
struct FakeImageTool : ChildProcess, PropertyListParser, Trash {
    std::optional<Bytes> run(const std::string& executable, const std::vector<std::string>& arguments) override {
        if (executable != "/usr/bin/hdiutil")
            return std::nullopt;
        if (arguments == std::vector<std::string>{"info", "-plist"}) {
            ++looks;
            return Bytes{};
        }
        const bool isDetached = canDetach && arguments.front() == "detach" && arguments.back() == "-quiet";
        if (isDetached)
            detached.push_back(arguments.at(1));
        return isDetached ? std::optional(Bytes{}) : std::nullopt;
    }
    [[nodiscard]] std::optional<PropertyValue> parse(const Bytes&) override { return info; }
    [[nodiscard]] bool trashItem(const FileURL& url) override {
        trashed.push_back(url.path());
        return true;
    }

    int looks = 0;
    std::vector<std::string> detached;
    std::vector<std::string> trashed;
    bool canDetach = true;
    std::optional<PropertyValue> info;
};

/// Is at work until the test ends the job.
struct FakeUpdateTransport : UpdateTransport {
    void readList(const std::string& url, const std::string& key, ListDone newDone) override {
        ++lists;
        keys.insert(url + ' ' + key);
        listDone = std::move(newDone);
    }
    void readNotes(const std::string& url, TextDone newDone) override {
        if (url == "https://e.example/notes")
            notesDone = std::move(newDone);
    }
    void download(const AppcastItem& item, const std::string& key, Progress newProgress, Done newDone) override {
        keys.insert(key);
        downloading = item.version;
        progress = std::move(newProgress);
        done = std::move(newDone);
    }
    void install(const AppcastItem& item, const std::string& key, Done newDone) override {
        keys.insert(key);
        installing = item.version;
        done = std::move(newDone);
    }
    void cancel() override { notesDone = {}; }
    void discardDownload() override { downloading.clear(); }
    void removeReplaced() override { isReplacedThere = false; }

    /// How many lists were asked for, and with which addresses and keys anything was.
    int lists = 0;
    std::set<std::string> keys;
    /// The versions that were asked for; empty: none.
    std::string downloading;
    std::string installing;
    bool isReplacedThere = true;
    ListDone listDone;
    TextDone notesDone;
    Progress progress;
    Done done;
};

struct FakeUpdateWindow : UpdateWindow {
    void show(const UpdateStatus& status) override { shown = status; }
    void bringToFront() override { ++timesInFront; }
    void close() override { shown.reset(); }
    [[nodiscard]] Signal<UpdateChoice>& chosen() override { return choices; }

    /// None while it is closed.
    std::optional<UpdateStatus> shown;
    int timesInFront = 0;
    Signal<UpdateChoice> choices;
};

}  // namespace stowpocket
