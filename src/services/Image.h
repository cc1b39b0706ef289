// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

namespace stowpocket {

/// In points, the unit of layout: one pixel on a plain screen, two on one of double density.
struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

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

}  // namespace stowpocket
