// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"

namespace stowpocket {

/// The place from which the user can take deleted files back. Any thread but the main one: it may wait for a disk.
class Trash {
public:
    virtual ~Trash() = default;
    /// True when the file lies in the Trash afterwards.
    [[nodiscard]] virtual bool trashItem(const FileURL& url) = 0;
};

}  // namespace stowpocket
