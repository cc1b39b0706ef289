// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/BundledIcons.h"

#include "platform/qt/QtImages.h"

#include <QFile>

#include <array>

/// Qt wants this outside any namespace.
static void registerPictures() {
    Q_INIT_RESOURCE(pictures);
}

namespace stowpocket {
namespace {

struct Drawing {
    const char* type;
    const char* name;
};

/// Types whose generic icon would say too little, with all types derived from them.
constexpr std::array<Drawing, 10> drawingsOfTypes{{{"application/pdf", "pdf"},
                                                   {"text/csv", "spreadsheet"},
                                                   {"text/css", "code"},
                                                   {"text/html", "code"},
                                                   {"text/rust", "code"},
                                                   {"text/x-cmake", "code"},
                                                   {"text/x-csrc", "code"},
                                                   {"text/x-go", "code"},
                                                   {"text/x-makefile", "code"},
                                                   {"text/x-python", "code"}}};

/// By the generic icon names that freedesktop icon themes share.
constexpr std::array<Drawing, 11> drawingsOfGenericIcons{{{"application-x-executable", "executable"},
                                                          {"audio-x-generic", "audio"},
                                                          {"image-x-generic", "image"},
                                                          {"package-x-generic", "archive"},
                                                          {"text-html", "code"},
                                                          {"text-x-generic", "text"},
                                                          {"text-x-script", "code"},
                                                          {"video-x-generic", "video"},
                                                          {"x-office-document", "text"},
                                                          {"x-office-presentation", "presentation"},
                                                          {"x-office-spreadsheet", "spreadsheet"}}};

}  // namespace

QString bundledIconName(const QMimeType& type) {
    for (const Drawing& drawing : drawingsOfTypes) {
        if (type.inherits(QLatin1String(drawing.type)))
            return QLatin1String(drawing.name);
    }
    for (const Drawing& drawing : drawingsOfGenericIcons) {
        if (type.genericIconName() == QLatin1String(drawing.type))
            return QLatin1String(drawing.name);
    }
    return QStringLiteral("file");
}

QImage bundledIcon(const QString& name, int side) {
    registerPictures();
    QFile drawing(QStringLiteral(":/pictures/icons/%1.svg").arg(name));
    return svgImage(drawing, QSize(side, side));
}

}  // namespace stowpocket
