// SPDX-License-Identifier: MIT
// Draws an icon as PNG files of the given widths.
//   stowpocket_draw_icon DRAWING.svg FILE.png PIXELS [FILE.png PIXELS]...
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>
#include <cstdlib>

namespace {

bool draw(QSvgRenderer& drawing, const QString& path, int pixels) {
    if (pixels <= 0 || !QDir().mkpath(QFileInfo(path).path()))
        return false;
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    return image.save(path, "PNG");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4 || argc % 2 != 0)
        return EXIT_FAILURE;
    QSvgRenderer drawing(QString::fromLocal8Bit(argv[1]));
    for (int at = 2; at < argc; at += 2) {
        if (!drawing.isValid() || !draw(drawing, QString::fromLocal8Bit(argv[at]), std::atoi(argv[at + 1]))) {
            std::fprintf(stderr, "%s could not be drawn as %s\n", argv[1], argv[at]);
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}
