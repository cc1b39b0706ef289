// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/LinuxWorkspaceIcons.h"

#include "platform/linux/pictures/RegularFile.h"
#include "platform/qt/QtImages.h"

#include <QFile>
#include <QMimeDatabase>

#include <sys/stat.h>

#include <array>
#include <cmath>

/// Qt requires this outside of any namespace.
static void registerPictures() {
    Q_INIT_RESOURCE(pictures);
}

namespace stowpocket {
namespace {

struct Drawing {
    const char* type;
    const char* name;
};

/// Types whose generic icon would not say enough, including all derived types.
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

/// The generic icon names that freedesktop icon themes share.
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

constexpr Size iconSize{48, 48};
/// The scale if there is no screen.
constexpr double defaultScale = 2.0;

/// The places to look for an icon, the best one first.
struct IconNames {
    QStringList inTheme;
    QString bundled;
};

std::optional<QMimeType> typeByName(const FileURL& url) {
    const QString name = QString::fromStdString(url.lastPathComponent());
    const QList<QMimeType> types = QMimeDatabase().mimeTypesForFileName(name);
    return types.isEmpty() ? std::nullopt : std::optional(types.first());
}

IconNames iconNames(const FileURL& url) {
    const mode_t mode = cachedFileMode(url.path()).value_or(0);
    if (S_ISDIR(mode) || url.string().ends_with('/'))
        return {{QStringLiteral("folder"), QStringLiteral("inode-directory")}, QStringLiteral("folder")};
    if (const std::optional<QMimeType> type = typeByName(url))
        return {{type->iconName(), type->genericIconName()}, bundledIconName(*type)};
    const bool isExecutable = S_ISREG(mode) && (mode & (S_IXUSR | S_IXGRP | S_IXOTH)) != 0;
    if (isExecutable)
        return {{QStringLiteral("application-x-executable")}, QStringLiteral("executable")};
    return {{QStringLiteral("text-x-generic")}, QStringLiteral("file")};
}

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

LinuxWorkspaceIcons::LinuxWorkspaceIcons(const MainScreen& screen) : screen_(screen) {}

Image LinuxWorkspaceIcons::icon(const FileURL& url) {
    const int side =
        static_cast<int>(std::lround(iconSize.width * screen_.backingScaleFactor().value_or(defaultScale)));
    const IconNames names = iconNames(url);
    QImage image;
    for (const QString& name : names.inTheme) {
        image = theme_.icon(name, side);
        if (!image.isNull())
            break;
    }
    if (image.isNull())
        image = bundledIcon(names.bundled, side);
    return {std::make_shared<QtImageContent>(std::move(image)), iconSize};
}

std::string LinuxWorkspaceIcons::lowercased(const std::string& extension) const {
    return QString::fromStdString(extension).toLower().toStdString();
}

}  // namespace stowpocket
