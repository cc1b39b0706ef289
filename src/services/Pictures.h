// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "foundation/Values.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace stowpocket {

/// The pixels, in whatever form the toolkit draws; each adapter derives its own and never changes one once made.
class ImageContent {
public:
    virtual ~ImageContent() = default;
    /// A similar picture that takes little memory, for pictures that are kept but no longer shown; null if the
    /// toolkit has none.
    [[nodiscard]] virtual std::shared_ptr<const ImageContent> packed() const { return nullptr; }
};

/// A picture and the size at which it is shown. Copies share the pixels.
struct Image {
    std::shared_ptr<const ImageContent> content;
    Size size;
};

struct ThumbnailRequest {
    FileURL fileURL;
    Size size;
    /// Pixels per point of the screen on which it will be shown.
    double scale = 1;
};

/// Makes small pictures of the contents of files. Files are untrusted: one that is broken, huge or hostile has no
/// thumbnail and does no harm.
class Thumbnails {
public:
    using Completion = std::function<void(std::optional<Image>)>;

    virtual ~Thumbnails() = default;
    /// Called on the main thread; does not block. `completion` runs exactly once, on any thread, with none if the
    /// file has no thumbnail. It is not called after this object is destroyed.
    virtual void generate(const ThumbnailRequest& request, Completion completion) = 0;
};

/// The desktop's icons for types of files.
class WorkspaceIcons {
public:
    virtual ~WorkspaceIcons() = default;
    /// Returns a plain page for an unknown type. Called on the main thread while a tile is drawn, so it must be fast
    /// and must not access the file.
    [[nodiscard]] virtual Image icon(const FileURL& url) = 0;
    /// `extension` in lower case, for letters of any script: names whose extensions differ only in case have one
    /// type.
    [[nodiscard]] virtual std::string lowercased(const std::string& extension) const = 0;
};

/// The screen that holds the menu bar. Main thread.
class MainScreen {
public:
    virtual ~MainScreen() = default;
    /// In pixels per point; none while no screen is connected.
    [[nodiscard]] virtual std::optional<double> backingScaleFactor() const = 0;
};

}  // namespace stowpocket
