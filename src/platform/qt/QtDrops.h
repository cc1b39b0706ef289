// SPDX-License-Identifier: MIT
#pragma once

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

/// A kind of contents that is taken where a drag brings no files.
struct ContentsKind {
    QLatin1String format;
    std::string_view type;
    QLatin1String name;
    QLatin1String extension;
};

/// Most telling first, since sources offer one thing in several kinds.
[[nodiscard]] std::span<const ContentsKind> pictureKinds();
[[nodiscard]] std::span<const ContentsKind> textKinds();

/// A dropped picture or text that was written to a temporary file, named after what it is and when it came.
class DroppedContents {
public:
    explicit DroppedContents(const ContentsKind& kind);

    [[nodiscard]] const ContentsKind& kind() const { return *kind_; }
    /// Where its bytes belong; there while some copy of this object is. In a folder that could not be made nothing
    /// can be written.
    [[nodiscard]] const QString& path() const { return path_; }

private:
    const ContentsKind* kind_;
    std::shared_ptr<const QTemporaryDir> folder_;
    QString path_;
};

/// Its completions run in the background, because copying the file may take long. `dispatch` outlives it.
[[nodiscard]] std::shared_ptr<ItemProvider> providerOf(DroppedContents contents, Dispatch& dispatch);

/// What the source of a drop has handed over.
struct ReceivedDrop {
    std::string uriList;
    /// A picture or text, where the list names no local file; null when there is none.
    std::shared_ptr<ItemProvider> contents;
};

/// The window system's part in drops from other programs. What they carry is never had from Qt, which waits for their
/// sources. Main thread.
class IncomingDrops {
public:
    virtual ~IncomingDrops() = default;

    /// What has come of the drop that is handled now; nothing of it is asked for any more.
    [[nodiscard]] virtual const ReceivedDrop& received() const = 0;
    /// Whether the drag's source writes its files only once it is told where. Judged by the names of the types alone.
    [[nodiscard]] virtual bool promisesFiles(const QMimeData& data) const = 0;
    /// The promise of the drag that is over one of our windows now. Nothing is asked of the source before the files
    /// are wanted, which must be while the drop is handled.
    [[nodiscard]] virtual std::shared_ptr<FilePromiseReceiver> promiseReceiver() = 0;
    /// The same promise as one thing of a drop: where several files come, they come in a folder.
    [[nodiscard]] virtual std::shared_ptr<ItemProvider> promiseProvider() = 0;
};

/// A drag's files as the menu-bar icon asks for them. `drops` outlives it.
class QtDraggingPasteboard : public DraggingPasteboard {
public:
    QtDraggingPasteboard(const QMimeData& data, IncomingDrops& drops) : data_(data), drops_(drops) {}
    [[nodiscard]] std::vector<PasteboardItem> items() override;
    [[nodiscard]] std::vector<std::shared_ptr<FilePromiseReceiver>> filePromiseReceivers() override;

private:
    const QMimeData& data_;
    IncomingDrops& drops_;
};

/// Whether the drag offers one of `types`, judged by names alone.
[[nodiscard]] bool offersAnyOf(const QMimeData& data, const std::vector<std::string>& types,
                               const IncomingDrops& drops);

/// Whether a drop of this could bring anything that `itemProvidersOf` finds, judged by names alone.
[[nodiscard]] bool offersItems(const QMimeData& data, const IncomingDrops& drops);

/// What was dropped, to be called while the drop is handled: one provider per local file, in the source's order; when
/// there are no files, one for the contents that were received, or for the files that are promised; otherwise none.
[[nodiscard]] std::vector<std::shared_ptr<ItemProvider>> itemProvidersOf(const QMimeData& data, IncomingDrops& drops);

}  // namespace stowpocket
