// SPDX-License-Identifier: MIT
#pragma once

#include "services/Dragging.h"

#include <QMimeData>

#include <memory>
#include <string>

namespace stowpocket {

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

}  // namespace stowpocket
