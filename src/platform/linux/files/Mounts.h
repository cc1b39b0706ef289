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

/// One mounted file system: the kernel's number of the mount, its mount point and its type.
struct Mount {
    std::uint64_t id = 0;
    std::string point;
    std::string type;

    friend auto operator<=>(const Mount&, const Mount&) = default;
};
using Mounts = std::vector<Mount>;

/// Parses the format of /proc/self/mountinfo (proc(5)). Keeps its order, which is the order of mounting, and skips
/// malformed lines.
[[nodiscard]] Mounts parseMounts(std::string_view text);

struct MountChanges {
    bool mounted = false;
    bool unmounted = false;
};

/// The difference between two states of the table. A mount that moved counts as unmounted and mounted; one whose
/// options or position changed counts as neither.
[[nodiscard]] MountChanges changesBetween(Mounts before, Mounts after);

/// The mounted file systems as this process sees them. Read again only after the kernel has reported a change. Any
/// thread.
class MountTable {
public:
    MountTable();
    /// In the order of mounting; empty if there is no /proc.
    [[nodiscard]] std::shared_ptr<const Mounts> mounts();

private:
    std::mutex mutex_;
    const FileDescriptor file_;
    std::shared_ptr<const Mounts> mounts_;
};

/// Whether a file system of that type depends on another machine or program, which may never answer.
[[nodiscard]] bool mayHang(std::string_view fileSystemType);

/// The first mount on the way to `path` that may hang; none if the whole way is local. Follows links on the way, but
/// accesses nothing behind such a mount.
[[nodiscard]] std::optional<std::string> hangingMountOn(const Mounts& mounts, const std::string& path);

/// Mounted and unmounted file systems, as the kernel reports them. Wakes up only when the mount table changes, and
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
