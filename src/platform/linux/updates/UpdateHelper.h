// SPDX-License-Identifier: MIT
#pragma once

#include "services/UpdateFramework.h"
#include "updates/UpdateStatus.h"

#include <QByteArray>
#include <QStringList>

#include <functional>
#include <list>
#include <memory>
#include <string>

class QObject;
class QProcess;

namespace stowpocket {

/// One run of `stowpocket-updater`. It is ended at once, without its completion, when this object is destroyed. Main
/// thread.
class UpdateHelperRun {
public:
    struct Result {
        std::optional<UpdateFailure> failure;
        /// Its whole output; empty after a failure.
        QByteArray output;
    };
    using Done = std::function<void(const Result&)>;
    using Output = std::function<void(const QByteArray& piece)>;

    /// `done` runs once, later, and may destroy this object. If `output` is given, it receives the output piece by
    /// piece.
    UpdateHelperRun(const std::string& program, const QStringList& arguments, Done done, Output output = {});
    UpdateHelperRun(const UpdateHelperRun&) = delete;
    UpdateHelperRun& operator=(const UpdateHelperRun&) = delete;
    ~UpdateHelperRun();

private:
    void read();
    void finish(std::optional<UpdateFailure> failure);

    QProcess* process_;
    /// Discards its queued events when it is destroyed.
    std::unique_ptr<QObject> context_;
    Done done_;
    Output output_;
    QByteArray printed_;
};

/// Documents fetched by `stowpocket-updater`. Completions run on the main thread, and not after this object is
/// destroyed.
class HelperFeedSession : public FeedSession {
public:
    explicit HelperFeedSession(std::string program) : program_(std::move(program)) {}
    [[nodiscard]] bool isValid(const std::string& url) const override;
    void dataTask(const std::string& url, Completion completion) override;

private:
    const std::string program_;
    std::list<std::unique_ptr<UpdateHelperRun>> tasks_;
};

/// The work of updates, done by `stowpocket-updater` in one process per job.
class HelperUpdateTransport : public UpdateTransport {
public:
    /// `replaceable` is the file that new versions replace; empty if there is none.
    HelperUpdateTransport(std::string program, const std::string& replaceable);

    void readList(const std::string& url, const std::string& publicKey, ListDone done) override;
    void readNotes(const std::string& url, TextDone done) override;
    void download(const AppcastItem& item, const std::string& publicKey, Progress progress, Done done) override;
    void install(const AppcastItem& item, const std::string& publicKey, Done done) override;
    void cancel() override { job_.reset(); }
    void discardDownload() override;
    void removeReplaced() override;

private:
    void start(const QStringList& arguments, std::function<void(const UpdateHelperRun::Result&)> done,
               UpdateHelperRun::Output output = {});

    std::string program_;
    QString replaceable_;
    std::unique_ptr<UpdateHelperRun> job_;
};

}  // namespace stowpocket
