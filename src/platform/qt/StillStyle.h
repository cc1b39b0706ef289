// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

namespace stowpocket {

/// The desktop's style for those who have asked it not to move anything.
class StillStyle : public QProxyStyle {
public:
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* returnData) const override;
};

}  // namespace stowpocket
