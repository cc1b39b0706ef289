// SPDX-License-Identifier: MIT
#include "platform/linux/storage/MountTable.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <climits>

namespace stowpocket {
namespace {

std::string_view takeUntil(std::string_view& text, char separator) {
    const std::size_t end = text.find(separator);
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return taken;
}

/// The kernel writes space, tab, newline and backslash as three octal digits.
std::string unescaped(std::string_view field) {
    const auto isOctal = [](char digit) { return digit >= '0' && digit <= '7'; };
    std::string text;
    for (std::size_t at = 0; at < field.size(); ++at) {
        const std::string_view digits = field.substr(at + 1, 3);
        if (field[at] != '\\' || digits.size() != 3 || !std::ranges::all_of(digits, isOctal)) {
            text += field[at];
            continue;
        }
        text += static_cast<char>((digits[0] - '0') * 64 + (digits[1] - '0') * 8 + (digits[2] - '0'));
        at += 3;
    }
    return text;
}

/// "36 35 98:0 /root /mount/point options [tags...] - type source options"
std::optional<Mount> parseMount(std::string_view line) {
    Mount mount;
    const std::string_view id = takeUntil(line, ' ');
    if (std::from_chars(id.data(), id.data() + id.size(), mount.id).ec != std::errc())
        return std::nullopt;
    for (int skipped = 0; skipped < 3; ++skipped)
        takeUntil(line, ' ');
    mount.point = unescaped(takeUntil(line, ' '));
    const std::size_t separator = line.find(" - ");
    if (!mount.point.starts_with('/') || separator == std::string_view::npos)
        return std::nullopt;
    line.remove_prefix(separator + 3);
    mount.type = takeUntil(line, ' ');
    return mount;
}

std::string readFromStart(int file) {
    std::string text;
    std::array<char, 8192> part{};
    if (::lseek(file, 0, SEEK_SET) != 0)
        return text;
    for (ssize_t got = 0; (got = ::read(file, part.data(), part.size())) > 0;)
        text.append(part.data(), static_cast<std::size_t>(got));
    return text;
}

bool hasChanged(int file) {
    pollfd question{.fd = file, .events = POLLPRI, .revents = 0};
    return ::poll(&question, 1, 0) > 0 && (question.revents & POLLPRI) != 0;
}

bool hangsAt(const Mounts& mounts, const std::string& path) {
    const auto last = std::find_if(mounts.rbegin(), mounts.rend(), [&](const Mount& m) { return m.point == path; });
    return last != mounts.rend() && mayHang(last->type);
}

std::optional<std::string> linkText(const std::string& path) {
    std::array<char, PATH_MAX> buffer{};
    const ssize_t length = ::readlink(path.c_str(), buffer.data(), buffer.size());
    return length <= 0 ? std::nullopt : std::optional(std::string(buffer.data(), static_cast<std::size_t>(length)));
}

}  // namespace

MountTable::MountTable()
    : file_(::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC)), mounts_(std::make_shared<const Mounts>()) {
    if (!file_.isOpen())
        return;
    static_cast<void>(hasChanged(file_.get()));  // changes count from here
    mounts_ = std::make_shared<const Mounts>(parseMounts(readFromStart(file_.get())));
}

std::shared_ptr<const Mounts> MountTable::mounts() {
    const std::lock_guard lock(mutex_);
    if (file_.isOpen() && hasChanged(file_.get()))
        mounts_ = std::make_shared<const Mounts>(parseMounts(readFromStart(file_.get())));
    return mounts_;
}

Mounts parseMounts(std::string_view text) {
    Mounts mounts;
    while (!text.empty()) {
        if (std::optional<Mount> mount = parseMount(takeUntil(text, '\n')))
            mounts.push_back(std::move(*mount));
    }
    return mounts;
}

bool mayHang(std::string_view fileSystemType) {
    // Served over a network, by a program in user space, or mounted on first touch. "fuseblk" is a local disk whose
    // driver happens to run in user space (NTFS), and is left out.
    constexpr std::array<std::string_view, 17> types = {"9p",   "afs",   "autofs",   "beegfs", "ceph",   "cifs",
                                                        "coda", "davfs", "fuse",     "gpfs",   "lustre", "ncpfs",
                                                        "nfs",  "nfs4",  "orangefs", "smb3",   "smbfs"};
    return std::ranges::find(types, fileSystemType) != types.end() || fileSystemType.starts_with("fuse.");
}

std::optional<std::string> hangingMountOn(const Mounts& mounts, const std::string& path) {
    if (std::ranges::none_of(mounts, [](const Mount& mount) { return mayHang(mount.type); }))
        return std::nullopt;
    constexpr int maxLinks = 40;  // the kernel's own limit
    int links = 0;
    std::string reached;
    std::string rest = path;
    while (!rest.empty()) {
        std::string_view ahead = rest;
        const std::string name(takeUntil(ahead, '/'));
        rest = std::string(ahead);
        if (name.empty() || name == ".")
            continue;
        if (name == "..") {
            reached.resize(reached.empty() ? 0 : reached.rfind('/'));
            continue;
        }
        std::string next = reached;
        next.append("/").append(name);
        if (hangsAt(mounts, next))
            return next;
        const std::optional<std::string> link = linkText(next);
        if (!link) {
            reached = std::move(next);
            continue;
        }
        if (++links > maxLinks)
            return std::nullopt;
        if (link->starts_with('/'))
            reached.clear();
        rest.insert(0, *link + '/');
    }
    return std::nullopt;
}

}  // namespace stowpocket
