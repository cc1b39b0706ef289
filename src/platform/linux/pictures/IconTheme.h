// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QImage>
#include <QString>
#include <QStringList>

#include <vector>

namespace stowpocket {

/// A folder of an icon theme, and the range of sizes in pixels that its icons are drawn for.
struct IconFolder {
    QString path;
    int smallest = 0;
    int largest = 0;
};

/// The part of the description of an icon theme that concerns icons of files. Paths of folders are relative to the
/// theme.
struct IconThemeIndex {
    QStringList inherits;
    std::vector<IconFolder> folders;
};

/// Parses an `index.theme`; invalid entries are skipped.
[[nodiscard]] IconThemeIndex parsedIconThemeIndex(QByteArrayView text);

/// The icons of files in the icon theme of the desktop. Outside the large desktops none is configured, though one is
/// usually installed; then the first one found is used. Loaded at the first request, from the themes' own lists,
/// because the toolkit takes ten times as long and a popover is waiting. Main thread.
class IconTheme {
public:
    /// `side` pixels each way, or smaller if the theme does not have that size; null if it has no such icon.
    [[nodiscard]] QImage icon(const QString& name, int side);

private:
    using Theme = std::vector<IconFolder>;

    void load();
    void addWithParents(const QString& name);
    [[nodiscard]] bool hasFileIcons() const;

    bool isReady_ = false;
    QStringList names_;
    /// In order of priority.
    std::vector<Theme> themes_;
};

}  // namespace stowpocket
