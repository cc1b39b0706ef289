// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace stowpocket {

/// The program's icon as lists of windows show it. Drawn at every call: few windows have one.
[[nodiscard]] QIcon programIcon();

}  // namespace stowpocket
