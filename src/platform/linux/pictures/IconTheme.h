// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QImage>
#include <QString>
#include <QStringList>

#include <vector>

namespace stowpocket {

/// A folder of an icon theme, and for which sizes its icons are drawn: in pixels, from and to.
struct IconFolder {
    QString path;
    int smallest = 0;
    int largest = 0;
};

/// What an icon theme tells of itself, as far as it concerns icons of files. Paths of folders are relative to it.
struct IconThemeIndex {
    QStringList inherits;
    std::vector<IconFolder> folders;
};

/// Reads an `index.theme`; what makes no sense in it is left out.
[[nodiscard]] IconThemeIndex parsedIconThemeIndex(QByteArrayView text);

/// The icons of files in the desktop's icon theme. Outside the large desktops none is set up, though one is mostly
/// installed: then the first one found serves. Loaded at the first question, by reading the themes' own lists: the
/// toolkit takes ten times as long for them, and a popover waits. Main thread.
class IconTheme {
public:
    /// `side` pixels each way, or smaller where the theme has no such size; null when it has no such icon.
    [[nodiscard]] QImage icon(const QString& name, int side);

private:
    using Theme = std::vector<IconFolder>;

    void load();
    void addWithParents(const QString& name);
    [[nodiscard]] bool hasFileIcons() const;

    bool isReady_ = false;
    QStringList names_;
    /// In the order in which they are asked.
    std::vector<Theme> themes_;
};

}  // namespace stowpocket
