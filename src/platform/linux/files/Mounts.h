// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/files/DurableFile.h"
#include "services/Files.h"

#include <QFile>
#include <QSocketNotifier>

#include <compare>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

/// One mounted file system: the kernel's number for the mount, where it stands, and what it is.
struct Mount {
    std::uint64_t id = 0;
    std::string point;
    std::string type;

    friend auto operator<=>(const Mount&, const Mount&) = default;
};
using Mounts = std::vector<Mount>;

/// Reads the form of /proc/self/mountinfo (proc(5)), in its order, which is that of mounting; lines that do not have
/// it are left out.
[[nodiscard]] Mounts parseMounts(std::string_view text);

struct MountChanges {
    bool mounted = false;
    bool unmounted = false;
};

/// What happened between two moments. A mount that moved was unmounted and mounted; one whose options or place in
/// the list changed did neither.
[[nodiscard]] MountChanges changesBetween(Mounts before, Mounts after);

/// The mounted file systems as this process sees them, read again only when the kernel says that they changed. Any
/// thread.
class MountTable {
public:
    MountTable();
    /// In the order of mounting; empty where there is no /proc.
    [[nodiscard]] std::shared_ptr<const Mounts> mounts();

private:
    std::mutex mutex_;
    const FileDescriptor file_;
    std::shared_ptr<const Mounts> mounts_;
};

/// Whether a file system of that type asks another machine or program, which may never answer.
[[nodiscard]] bool mayHang(std::string_view fileSystemType);

/// The first mount on the way to `path` that may hang; none when the whole way is local. Follows links on the way,
/// without touching what lies behind such a mount.
[[nodiscard]] std::optional<std::string> hangingMountOn(const Mounts& mounts, const std::string& path);

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
