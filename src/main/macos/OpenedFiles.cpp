// SPDX-License-Identifier: MIT
#include "main/macos/OpenedFiles.h"

#include <QCoreApplication>
#include <QFileOpenEvent>

namespace stowpocket {

OpenedFiles::OpenedFiles(Delivery deliver) : deliver_(std::move(deliver)) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool OpenedFiles::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::FileOpen)
        return QObject::eventFilter(watched, event);
    arrived(static_cast<QFileOpenEvent*>(event)->file());
    return true;
}

/// The name as it was given: QFile would write its accents in another form than drops do.
void OpenedFiles::arrived(const QString& path) {
    const std::optional<FileURL> file = FileURL::fromPath(path.toStdString());
    if (!file)
        return;
    if (files_.empty())
        QMetaObject::invokeMethod(
            this, [this] { deliver_(std::exchange(files_, {})); }, Qt::QueuedConnection);
    files_.push_back(*file);
}

}  // namespace stowpocket
