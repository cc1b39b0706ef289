// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"

#include <functional>
#include <vector>

namespace stowpocket {

/// What is selected in the desktop's file manager. Main thread.
class FileManagerSelection {
public:
    using Completion = std::function<void(const std::vector<FileURL>&)>;

    virtual ~FileManagerSelection() = default;
    /// `completion` runs once on the main thread, during the call or after it, with the selected files in the
    /// selection's order; with none when nothing is selected, no file manager is in front, or it does not answer.
    virtual void read(Completion completion) = 0;
};

}  // namespace stowpocket
