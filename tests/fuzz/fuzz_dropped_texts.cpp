// SPDX-License-Identifier: MIT
#include "foundation/Text.h"
#include "fuzz/Fuzz.h"
#include "intake/ExchangeFormats.h"

#include <algorithm>

/// Whatever a drag source writes as a link or a text: it becomes a file name, and a file that desktops follow.
void stowpocket::checkInput(const std::string& text) {
    constexpr std::ptrdiff_t linesOfEntry = 6;
    constexpr std::size_t longestWords = 60;
    for (const std::optional<DroppedLink>& link : {linkOfMozURL(text), linkOfUriList(text)}) {
        const std::string entry = link ? desktopEntryOf(*link) : std::string();
        invariant(!link || std::ranges::count(entry, '\n') == linesOfEntry, "nothing adds a line of its own");
        invariant(validUtf8(entry) == entry, "desktop entries are UTF-8");
    }
    const std::string words = firstWords(text);
    invariant(words.size() <= longestWords && validUtf8(words) == words, "file names have a limit");
    invariant(words.find_first_of("/\n") == std::string::npos && !words.starts_with('.'),
              "they stay in their folder");
}
