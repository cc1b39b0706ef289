// SPDX-License-Identifier: MIT
#include "platform/linux/files/MountInfoVolumes.h"

#include "platform/linux/files/MountChanges.h"

#include <QDebug>

namespace stowpocket {

MountInfoVolumes::MountInfoVolumes() : file_(QStringLiteral("/proc/self/mountinfo")) {
    if (!file_.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        qWarning() << "stowpocket: cannot watch volumes:" << file_.fileName() << file_.errorString();
        return;
    }
    mounts_ = read();
    // The kernel reports a changed table as an exceptional condition (proc(5)).
    notifier_ = std::make_unique<QSocketNotifier>(file_.handle(), QSocketNotifier::Exception);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { readAgain(); });
}

Mounts MountInfoVolumes::read() {
    if (!file_.seek(0))
        return mounts_;
    const QByteArray text = file_.readAll();
    return text.isEmpty() ? mounts_ : parseMounts({text.constData(), static_cast<std::size_t>(text.size())});
}

void MountInfoVolumes::readAgain() {
    const Mounts before = std::exchange(mounts_, read());
    const MountChanges changes = changesBetween(before, mounts_);
    if (changes.unmounted)
        didUnmount_.emit();
    if (changes.mounted)
        didMount_.emit();
}

}  // namespace stowpocket
