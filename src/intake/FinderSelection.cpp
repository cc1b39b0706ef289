// SPDX-License-Identifier: MIT
#include "intake/FinderSelection.h"

#include "services/FileManagerSelection.h"

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
