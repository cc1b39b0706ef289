// SPDX-License-Identifier: MIT
#include "platform/linux/files/Mounts.h"

#include <QLoggingCategory>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <climits>
#include <optional>

namespace stowpocket {
namespace {

Q_LOGGING_CATEGORY(filesLog, "stowpocket.files")

std::string_view takeUntil(std::string_view& text, char separator) {
    const std::size_t end = text.find(separator);
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return taken;
}

/// The kernel writes space, tab, newline and backslash as three octal digits.
std::string unescaped(std::string_view field) {
    std::string text;
    for (std::size_t at = 0; at < field.size(); ++at) {
        const std::string_view digits = field.substr(at + 1, 3);
        unsigned int byte = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 8);
        if (field[at] == '\\' && error == std::errc() && end == digits.data() + 3 && byte < 256) {
            text += static_cast<char>(byte);
            at += 3;
        } else {
            text += field[at];
        }
    }
    return text;
}

/// "36 35 98:0 /root /mount/point options [tags...] - type source options"
std::optional<Mount> parseMount(std::string_view line) {
    Mount mount;
    const std::string_view id = takeUntil(line, ' ');
    const auto [end, error] = std::from_chars(id.data(), id.data() + id.size(), mount.id);
    if (error != std::errc() || end != id.data() + id.size())
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

Mounts parseMounts(std::string_view text) {
    Mounts mounts;
    while (!text.empty()) {
        if (std::optional<Mount> mount = parseMount(takeUntil(text, '\n')))
            mounts.push_back(std::move(*mount));
    }
    return mounts;
}

MountChanges changesBetween(Mounts before, Mounts after) {
    std::ranges::sort(before);
    std::ranges::sort(after);
    return {.mounted = !std::ranges::includes(before, after), .unmounted = !std::ranges::includes(after, before)};
}

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

bool mayHang(std::string_view fileSystemType) {
    // Network file systems, those served by a program in user space, and those mounted on first access. "fuseblk" is
    // left out: it is a local disk whose driver happens to run in user space (NTFS).
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
        const std::size_t end = std::min(rest.find('/'), rest.size());
        const std::string name = rest.substr(0, end);
        rest.erase(0, end + 1);
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

MountInfoVolumes::MountInfoVolumes() : file_(QStringLiteral("/proc/self/mountinfo")) {
    if (!file_.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        qCWarning(filesLog) << "cannot watch volumes:" << file_.fileName() << file_.errorString();
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
