// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>

#include <functional>

class QPainter;

namespace stowpocket {

/// A part of a view that costs too much to be painted for every frame: painted once, and again only for a screen of
/// another density or after `forget`.
class Picture {
public:
    using Paint = std::function<void(QPainter&)>;

    /// `paint` paints into a transparent picture of `size` points, with smooth edges.
    Picture(const QSize& size, Paint paint) : size_(size), paint_(std::move(paint)) {}

    [[nodiscard]] const QImage& image(double devicePixelRatio);
    void forget() { image_ = {}; }

private:
    const QSize size_;
    const Paint paint_;
    QImage image_;
};

}  // namespace stowpocket
