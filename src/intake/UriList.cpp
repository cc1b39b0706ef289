// SPDX-License-Identifier: MIT
#include "intake/UriList.h"

namespace stowpocket {

std::vector<FileURL> filesOfUriList(std::string_view text, std::string_view localHost) {
    // GTK and Qt end some lists with NUL, and lines end in CR LF, in LF or not at all.
    constexpr std::string_view lineEnds("\r\n\0", 3);
    std::vector<FileURL> files;
    while (!text.empty()) {
        const std::size_t end = text.find_first_of(lineEnds);
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.starts_with('#'))
            continue;
        if (std::optional<FileURL> file = FileURL::parse(line, localHost))
            files.push_back(std::move(*file));
    }
    return files;
}

std::string uriListOf(const std::vector<FileURL>& files) {
    std::string text;
    for (const FileURL& file : files)
        text += file.string() + "\r\n";
    return text;
}

}  // namespace stowpocket
