// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QImage>
#include <QPainterPath>
#include <QWidget>

#include <functional>

class QPainter;

namespace stowpocket {

/// A rounded rectangle whose corners begin to bend slightly before a circular arc of that radius would, so that no
/// edge is visible between straight and round parts.
[[nodiscard]] QPainterPath continuousRoundedRect(const QRectF& rect, double radius);

/// The colour at `share` of the way between two colours.
[[nodiscard]] QColor mixedColor(const QColor& from, const QColor& to, double share);

/// A part of a view that is too expensive to paint for every frame. It is painted once, and again only for another
/// screen density, another colour or after `clear`.
class Picture {
public:
    using Paint = std::function<void(QPainter&)>;

    /// `paint` paints into a transparent picture of `size` points, with smooth edges.
    Picture(const QSize& size, Paint paint) : size_(size), paint_(std::move(paint)) {}

    /// `color` is the colour in the picture that may have changed since the last call.
    [[nodiscard]] const QImage& image(double devicePixelRatio, const QColor& color = {});
    void clear() { image_ = {}; }

private:
    const QSize size_;
    const Paint paint_;
    QImage image_;
    QColor color_;
};

/// Views that fade together. Every view inside applies the opacity of the views around it when it paints; no
/// intermediate picture is used, so text stays sharp.
class FadingView : public QWidget {
public:
    FadingView() = default;
    explicit FadingView(QLayout* stack);

    void setOpacity(double opacity);
    /// Sets the painter of `view` to the product of the opacities of all fading views around it, including itself.
    static void applyOpacity(QPainter& painter, const QWidget& view);

private:
    double opacity_ = 1;
};

/// Makes a view able to fade on its own.
[[nodiscard]] FadingView* fading(QWidget* view);

}  // namespace stowpocket
