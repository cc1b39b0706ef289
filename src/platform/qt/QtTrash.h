// SPDX-License-Identifier: MIT
#pragma once

#include "services/Files.h"

namespace stowpocket {

/// The desktop's trash.
class QtTrash : public Trash {
public:
    [[nodiscard]] bool trashItem(const FileURL& url) override;
};

}  // namespace stowpocket
