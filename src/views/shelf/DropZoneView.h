// SPDX-License-Identifier: MIT
#pragma once

#include <QVariantAnimation>
#include <QWidget>

namespace stowpocket {

/// The dashed target that invites the user to drop files. It only draws: the view that receives the drop tells it
/// whether a drag is over the target.
class DropZoneView : public QWidget {
public:
    enum class Form {
        full,     ///< fills the empty shelf
        compact,  ///< a slim strip below the items
    };

    explicit DropZoneView(Form form);

    void setTargeted(bool isTargeted);
    [[nodiscard]] bool isTargeted() const { return isTargeted_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    [[nodiscard]] double highlight() const { return animation_.currentValue().toDouble(); }
    void paintFrame(QPainter& painter) const;
    void paintContent(QPainter& painter) const;

    const Form form_;
    bool isTargeted_ = false;
    /// From 0 (at rest) to 1 (highlighted).
    QVariantAnimation animation_;
};

}  // namespace stowpocket
