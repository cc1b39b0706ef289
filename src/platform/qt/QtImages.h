// SPDX-License-Identifier: MIT
#pragma once

#include "services/Pictures.h"

#include <QByteArray>
#include <QImage>

class QIODevice;

namespace stowpocket {

/// Pixels as Qt stores them, created on any thread. Every image of the program on a Qt desktop contains this or its
/// packed form.
class QtImageContent : public ImageContent {
public:
    explicit QtImageContent(QImage image) : image_(std::move(image)) {}
    [[nodiscard]] const QImage& image() const { return image_; }
    /// Takes a twentieth of the memory for opaque pictures.
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

/// Returns the pixels of `image`, unpacked if necessary; null if it has none.
[[nodiscard]] QImage qtImage(const Image& image);

/// Returns an SVG drawing scaled to fit into `room`, in pixels; null if it cannot be read. The toolkit's image plugin
/// draws it, so the SVG library is loaded with the first drawing and not at program start.
/// Any thread.
[[nodiscard]] QImage svgImage(QIODevice& drawing, const QSize& room);

}  // namespace stowpocket
