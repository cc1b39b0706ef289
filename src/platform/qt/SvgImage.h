// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>

class QIODevice;

namespace stowpocket {

/// An SVG drawing as large as its shape allows in a room of so many pixels; null where it cannot be read. The
/// toolkit's image plugin draws it, so that the library of SVG is loaded with the first drawing and not with the
/// program. Any thread.
[[nodiscard]] QImage svgImage(QIODevice& drawing, const QSize& room);

}  // namespace stowpocket
