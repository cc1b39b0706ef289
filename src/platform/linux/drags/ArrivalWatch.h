// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "platform/linux/files/DurableFile.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace stowpocket {

/// Tells when a file directly inside a folder has been closed after writing, or has got its name. Main thread.
class ArrivalWatch {
public:
    ArrivalWatch(const FileURL& folder, std::function<void()> written);

private:
    void takeEvents();

    const FileDescriptor events_;
    const std::function<void()> written_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace stowpocket
