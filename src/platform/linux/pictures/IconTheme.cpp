// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/IconTheme.h"

#include <QFile>
#include <QIcon>

#include <algorithm>

namespace stowpocket {
namespace {

/// Without an icon for plain text a theme has none for any file.
bool hasFileIcons() {
    return !QIcon::fromTheme(QStringLiteral("text-x-generic")).isNull();
}

bool isInstalled(const QString& theme) {
    const QStringList folders = QIcon::themeSearchPaths();
    return std::ranges::any_of(folders, [&theme](const QString& folder) {
        return QFile::exists(folder + QLatin1Char('/') + theme + QStringLiteral("/index.theme"));
    });
}

void setFallbackTheme(const QString& name) {
    QIcon::setFallbackThemeName(name);
    // Qt keeps the former fallback in the place of a theme that it did not find, until the search paths are set.
    QIcon::setThemeSearchPaths(QIcon::themeSearchPaths());
}

void chooseFallbackTheme() {
    if (hasFileIcons())
        return;
    const QString former = QIcon::fallbackThemeName();
    for (const char* const name : {"breeze", "Adwaita", "Papirus", "elementary-xfce", "Yaru", "mate", "gnome"}) {
        const QString theme = QLatin1String(name);
        if (!isInstalled(theme))
            continue;
        setFallbackTheme(theme);
        if (hasFileIcons())
            return;
    }
    setFallbackTheme(former);
}

}  // namespace

QImage IconTheme::icon(const QString& name, int side) {
    if (!isReady_) {
        chooseFallbackTheme();
        isReady_ = true;
    }
    // Asked for 48 pixels, Qt takes Breeze's 22 at double density, which are bare outlines for lists.
    const int drawn =
        side == 48 && QIcon::themeName().startsWith(QLatin1String("breeze"), Qt::CaseInsensitive) ? 64 : side;
    const QImage image = QIcon::fromTheme(name).pixmap(QSize(drawn, drawn), 1).toImage();
    return drawn == side ? image : image.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

}  // namespace stowpocket
