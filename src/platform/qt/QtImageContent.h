// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Image.h"

#include <QImage>

namespace stowpocket {

/// Pixels as Qt holds them. Made on any thread; every image of this program on a Qt desktop carries one.
class QtImageContent : public ImageContent {
public:
    explicit QtImageContent(QImage image) : image_(std::move(image)) {}
    [[nodiscard]] const QImage& image() const { return image_; }

private:
    const QImage image_;
};

/// The pixels of `image`; null where it has none.
[[nodiscard]] inline QImage qtImage(const Image& image) {
    const auto* const content = dynamic_cast<const QtImageContent*>(image.content.get());
    return content == nullptr ? QImage() : content->image();
}

}  // namespace stowpocket
