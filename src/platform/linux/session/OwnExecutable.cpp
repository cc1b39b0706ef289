// SPDX-License-Identifier: MIT
#include "platform/linux/session/OwnExecutable.h"

#include <cstdlib>
#include <filesystem>

namespace stowpocket {
namespace {

std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

}  // namespace

std::string ownExecutable() {
    std::error_code error;
    const std::filesystem::path code = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::string() : executableToStart(code.native(), environment("APPIMAGE"), environment("APPDIR"));
}

std::string executableToStart(std::string_view runningCode, std::string_view appImage, std::string_view appFolder) {
    while (appFolder.ends_with('/'))
        appFolder.remove_suffix(1);
    const bool runsFromAppImage = appImage.starts_with('/') && !appFolder.empty() &&
                                  runningCode.starts_with(appFolder) &&
                                  runningCode.substr(appFolder.size()).starts_with('/');
    if (runsFromAppImage)
        return std::string(appImage);
    // Said of a program whose file was replaced by a newer one while it ran.
    constexpr std::string_view deleted = " (deleted)";
    if (runningCode.ends_with(deleted))
        runningCode.remove_suffix(deleted.size());
    return std::string(runningCode);
}

}  // namespace stowpocket
