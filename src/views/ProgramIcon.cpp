// SPDX-License-Identifier: MIT
#include "views/ProgramIcon.h"

#include <QPainter>
#include <QSvgRenderer>

namespace stowpocket {

QIcon programIcon() {
    QSvgRenderer drawing(QStringLiteral(":/program.svg"));
    QIcon icon;
    for (const int side : {16, 32, 48, 64}) {
        QPixmap picture(side, side);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        drawing.render(&painter);
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

}  // namespace stowpocket
