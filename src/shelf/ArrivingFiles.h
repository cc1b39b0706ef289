// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "services/Dispatch.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace stowpocket {

/// Collects the files of one drop while their sources deliver them, on any thread. Passes them on together once the
/// expected number of deliveries has arrived; surplus deliveries are harmless. Shared by the closures that deliver.
class ArrivingFiles : public std::enable_shared_from_this<ArrivingFiles> {
public:
    using Completion = std::function<void(const std::vector<FileURL>& files)>;

    /// The serial queue with this label guards the files.
    ArrivingFiles(Dispatch& dispatch, std::string queueLabel)
        : dispatch_(dispatch), queue_(dispatch.serialQueue(std::move(queueLabel))) {}

    void expectDelivery() {
        queue_->sync([this] { ++expected_; });
    }
    /// A failed delivery has no file.
    void deliver(const std::optional<FileURL>& file) {
        queue_->sync([&] {
            if (file)
                files_.push_back(*file);
            if (expected_ > 0)
                --expected_;
            completeIfAllCame();
        });
    }
    /// Called once, after the last `expectDelivery`. `completion` runs later, on the main thread, with the files in
    /// the order of their arrival.
    void whenComplete(Completion completion) {
        queue_->sync([&] {
            completion_ = std::move(completion);
            completeIfAllCame();
        });
    }

private:
    void completeIfAllCame() {
        if (expected_ > 0 || !completion_)
            return;
        dispatch_.async([self = shared_from_this(), completion = std::exchange(completion_, {})] {
            std::vector<FileURL> files;
            self->queue_->sync([&] { files = self->files_; });
            completion(files);
        });
    }

    Dispatch& dispatch_;
    const std::unique_ptr<SerialQueue> queue_;
    /// Accessed only in blocks of `queue_`, like all members below.
    int expected_ = 0;
    std::vector<FileURL> files_;
    Completion completion_;
};

}  // namespace stowpocket
