// SPDX-License-Identifier: MIT
#include "platform/qt/QtTrash.h"

#include <QFile>

namespace stowpocket {

bool QtTrash::trashItem(const FileURL& url) {
    return QFile::moveToTrash(QFile::decodeName(url.path().c_str()));
}

}  // namespace stowpocket
