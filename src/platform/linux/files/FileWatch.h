// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/DurableFile.h"

#include <functional>
#include <memory>
#include <string>

class QSocketNotifier;

namespace stowpocket {

/// Reports that a file, or the folder that contains it, has been removed or renamed. Main thread.
class FileWatch {
public:
    /// `onGone` is called from the main loop.
    FileWatch(const std::string& path, std::function<void()> onGone);
    ~FileWatch();

    /// Watches the folder that exists now. Must be called again after the folder has been created anew.
    void begin();

private:
    void readEvents();

    const std::string folder_;
    const std::string name_;
    const std::function<void()> onGone_;
    const FileDescriptor events_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace stowpocket
