// SPDX-License-Identifier: MIT
#include "platform/qt/QtTrash.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace stowpocket {

bool QtTrash::trashItem(const FileURL& url) {
    // Without that folder Qt 6.4 takes the current one for the trash, and reports success.
    const QString dataFolder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return !dataFolder.isEmpty() && QDir().mkpath(dataFolder) &&
           QFile::moveToTrash(QFile::decodeName(url.path().c_str()));
}

}  // namespace stowpocket
