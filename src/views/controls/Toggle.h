// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>

#include <functional>

namespace stowpocket {

/// Something that is on or off, shown as its label with a switch at the far end, or with a box before it.
class Toggle : public QCheckBox {
public:
    enum class Style { switchControl, checkbox };

    /// `onChange` gets what the user made of it.
    Toggle(Style style, const QString& label, std::function<void(bool)> onChange);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& place) const override { return rect().contains(place); }

private:
    [[nodiscard]] QRectF switchFrame() const;
    void paintSwitch(QPainter& painter) const;
    void paintCheckbox(QPainter& painter) const;

    const Style style_;
};

}  // namespace stowpocket
