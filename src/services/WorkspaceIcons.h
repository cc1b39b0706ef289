// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "services/Image.h"

namespace stowpocket {

/// The desktop's icons for files by their type.
class WorkspaceIcons {
public:
    virtual ~WorkspaceIcons() = default;
    /// Always answers, with a plain page for what nobody knows. Main thread, while a tile is drawn: it must be quick
    /// and must not wait for the file.
    [[nodiscard]] virtual Image icon(const FileURL& url) = 0;
};

}  // namespace stowpocket
