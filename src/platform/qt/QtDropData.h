// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Dragging.h"
#include "platform/ItemProvider.h"
#include "platform/qt/DropPromises.h"

#include <QMimeData>

#include <memory>
#include <string>
#include <vector>

namespace stowpocket {

/// A drag's files as the menu-bar icon asks for them. Reads nothing before `items()`, because reading asks the drag's
/// source, which may be slow or gone. Here and below, `promises` is null where the window system has none.
class QtDraggingPasteboard : public DraggingPasteboard {
public:
    explicit QtDraggingPasteboard(const QMimeData& data, DropPromises* promises = nullptr)
        : data_(data), promises_(promises) {}
    [[nodiscard]] std::vector<PasteboardItem> items() override;
    [[nodiscard]] std::vector<std::shared_ptr<FilePromiseReceiver>> filePromiseReceivers() override;

private:
    const QMimeData& data_;
    DropPromises* const promises_;
};

/// Whether the drag offers one of `types`, judged by names alone.
[[nodiscard]] bool offersAnyOf(const QMimeData& data, const std::vector<std::string>& types,
                               const DropPromises* promises = nullptr);

/// Whether a drop of this could bring anything that `itemProvidersOf` finds, judged by names alone.
[[nodiscard]] bool offersItems(const QMimeData& data, const DropPromises* promises = nullptr);

/// What was dropped, to be called while the drop is handled: one provider per local file, in the source's order; when
/// there are no files, one for a picture, the files that are promised, or text, whichever comes first; otherwise
/// none. A picture goes before a promise because web browsers offer both, and keep the promise by fetching the
/// picture once more, which may bring an error page.
[[nodiscard]] std::vector<std::shared_ptr<ItemProvider>> itemProvidersOf(const QMimeData& data,
                                                                         DropPromises* promises = nullptr);

}  // namespace stowpocket
