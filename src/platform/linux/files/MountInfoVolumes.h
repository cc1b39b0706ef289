// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/MountInfo.h"
#include "services/Files.h"

#include <QFile>
#include <QSocketNotifier>

#include <memory>

namespace stowpocket {

/// File systems that come and go, as the kernel tells this process. Wakes up only when the mount table changes, and
/// keeps nothing open on any volume.
class MountInfoVolumes : public Volumes {
public:
    MountInfoVolumes();

    [[nodiscard]] Signal<>& didMount() override { return didMount_; }
    [[nodiscard]] Signal<>& didUnmount() override { return didUnmount_; }

private:
    [[nodiscard]] Mounts read();
    void readAgain();

    QFile file_;
    std::unique_ptr<QSocketNotifier> notifier_;
    Mounts mounts_;
    Signal<> didMount_;
    Signal<> didUnmount_;
};

}  // namespace stowpocket
