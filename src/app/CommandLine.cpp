// SPDX-License-Identifier: MIT
#include "app/CommandLine.h"

namespace stowpocket {
namespace {

/// Without empty and "." parts, in the form in which file managers name the same file. A ".." stays: what it leads to
/// depends on symbolic links.
std::string tidied(std::string_view path) {
    std::string tidy;
    while (!path.empty()) {
        const std::size_t slash = path.find('/');
        const std::string_view part = path.substr(0, slash);
        path.remove_prefix(slash == std::string_view::npos ? path.size() : slash + 1);
        if (!part.empty() && part != ".")
            tidy.append("/").append(part);
    }
    return tidy.empty() ? "/" : tidy;
}

std::optional<FileURL> fileNamed(std::string_view argument, std::string_view workingDirectory) {
    if (std::optional<FileURL> url = FileURL::parse(argument))
        return url;
    if (argument.empty())
        return std::nullopt;
    std::string path(argument);
    if (!argument.starts_with('/'))
        path.insert(0, std::string(workingDirectory) + '/');
    return FileURL::fromPath(tidied(path));
}

}  // namespace

CommandLine readCommandLine(std::span<const std::string_view> arguments, std::string_view workingDirectory) {
    CommandLine read;
    bool mayBeOption = true;
    for (const std::string_view argument : arguments) {
        if (mayBeOption && argument == "--") {
            mayBeOption = false;
        } else if (mayBeOption && (argument == "--help" || argument == "-h")) {
            return {.verb = CommandLineVerb::showHelp, .files = {}, .refused = {}};
        } else if (mayBeOption && argument == "--version") {
            return {.verb = CommandLineVerb::showVersion, .files = {}, .refused = {}};
        } else if (mayBeOption && argument.starts_with('-')) {
            return {.verb = CommandLineVerb::refuse, .files = {}, .refused = std::string(argument)};
        } else if (auto file = fileNamed(argument, workingDirectory)) {
            read.files.push_back(std::move(*file));
        }
    }
    return read;
}

}  // namespace stowpocket
