// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"

#include <functional>
#include <span>

namespace stowpocket {

/// Hands files to other programs of the desktop. Main thread. Every call returns at once: a program that does not
/// answer holds up nothing.
class FileOpener {
public:
    using Completion = std::function<void(bool areAllOpened)>;

    virtual ~FileOpener() = default;
    /// Opens each file with the desktop's application for its type. `completion` runs on the main thread, during the
    /// call or later, with false if a file has no application. It is not called after this object is destroyed.
    virtual void open(std::span<const FileURL> files, Completion completion) = 0;
    /// Shows the files in the file manager, selected in their folders. If no file manager can do that, the folders
    /// are opened.
    virtual void showInFolder(std::span<const FileURL> files) = 0;
    /// Shows the content of a file in the desktop's previewer, or closes the preview if it is shown. Does nothing on
    /// desktops without a previewer.
    virtual void preview(const FileURL& file) = 0;
};

}  // namespace stowpocket
