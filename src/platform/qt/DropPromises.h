// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Dragging.h"
#include "platform/ItemProvider.h"

#include <QMimeData>

#include <memory>

namespace stowpocket {

/// The window system's drags of files that their source writes only once it is told where. Main thread.
class DropPromises {
public:
    virtual ~DropPromises() = default;

    /// Judged by the names of the drag's types alone.
    [[nodiscard]] virtual bool isOfferedBy(const QMimeData& data) const = 0;
    /// The promise of the drag that is over one of our windows now. Nothing is asked of the source before the files
    /// are wanted, which must be while the drop is handled.
    [[nodiscard]] virtual std::shared_ptr<FilePromiseReceiver> receiver() = 0;
    /// The same promise as one thing of a drop: where several files come, they come in a folder.
    [[nodiscard]] virtual std::shared_ptr<ItemProvider> itemProvider() = 0;
};

}  // namespace stowpocket
