// SPDX-License-Identifier: MIT
#include "platform/linux/updates/InstalledFiles.h"

#include "platform/linux/preferences/PropertyList.h"
#include "platform/linux/session/OwnProcess.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace stowpocket {

std::string installedFile(const std::string& relativePath) {
    std::error_code error;
    const std::filesystem::path code = std::filesystem::read_symlink("/proc/self/exe", error);
    return (code.parent_path().parent_path() / relativePath).native();
}

MainBundle installedBundle() {
    MainBundle bundle{FileURL::fromPath(ownExecutable()).value_or(*FileURL::fromPath("/")), {}};
    std::ifstream file(installedFile("share/stowpocket/Info.plist"), std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    if (const std::optional<PropertyValue> list = parsePropertyList(text); list && list->dictionary() != nullptr)
        bundle.infoDictionary = *list->dictionary();
    return bundle;
}

std::optional<std::string> runningAppImage() {
    const char* const appImage = std::getenv("APPIMAGE");
    const std::string executable = ownExecutable();
    return appImage != nullptr && !executable.empty() && executable == appImage ? std::optional(executable)
                                                                                : std::nullopt;
}

}  // namespace stowpocket
