// SPDX-License-Identifier: MIT
#include "cli/CommandPath.h"

#include "foundation/Text.h"

namespace stowpocket {
namespace {

/// Goes from the folder `path` (without its trailing slash, so "" is the root) to its parent.
void goUp(std::string& path, const LinkTarget& linkTarget) {
    if (path.empty())
        return;
    if (std::optional<std::string> target = linkTarget(path))
        path = std::move(*target);
    path.resize(path.rfind('/') == std::string::npos ? 0 : path.rfind('/'));
}

}  // namespace

std::optional<std::string> absolutePath(std::string_view path, std::string_view workingDirectory,
                                        const LinkTarget& linkTarget) {
    if (path.empty())
        return std::nullopt;
    std::string rest(path);
    if (!path.starts_with('/')) {
        if (!workingDirectory.starts_with('/'))
            return std::nullopt;
        rest = std::string(workingDirectory) + '/' + rest;
    }
    std::string absolute;
    for (std::size_t at = 0; at < rest.size();) {
        const std::size_t end = std::min(rest.find('/', at), rest.size());
        const std::string_view name = std::string_view(rest).substr(at, end - at);
        at = end + 1;
        if (name == "..")
            goUp(absolute, linkTarget);
        else if (!name.empty() && name != ".")
            absolute.append("/").append(name);
    }
    return absolute.empty() ? "/" : absolute;
}

std::optional<FileURL> fileOfArgument(std::string_view argument, std::string_view workingDirectory,
                                      std::string_view localHost, const LinkTarget& linkTarget) {
    constexpr std::string_view scheme = "file:";
    std::string path(argument);
    if (asciiLowercased(argument.substr(0, scheme.size())) == scheme) {
        const std::optional<FileURL> url = FileURL::parse(argument, localHost);
        if (!url)
            return std::nullopt;
        path = url->path();
    }
    const std::optional<std::string> absolute = absolutePath(path, workingDirectory, linkTarget);
    return absolute ? FileURL::fromPath(*absolute) : std::nullopt;
}

}  // namespace stowpocket
