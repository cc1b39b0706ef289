// SPDX-License-Identifier: MIT
#include "platform/linux/files/MountInfo.h"

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

}  // namespace

Mounts parseMounts(std::string_view text) {
    Mounts mounts;
    while (!text.empty()) {
        if (std::optional<Mount> mount = parseMount(takeUntil(text, '\n')))
            mounts.push_back(std::move(*mount));
    }
    return mounts;
}

}  // namespace stowpocket
