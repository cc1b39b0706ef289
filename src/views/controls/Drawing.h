// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QImage>
#include <QPainterPath>
#include <QWidget>

#include <functional>

class QPainter;

namespace stowpocket {

/// A rounded rectangle whose corners begin to bend a little before the circle of that radius would, so that no edge
/// is seen where straight and round meet.
[[nodiscard]] QPainterPath continuousRoundedRect(const QRectF& rect, double radius);

/// The colour `share` of the way from one to the other.
[[nodiscard]] QColor mixedColor(const QColor& from, const QColor& to, double share);

/// A part of a view that costs too much to be painted for every frame: painted once, and again only for a screen of
/// another density, in another colour or after `clear`.
class Picture {
public:
    using Paint = std::function<void(QPainter&)>;

    /// `paint` paints into a transparent picture of `size` points, with smooth edges.
    Picture(const QSize& size, Paint paint) : size_(size), paint_(std::move(paint)) {}

    /// `color` is the one in it that may have changed since.
    [[nodiscard]] const QImage& image(double devicePixelRatio, const QColor& color = {});
    void clear() { image_ = {}; }

private:
    const QSize size_;
    const Paint paint_;
    QImage image_;
    QColor color_;
};

/// Views that fade together. Nothing is painted into a picture on the way, so text stays sharp: every view of this
/// program that is painted inside one asks for the opacity around it.
class FadingView : public QWidget {
public:
    FadingView() = default;
    explicit FadingView(QLayout* stack);

    void setOpacity(double opacity);
    /// Sets the painter of `view` to the product of the opacities of all layers that the view is in, itself included.
    static void applyOpacity(QPainter& painter, const QWidget& view);

private:
    double opacity_ = 1;
};

/// A view that fades by itself.
[[nodiscard]] FadingView* fading(QWidget* view);

}  // namespace stowpocket
