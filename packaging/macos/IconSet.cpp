// SPDX-License-Identifier: MIT
// Draws an icon in the sizes that a bundle has it in.
//   stowpocket_icon_set DRAWING.svg FOLDER.iconset
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int sides[] = {16, 32, 128, 256, 512};

bool draw(QSvgRenderer& drawing, int pixels, const QString& path) {
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    return image.save(path, "PNG");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3)
        return EXIT_FAILURE;
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    const QDir folder(QString::fromLocal8Bit(argv[2]));
    bool isDrawn = drawing.isValid() && folder.mkpath(QStringLiteral("."));
    for (const int side : sides) {
        const QString name = QStringLiteral("icon_%1x%1").arg(side);
        isDrawn = isDrawn && draw(drawing, side, folder.filePath(name + QStringLiteral(".png"))) &&
                  draw(drawing, 2 * side, folder.filePath(name + QStringLiteral("@2x.png")));
    }
    if (!isDrawn)
        std::fprintf(stderr, "%s could not be drawn into %s\n", argv[1], argv[2]);
    return isDrawn ? EXIT_SUCCESS : EXIT_FAILURE;
}
