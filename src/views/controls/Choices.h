// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Button.h"

#include <QCheckBox>
#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

namespace stowpocket {

/// One of several exclusive choices. At most one with the same parent is checked, and arrow keys move between
/// them.
class ChoiceButton : public PaintedButton {
public:
    explicit ChoiceButton(std::function<void()> action);

    /// Can also take back the choice, which the user cannot.
    void setChosen(bool chosen);

protected:
    /// Paints the background of the checked choice, and nothing for the others.
    void paintChosen(QPainter& painter, double radius) const;
};

/// An option that is on or off, shown as a label with a switch at the far end or with a check box before it.
class Toggle : public QCheckBox {
public:
    enum class Style { switchControl, checkbox };

    /// `onChange` gets the state that the user has chosen.
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

/// A few choices side by side, of which at most one is selected.
class SegmentedPicker : public QWidget {
public:
    /// `onChoose` gets the index of the user's choice.
    SegmentedPicker(const QString& accessibleName, const QStringList& choices,
                    const std::function<void(std::size_t)>& onChoose);

    void setChosen(std::optional<std::size_t> index);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<ChoiceButton*> segments_;
};

}  // namespace stowpocket
