// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/LinuxWorkspaceIcons.h"

#include "platform/linux/pictures/BundledIcons.h"
#include "platform/linux/pictures/CachedFileMode.h"
#include "platform/qt/QtImages.h"

#include <QMimeDatabase>

#include <sys/stat.h>

#include <cmath>

namespace stowpocket {
namespace {

constexpr Size iconSize{48, 48};
/// Drawn for a screen of double density where there is no screen to ask.
constexpr double defaultScale = 2.0;

/// Where to look for an icon, the best place first.
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

}  // namespace stowpocket
