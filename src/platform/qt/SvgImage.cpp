// SPDX-License-Identifier: MIT
#include "platform/qt/SvgImage.h"

#include <QImageReader>

namespace stowpocket {

QImage svgImage(QIODevice& drawing, const QSize& room) {
    QImageReader reader(&drawing, "svg");
    reader.setScaledSize(reader.size().scaled(room, Qt::KeepAspectRatio));
    return reader.read();
}

}  // namespace stowpocket
