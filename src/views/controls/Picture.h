// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QImage>

#include <functional>

class QPainter;

namespace stowpocket {

/// A part of a view that costs too much to be painted for every frame: painted once, and again only for a screen of
/// another density, in another colour or after `forget`.
class Picture {
public:
    using Paint = std::function<void(QPainter&)>;

    /// `paint` paints into a transparent picture of `size` points, with smooth edges.
    Picture(const QSize& size, Paint paint) : size_(size), paint_(std::move(paint)) {}

    /// `color` is the one in it that may have changed since.
    [[nodiscard]] const QImage& image(double devicePixelRatio, const QColor& color = {});
    void forget() { image_ = {}; }

private:
    const QSize size_;
    const Paint paint_;
    QImage image_;
    QColor color_;
};

}  // namespace stowpocket
