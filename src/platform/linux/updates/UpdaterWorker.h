// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/updates/UpdaterProcess.h"

#include <string>

namespace stowpocket {

/// The work of updates done by `stowpocket-updater`, a process a job.
class UpdaterWorker : public UpdateWorker {
public:
    /// `replaceable` is the file that new versions take the place of; empty where there is none.
    UpdaterWorker(std::string program, const std::string& replaceable);

    void readList(const std::string& url, const std::string& publicKey, ListDone done) override;
    void readNotes(const std::string& url, TextDone done) override;
    void download(const AppcastItem& item, const std::string& publicKey, Progress progress, Done done) override;
    void install(const AppcastItem& item, const std::string& publicKey, Done done) override;
    void cancel() override { job_.reset(); }
    void discardDownload() override;
    void removeReplaced() override;

private:
    void start(const QStringList& arguments, std::function<void(const UpdaterProcess::Result&)> done,
               UpdaterProcess::Output output = {});

    std::string program_;
    QString replaceable_;
    std::unique_ptr<UpdaterProcess> job_;
};

}  // namespace stowpocket
