// SPDX-License-Identifier: MIT
#include "platform/linux/files/BaseDirectories.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string_view>

namespace stowpocket {
namespace {

std::optional<std::string> absolutePath(const char* text) {
    const std::string_view path = text == nullptr ? "" : text;
    return path.starts_with('/') ? std::optional<std::string>(path) : std::nullopt;
}

std::optional<std::string> baseDirectory(const char* variable, std::string_view belowHome) {
    if (std::optional<std::string> path = absolutePath(std::getenv(variable)))
        return path;
    std::optional<std::string> home = homeFolder();
    return home ? std::optional(home->append(belowHome)) : std::nullopt;
}

}  // namespace

std::optional<std::string> homeFolder() {
    if (std::optional<std::string> home = absolutePath(std::getenv("HOME")))
        return home;
    std::array<char, 4096> buffer{};
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr)
        return std::nullopt;
    return absolutePath(found->pw_dir);
}

std::optional<std::string> configHome() {
    return baseDirectory("XDG_CONFIG_HOME", "/.config");
}

std::optional<std::string> dataHome() {
    return baseDirectory("XDG_DATA_HOME", "/.local/share");
}

}  // namespace stowpocket
