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

/// A fresh folder for the files of one drop, open to the user alone. Each drop has its own, so that the source need
/// not be trusted with names: files of the same name never meet, and all that lies in it came with this drop. The
/// folder stays; the files in it are on the shelf.
class DropFolder {
public:
    /// None when `parent` is no folder that can be written to.
    [[nodiscard]] static std::optional<DropFolder> make(const FileURL& parent);

    [[nodiscard]] const FileURL& url() const { return url_; }
    /// The files and folders directly inside, by name. Symbolic links are left out: they would put a file of
    /// somewhere else on the shelf.
    [[nodiscard]] std::vector<FileURL> files() const;
    /// Whether anything directly inside is more than an empty file.
    [[nodiscard]] bool hasContent() const;
    /// Of all that is inside, in bytes.
    [[nodiscard]] std::uint64_t size() const;
    /// Takes away the empty files in it, and the folder if nothing else has arrived.
    void discardIfEmpty() const;

private:
    explicit DropFolder(FileURL url) : url_(std::move(url)) {}

    FileURL url_;
};

/// Tells when a file directly inside a folder has been closed after writing, or has got its name. Main thread.
class FolderWatch {
public:
    FolderWatch(const FileURL& folder, std::function<void()> written);

private:
    void takeEvents();

    const FileDescriptor events_;
    const std::function<void()> written_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

/// Has the source of a drop write its files into a fresh folder in `destination`. `completion` runs once, on the main
/// thread, during the call or after it; with none when nothing arrived.
using PromiseSaving =
    std::function<void(const FileURL& destination, std::function<void(const std::optional<DropFolder>&)> completion)>;

/// The files of a promise, which stay in a folder of their own inside the one that they are wanted in: the source was
/// told that place and may be the last to let go of it.
[[nodiscard]] std::shared_ptr<FilePromiseReceiver> promiseReceiver(PromiseSaving save);

/// A promise as one thing of a drop. The source writes it into a temporary folder; where several files come, that
/// folder itself is the thing, named after when they came. What arrived is handed on in the background, because
/// copying it may take long.
[[nodiscard]] std::shared_ptr<ItemProvider> promiseProvider(PromiseSaving save, Dispatch& dispatch);

}  // namespace stowpocket
