// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace stowpocket {

/// A fresh folder for the files of one drop, open to the user alone. Each drop has its own, so that the source need
/// not be trusted with names: files of the same name never meet, and all that lies in it came with this drop. The
/// folder stays; the files in it are on the shelf.
class ArrivalFolder {
public:
    /// None when `parent` is no folder that can be written to.
    [[nodiscard]] static std::optional<ArrivalFolder> make(const FileURL& parent);

    [[nodiscard]] const FileURL& url() const { return url_; }
    /// The files and folders directly inside, by name. Symbolic links are left out: they would put a file of
    /// somewhere else on the shelf.
    [[nodiscard]] std::vector<FileURL> files() const;
    /// Whether anything directly inside is more than an empty file.
    [[nodiscard]] bool hasContent() const;
    /// Of all that is inside, in bytes.
    [[nodiscard]] std::uint64_t size() const;
    /// Takes away the empty files in it, and the folder if nothing else has arrived.
    void discardIfEmpty() const;

private:
    explicit ArrivalFolder(FileURL url) : url_(std::move(url)) {}

    FileURL url_;
};

}  // namespace stowpocket
