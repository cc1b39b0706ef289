// SPDX-License-Identifier: MIT
#pragma once

#include <QScrollArea>

namespace stowpocket {

class ScrollIndicator;

/// Shows its content at full width and, when it is given less height than the content has, scrolls. The indicator
/// lies over the content, so it takes no room from it.
class ScrollView : public QScrollArea {
public:
    explicit ScrollView(QLayout* stack);

    /// Follows a change of what is in it, shown or hidden.
    void measureContent();
    /// Wishes to show all of the content.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, 0}; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    ScrollIndicator* const indicator_;
};

}  // namespace stowpocket
