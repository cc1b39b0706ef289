// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Button.h"

#include <QCheckBox>
#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

namespace stowpocket {

/// One of several choices of which one is made: those with the same parent take turns, and arrow keys go between
/// them.
class ChoiceButton : public PaintedButton {
public:
    explicit ChoiceButton(std::function<void()> action);

    /// Also takes back the choice, which no user can.
    void setChosen(bool chosen);

protected:
    /// The ground of the choice that is made; nothing under the others.
    void paintChosen(QPainter& painter, double radius) const;
};

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

/// A few choices side by side, of which one is made or none.
class SegmentedPicker : public QWidget {
public:
    /// `onChoose` gets the index of what the user chose.
    SegmentedPicker(const QString& accessibleName, const QStringList& choices,
                    const std::function<void(std::size_t)>& onChoose);

    void setChosen(std::optional<std::size_t> index);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<ChoiceButton*> segments_;
};

}  // namespace stowpocket
