// SPDX-License-Identifier: MIT
#include "intake/FileLists.h"

namespace stowpocket {
namespace {

constexpr auto selectionScript = R"(tell application "Finder"
    set theSelection to selection
    set thePaths to {}
    repeat with theItem in theSelection
        set end of thePaths to POSIX path of (theItem as alias)
    end repeat
    return thePaths
end tell)";

void appendFile(std::vector<FileURL>& files, const EventDescriptor& descriptor) {
    const std::optional<std::string> path = descriptor.stringValue();
    if (!path)
        return;
    if (std::optional<FileURL> file = FileURL::fromPath(*path))
        files.push_back(std::move(*file));
}

}  // namespace

std::vector<FileURL> filesOfUriList(std::string_view text, std::string_view localHost) {
    // GTK and Qt end some lists with NUL. Lines end in CR LF, in LF or not at all.
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

std::vector<ClipboardForm> clipboardFormsOf(const std::vector<FileURL>& files) {
    std::string copied = "copy";
    std::string paths;
    for (const FileURL& file : files) {
        copied += "\n" + file.string();
        paths += (paths.empty() ? "" : "\n") + file.path();
    }
    return {{"text/uri-list", uriListOf(files)},
            {"x-special/gnome-copied-files", std::move(copied)},
            {"application/x-kde-cutselection", "0"},
            {"text/plain", std::move(paths)}};
}

std::vector<FileURL> FinderSelection::selectedFiles() const {
    std::vector<FileURL> files;
    const std::unique_ptr<Script> script = scripts_.makeScript(selectionScript);
    const std::unique_ptr<EventDescriptor> result = script ? script->execute() : nullptr;
    if (!result)
        return files;
    const int count = result->numberOfItems();
    for (int index = 1; index <= count; ++index) {
        if (const auto item = result->descriptorAtIndex(index))
            appendFile(files, *item);
    }
    if (count == 0)
        appendFile(files, *result);
    return files;
}

}  // namespace stowpocket
