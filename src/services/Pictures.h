// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "foundation/Geometry.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace stowpocket {

/// The pixels, in whatever form the toolkit draws; each adapter derives its own and never changes one once made.
class ImageContent {
public:
    virtual ~ImageContent() = default;
    /// Nearly the same picture in little memory, for one that is kept but no longer shown; null where the toolkit has
    /// no such form.
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

/// Makes small pictures of what files contain. Files come from anywhere: one that is broken, huge or hostile yields
/// no picture and harms nobody.
class Thumbnails {
public:
    using Completion = std::function<void(std::optional<Image>)>;

    virtual ~Thumbnails() = default;
    /// Called on the main thread, which never waits. `completion` runs exactly once, on any thread; none when the
    /// file has no thumbnail. Not called after this object is destroyed.
    virtual void generate(const ThumbnailRequest& request, Completion completion) = 0;
};

/// The desktop's icons for files by their type.
class WorkspaceIcons {
public:
    virtual ~WorkspaceIcons() = default;
    /// Always answers, with a plain page for what nobody knows. Main thread, while a tile is drawn: it must be quick
    /// and must not wait for the file.
    [[nodiscard]] virtual Image icon(const FileURL& url) = 0;
    /// `extension` in small letters of any script: names whose extensions differ only in case are of one type.
    [[nodiscard]] virtual std::string lowercased(const std::string& extension) const = 0;
};

/// The screen that holds the menu bar. Main thread.
class MainScreen {
public:
    virtual ~MainScreen() = default;
    /// Pixels per point; none while no screen is connected.
    [[nodiscard]] virtual std::optional<double> backingScaleFactor() const = 0;
};

}  // namespace stowpocket
