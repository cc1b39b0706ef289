// SPDX-License-Identifier: MIT
#pragma once

#include "updates/UpdateTransport.h"

#include <QByteArray>
#include <QStringList>

#include <functional>
#include <memory>

class QObject;
class QProcess;

namespace stowpocket {

/// One run of `stowpocket-updater`. Ended at once, and without its completion, when this is destroyed. Main thread.
class UpdaterProcess {
public:
    struct Result {
        std::optional<UpdateFailure> failure;
        /// All that it printed; of a failure nothing.
        QByteArray output;
    };
    using Done = std::function<void(const Result&)>;
    using Output = std::function<void(const QByteArray& piece)>;

    /// `done` runs once, later, and may destroy this. With `output` what is printed goes there, piece by piece.
    UpdaterProcess(const std::string& program, const QStringList& arguments, Done done, Output output = {});
    UpdaterProcess(const UpdaterProcess&) = delete;
    UpdaterProcess& operator=(const UpdaterProcess&) = delete;
    ~UpdaterProcess();

private:
    void read();
    void finish(std::optional<UpdateFailure> failure);

    QProcess* process_;
    /// Takes what is still queued with it when it goes.
    std::unique_ptr<QObject> context_;
    Done done_;
    Output output_;
    QByteArray printed_;
};

}  // namespace stowpocket
