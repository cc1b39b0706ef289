// SPDX-License-Identifier: MIT
#include "views/controls/Layer.h"

#include "views/controls/Compose.h"

#include <QPainter>

namespace stowpocket {

Layer::Layer(QLayout* stack) {
    compose(*this, stack);
}

void Layer::setOpacity(double opacity) {
    if (opacity_ == opacity)
        return;
    opacity_ = opacity;
    update();
}

void Layer::applyOpacity(QPainter& painter, const QWidget& view) {
    double product = 1;
    for (const QWidget* around = &view; around != nullptr && !around->isWindow(); around = around->parentWidget()) {
        if (const auto* const layer = dynamic_cast<const Layer*>(around))
            product *= layer->opacity_;
    }
    painter.setOpacity(product);
}

Layer* layer(QWidget* view) {
    return new Layer(vstack(0, view));
}

}  // namespace stowpocket
