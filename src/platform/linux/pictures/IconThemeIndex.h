// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
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

}  // namespace stowpocket
