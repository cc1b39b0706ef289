// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPalette>
#include <QPixmap>
#include <QPoint>

#include <vector>

namespace stowpocket {

/// The side of a picture on a tile, in points.
inline constexpr int tilePictureSide = 48;

/// The picture as tiles show it: fitted into its frame, with rounded corners and a faint edge. The latest ones are
/// kept.
[[nodiscard]] QImage tilePicture(const QImage& picture, double devicePixelRatio);

struct DragPicture {
    QPixmap pixmap;
    /// Where the picture in front lies.
    QPoint front;
};

/// Whether the number of files is drawn by us or by the system.
enum class FileCount { drawn, bySystem };

/// The picture of a drag of so many files. `pictures` are those of tiles, the one in front first; as many are used as
/// fit.
[[nodiscard]] DragPicture dragPicture(std::size_t fileCount, const std::vector<QImage>& pictures, FileCount count,
                                      const QPalette& palette, double devicePixelRatio);

}  // namespace stowpocket
