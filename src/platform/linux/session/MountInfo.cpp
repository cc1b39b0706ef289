// SPDX-License-Identifier: MIT
#include "platform/linux/session/MountInfo.h"

#include <algorithm>
#include <charconv>
#include <optional>

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

/// "36 35 98:0 /root /mount/point options..."
std::optional<MountPoint> mountPointOf(std::string_view line) {
    MountPoint mount;
    const std::string_view id = takeUntil(line, ' ');
    const auto [end, error] = std::from_chars(id.data(), id.data() + id.size(), mount.id);
    if (error != std::errc() || end != id.data() + id.size())
        return std::nullopt;
    for (int skipped = 0; skipped < 3; ++skipped)
        takeUntil(line, ' ');
    mount.path = unescaped(takeUntil(line, ' '));
    return mount.path.starts_with('/') ? std::optional(std::move(mount)) : std::nullopt;
}

}  // namespace

std::vector<MountPoint> mountPoints(std::string_view mountInfo) {
    std::vector<MountPoint> mounts;
    while (!mountInfo.empty()) {
        if (std::optional<MountPoint> mount = mountPointOf(takeUntil(mountInfo, '\n')))
            mounts.push_back(std::move(*mount));
    }
    std::ranges::sort(mounts);
    return mounts;
}

MountChanges changesBetween(const std::vector<MountPoint>& before, const std::vector<MountPoint>& after) {
    return {.mounted = !std::ranges::includes(before, after), .unmounted = !std::ranges::includes(after, before)};
}

}  // namespace stowpocket
