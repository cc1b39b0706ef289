// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/IncomingDrops.h"
#include "services/Dragging.h"

#include <QMimeData>

#include <memory>
#include <string>
#include <vector>

namespace stowpocket {

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
