// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "platform/linux/files/DurableFile.h"
#include "services/Dispatch.h"
#include "services/Dragging.h"

#include <QSocketNotifier>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace stowpocket {

/// A new folder for the files of one drop, open to the user alone. Each drop has its own, so the names that the
/// source chooses need no trust: files of the same name never meet, and everything inside belongs to this drop. The
/// folder stays, because its files are on the shelf.
class DropFolder {
public:
    /// Returns nothing when `parent` is not a writable folder.
    [[nodiscard]] static std::optional<DropFolder> make(const FileURL& parent);

    [[nodiscard]] const FileURL& url() const { return url_; }
    /// The files and folders directly inside, by name, without symbolic links: a link would put a file from elsewhere
    /// on the shelf.
    [[nodiscard]] std::vector<FileURL> files() const;
    /// Whether anything directly inside is more than an empty file.
    [[nodiscard]] bool hasContent() const;
    /// The size of everything inside, in bytes.
    [[nodiscard]] std::uint64_t size() const;
    /// Removes the empty files in it, and the folder if nothing else has arrived.
    void discardIfEmpty() const;

private:
    explicit DropFolder(FileURL url) : url_(std::move(url)) {}

    FileURL url_;
};

/// Reports when a file directly inside a folder was closed after writing or was renamed. Main thread.
class FolderWatch {
public:
    FolderWatch(const FileURL& folder, std::function<void()> written);

private:
    void takeEvents();

    const FileDescriptor events_;
    const std::function<void()> written_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

/// Asks the source of a drop to write its files into a new folder in `destination`. `completion` runs once, on the
/// main thread, during the call or after it. It gets nothing when no file arrived.
using PromiseSaving =
    std::function<void(const FileURL& destination, std::function<void(const std::optional<DropFolder>&)> completion)>;

/// Receives the files of a promise. They stay in a folder of their own inside the destination, because the source
/// knows that path and may still use it.
[[nodiscard]] std::shared_ptr<FilePromiseReceiver> promiseReceiver(PromiseSaving save);

/// Provides a promise as one item of a drop. The source writes into a temporary folder. If several files arrive, the
/// item is that folder, named after the time. The completion runs in the background, because copying the item may
/// take long.
[[nodiscard]] std::shared_ptr<ItemProvider> promiseProvider(PromiseSaving save, Dispatch& dispatch);

}  // namespace stowpocket
