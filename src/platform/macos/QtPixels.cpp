// SPDX-License-Identifier: MIT
#include "platform/macos/QtPixels.h"

#include <QSysInfo>

namespace stowpocket {
namespace {

/// Qt keeps a pixel as one number, whose bytes lie in that order on the processors that macOS runs on.
constexpr QImage::Format format = QImage::Format_ARGB32_Premultiplied;
static_assert(QSysInfo::ByteOrder == QSysInfo::LittleEndian);

constexpr int bytesPerPixel = 4;

}  // namespace

QImage qImageOf(const Pixels& pixels) {
    const int bytesPerLine = pixels.width * bytesPerPixel;
    if (pixels.bytes.size() < static_cast<std::size_t>(bytesPerLine) * static_cast<std::size_t>(pixels.height))
        return {};
    return QImage(pixels.bytes.data(), pixels.width, pixels.height, bytesPerLine, format).copy();
}

Pixels pixelsOfImage(const QImage& image) {
    const QImage converted = image.convertToFormat(format);
    Pixels pixels{converted.width(), converted.height(), {}};
    for (int row = 0; row < converted.height(); ++row) {
        const uchar* const line = converted.constScanLine(row);
        pixels.bytes.insert(pixels.bytes.end(), line, line + converted.width() * bytesPerPixel);
    }
    return pixels;
}

}  // namespace stowpocket
