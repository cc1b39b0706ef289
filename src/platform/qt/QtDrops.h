// SPDX-License-Identifier: MIT
#pragma once

#include "intake/ExchangeFormats.h"
#include "services/Dispatch.h"
#include "services/Dragging.h"

#include <QMimeData>
#include <QString>
#include <QTemporaryDir>

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace stowpocket {

/// A format of contents that is accepted from drags without files.
struct ContentsFormat {
    QLatin1String format;
    ContentsKind kind;
};

/// Best format first, since sources offer the same contents in several.
[[nodiscard]] std::span<const ContentsFormat> pictureFormats();
[[nodiscard]] std::span<const ContentsFormat> textFormats();

/// A dropped picture, text or link in a temporary file, named after its kind and the time of the drop.
class DroppedContents {
public:
    explicit DroppedContents(const ContentsKind& kind);

    [[nodiscard]] const ContentsKind& kind() const { return kind_; }
    /// The file for its bytes, which exists as long as any copy of this object. Writing fails if the folder could not
    /// be created.
    [[nodiscard]] const QString& path() const { return path_; }
    /// Renames the file, which has been written: these words then stand for the kind, unless there are none, and the
    /// extension for the kind's.
    void nameAfter(const std::string& words, const std::string& extension = {});

private:
    [[nodiscard]] QString pathFor(std::string_view words, std::string_view extension) const;

    ContentsKind kind_;
    std::shared_ptr<const QTemporaryDir> folder_;
    QString time_;
    QString path_;
};

/// The provider's completions run in the background, because copying may take long. `dispatch` outlives it.
[[nodiscard]] std::shared_ptr<ItemProvider> providerOf(DroppedContents contents, Dispatch& dispatch);

/// What the source of a drop has delivered.
struct ReceivedDrop {
    std::string uriList;
    /// A picture or text if the list contains no local file; null if there is none.
    std::shared_ptr<ItemProvider> contents;
};

/// One provider for each local file, in the source's order, or without files one for the contents.
[[nodiscard]] std::vector<std::shared_ptr<ItemProvider>> itemProvidersOf(const ReceivedDrop& received);

/// The window system's part in drops from other programs. Their data is never read through Qt, which blocks until the
/// source answers. Main thread.
class IncomingDrops {
public:
    virtual ~IncomingDrops() = default;

    /// What has arrived of the drop that is being handled. Nothing more is requested from its source.
    [[nodiscard]] virtual const ReceivedDrop& received() const = 0;
    /// Whether the source writes its files only when it is told where. Decided by the names of the types alone.
    [[nodiscard]] virtual bool promisesFiles(const QMimeData& data) const = 0;
    /// The promise of the drag that is over one of our windows now. The source is asked for nothing until the files
    /// are requested, which must happen while the drop is handled.
    [[nodiscard]] virtual std::shared_ptr<FilePromiseReceiver> promiseReceiver() = 0;
    /// The same promise as a single item: several files are delivered in a folder.
    [[nodiscard]] virtual std::shared_ptr<ItemProvider> promiseProvider() = 0;
};

/// A drag's files in the form that the menu-bar icon needs. `drops` outlives it.
class QtDraggingPasteboard : public DraggingPasteboard {
public:
    QtDraggingPasteboard(const QMimeData& data, IncomingDrops& drops) : data_(data), drops_(drops) {}
    [[nodiscard]] std::vector<PasteboardItem> items() override;
    [[nodiscard]] std::vector<std::shared_ptr<FilePromiseReceiver>> filePromiseReceivers() override;

private:
    const QMimeData& data_;
    IncomingDrops& drops_;
};

/// Whether the drag offers one of `types`. Decided by the names of its types alone.
[[nodiscard]] bool offersAnyOf(const QMimeData& data, const std::vector<std::string>& types,
                               const IncomingDrops& drops);

/// Whether `itemProvidersOf` could return anything for this drag. Decided by the names of its types alone.
[[nodiscard]] bool offersItems(const QMimeData& data, const IncomingDrops& drops);

/// The same for a drop that may also promise files, which are then one item. Call it while the drop is handled.
[[nodiscard]] std::vector<std::shared_ptr<ItemProvider>> itemProvidersOf(const QMimeData& data, IncomingDrops& drops);

}  // namespace stowpocket
