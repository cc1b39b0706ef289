// SPDX-License-Identifier: MIT
#pragma once

#include "services/Pictures.h"

#include <QByteArray>
#include <QImage>

class QIODevice;

namespace stowpocket {

/// Pixels as Qt holds them. Made on any thread; every image of this program on a Qt desktop carries one, or its
/// packed form.
class QtImageContent : public ImageContent {
public:
    explicit QtImageContent(QImage image) : image_(std::move(image)) {}
    [[nodiscard]] const QImage& image() const { return image_; }
    /// In a twentieth of the memory, for opaque pictures.
    [[nodiscard]] std::shared_ptr<const ImageContent> packed() const override;

private:
    const QImage image_;
};

/// A picture as an image file in memory.
class PackedImageContent : public ImageContent {
public:
    explicit PackedImageContent(QByteArray file) : file_(std::move(file)) {}
    [[nodiscard]] const QByteArray& file() const { return file_; }

private:
    const QByteArray file_;
};

/// The pixels of `image`, unpacked if need be; null where it has none.
[[nodiscard]] QImage qtImage(const Image& image);

/// An SVG drawing as large as its shape allows in a room of so many pixels; null where it cannot be read. The
/// toolkit's image plugin draws it, so that the library of SVG is loaded with the first drawing and not with the
/// program. Any thread.
[[nodiscard]] QImage svgImage(QIODevice& drawing, const QSize& room);

}  // namespace stowpocket
