// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QMimeType>
#include <QString>

namespace stowpocket {

/// The name of our own drawing that suits `type` best; "file" for what has none.
[[nodiscard]] QString bundledIconName(const QMimeType& type);

/// Our own drawing called `name`, for desktops without an icon theme, `side` pixels each way. Main thread.
[[nodiscard]] QImage bundledIcon(const QString& name, int side);

}  // namespace stowpocket
