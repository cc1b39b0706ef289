// SPDX-License-Identifier: MIT
#include "foundation/Text.h"
#include "fuzz/Fuzz.h"
#include "presentation/BoundCommands.h"

#include <algorithm>

/// The list of custom shortcuts, as the desktop's settings print it: what is written back must be what was read.
void stowpocket::checkInput(const std::string& text) {
    constexpr std::size_t longest = 60'000;  // inputs may be longer than any list is read
    if (const auto strings = gvariantStringsIn(text)) {
        invariant(std::ranges::all_of(*strings, [&](const auto& each) { return text.find(each) != text.npos; }),
                  "strings are kept as they are written");
        invariant(gvariantStringsIn(gvariantArray(*strings)) == strings, "what is written reads back");
    }
    const std::string quoted = gvariantString(text);
    invariant(std::ranges::any_of(text, isControl) || gvariantStringsIn('[' + quoted + ']') == std::vector{quoted} ||
                  quoted.size() > longest,
              "a string stays one");
}
