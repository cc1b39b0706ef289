// SPDX-License-Identifier: MIT
#include "platform/linux/storage/LinuxPreferenceStore.h"

#include "foundation/BundleIdentifier.h"
#include "platform/Dispatch.h"
#include "platform/linux/storage/BaseDirectories.h"

namespace stowpocket {
namespace {

/// Long enough for the changes of one user action, and half of the tenth of a second that a change may wait.
constexpr std::chrono::milliseconds coalescingDelay{50};

}  // namespace

LinuxPreferenceStore::LinuxPreferenceStore(Dispatch& dispatch, std::string path)
    : dispatch_(dispatch),
      file_(std::make_shared<PreferenceFile>(std::move(path))),
      queue_(dispatch.serialQueue(std::string(bundleIdentifier) + ".preferences")) {
    adopt(file_->read());
}

LinuxPreferenceStore::~LinuxPreferenceStore() {
    flush();
}

std::optional<std::string> LinuxPreferenceStore::defaultPath() {
    std::optional<std::string> folder = configHome();
    return folder ? std::optional(folder->append("/stowpocket/preferences.plist")) : std::nullopt;
}

void LinuxPreferenceStore::storedValuesChanged() {
    ++generation_;
    if (scheduledWrite_ == nullptr)
        scheduledWrite_ = dispatch_.after(coalescingDelay, [this] { startWriting(); });
}

void LinuxPreferenceStore::startWriting() {
    scheduledWrite_.reset();
    queue_->async([file = file_, values = stored(), generation = generation_] { file->write(values, generation); });
}

void LinuxPreferenceStore::flush() {
    scheduledWrite_.reset();
    queue_->sync([this] { file_->write(stored(), generation_); });
}

}  // namespace stowpocket
