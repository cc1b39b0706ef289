// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ItemProvider.h"

#include <QMimeData>

#include <memory>

namespace stowpocket {

/// Whether `data` offers a picture or text, judged by names alone.
[[nodiscard]] bool offersContents(const QMimeData& data);

/// A dropped picture or text that is no file yet, read at once; null when `data` has none. It becomes a file named
/// after what it is and when it came.
[[nodiscard]] std::shared_ptr<ItemProvider> droppedPicture(const QMimeData& data);
[[nodiscard]] std::shared_ptr<ItemProvider> droppedText(const QMimeData& data);

}  // namespace stowpocket
