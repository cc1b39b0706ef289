// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QPainter;

namespace stowpocket {

/// Views that fade together. Nothing is painted into a picture on the way, so text stays sharp: every view of this
/// program that is painted inside a layer asks for the opacity around it.
class Layer : public QWidget {
public:
    Layer() = default;
    explicit Layer(QLayout* stack);

    void setOpacity(double opacity);
    /// Sets the painter of `view` to the product of the opacities of all layers that the view is in, itself included.
    static void applyOpacity(QPainter& painter, const QWidget& view);

private:
    double opacity_ = 1;
};

/// A view that fades by itself.
[[nodiscard]] Layer* layer(QWidget* view);

}  // namespace stowpocket
