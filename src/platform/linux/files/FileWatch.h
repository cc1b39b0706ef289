// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/DurableFile.h"

#include <functional>
#include <memory>
#include <string>

class QSocketNotifier;

namespace stowpocket {

/// Notices that a file, or the folder that it is in, has been removed or given another name. Main thread.
class FileWatch {
public:
    /// `onGone` is called from the main loop.
    FileWatch(const std::string& path, std::function<void()> onGone);
    ~FileWatch();

    /// Watches the folder that is there now. Called again for one that was made anew.
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
