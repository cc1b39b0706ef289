// SPDX-License-Identifier: MIT
#include "views/controls/ProgramIcon.h"

#include "platform/qt/QtImages.h"

#include <QFile>
#include <QPixmap>

namespace stowpocket {

QIcon programIcon() {
    QIcon icon;
    for (const int side : {16, 32, 48, 64}) {
        QFile drawing(QStringLiteral(":/program.svg"));
        icon.addPixmap(QPixmap::fromImage(svgImage(drawing, QSize(side, side))));
    }
    return icon;
}

}  // namespace stowpocket
