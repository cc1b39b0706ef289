// SPDX-License-Identifier: MIT
#pragma once

#include "services/Files.h"
#include "services/MainBundle.h"
#include "services/Processes.h"
#include "services/UpdateFramework.h"
#include "services/Windows.h"
#include "updates/UpdateStatus.h"
#include "updates/UpdateTransport.h"

namespace stowpocket {

class FakeUpdateFramework : public UpdateFramework {
public:
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
class FakeFeedSession : public FeedSession {
public:
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

class FakeAlerts : public Alerts {
public:
    void runModal(const InformationalAlert& alert) override { shown.push_back(alert); }
    std::vector<InformationalAlert> shown;
};

/// A disk-image tool that answers what the test says, and a parser for that answer.
class FakeImageTool : public ChildProcess, public PropertyListParser, public Trash {
public:
    [[nodiscard]] std::optional<Bytes> run(const std::string& executable,
                                           const std::vector<std::string>& arguments) override {
        done.push_back(executable);
        for (const std::string& argument : arguments)
            done.back() += " " + argument;
        const bool runs = canRun && (canDetach || arguments.front() != "detach");
        return runs ? std::optional(Bytes{}) : std::nullopt;
    }
    [[nodiscard]] std::optional<PropertyValue> parse(const Bytes&) override { return info; }
    [[nodiscard]] bool trashItem(const FileURL& url) override {
        done.push_back("trash " + url.path());
        return true;
    }

    std::vector<std::string> done;
    bool canRun = true;
    bool canDetach = true;
    std::optional<PropertyValue> info;
};

/// Notes what it is to do and keeps the completion until the test answers.
class FakeUpdateTransport : public UpdateTransport {
public:
    explicit FakeUpdateTransport(std::vector<std::string>& log) : log_(log) {}
    void readList(const std::string& url, const std::string& key, ListDone newDone) override {
        log_.push_back("list " + url + " " + key);
        listDone = std::move(newDone);
    }
    void readNotes(const std::string& url, TextDone newDone) override {
        log_.push_back("notes " + url);
        notesDone = std::move(newDone);
    }
    void download(const AppcastItem& item, const std::string& key, Progress newProgress, Done newDone) override {
        log_.push_back("download " + item.version + " " + key);
        progress = std::move(newProgress);
        done = std::move(newDone);
    }
    void install(const AppcastItem& item, const std::string& key, Done newDone) override {
        log_.push_back("install " + item.version + " " + key);
        done = std::move(newDone);
    }
    void cancel() override { log_.push_back("cancel"); }
    void discardDownload() override { log_.push_back("discard"); }
    void removeReplaced() override { log_.push_back("remove replaced"); }

    ListDone listDone;
    TextDone notesDone;
    Progress progress;
    Done done;

private:
    std::vector<std::string>& log_;
};

class FakeUpdateWindow : public UpdateWindow {
public:
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
