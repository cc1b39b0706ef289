// SPDX-License-Identifier: MIT
#include "platform/qt/StillStyle.h"

namespace stowpocket {

int StillStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* returnData) const {
    if (hint == SH_Widget_Animate || hint == SH_Widget_Animation_Duration)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

}  // namespace stowpocket
