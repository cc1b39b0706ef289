// SPDX-License-Identifier: MIT
// Whatever a drag source writes as a link or a text: it becomes a file name, and a file that desktops follow.
#include "foundation/Invariant.h"
#include "foundation/Text.h"
#include "intake/ExchangeFormats.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

using namespace stowpocket;

namespace {

constexpr std::ptrdiff_t linesOfEntry = 6;
constexpr std::size_t longestWords = 60;

void check(const std::optional<DroppedLink>& link) {
    if (!link)
        return;
    const std::string entry = desktopEntryOf(*link);
    invariant(std::ranges::count(entry, '\n') == linesOfEntry, "nothing adds a line of its own");
    invariant(validUtf8(entry) == entry, "desktop entries are UTF-8");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    check(linkOfMozURL(text));
    check(linkOfUriList(text));
    const std::string words = firstWords(text);
    invariant(words.size() <= longestWords && validUtf8(words) == words, "file names have a limit");
    invariant(words.find_first_of("/\n") == std::string::npos && !words.starts_with('.'),
              "they stay in their folder");
    return 0;
}
