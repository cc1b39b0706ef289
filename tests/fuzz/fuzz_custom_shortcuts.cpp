// SPDX-License-Identifier: MIT
// The list of custom shortcuts, as the desktop's settings print it: what is written back must be what was read.
#include "foundation/Invariant.h"
#include "foundation/Text.h"
#include "presentation/BoundCommands.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

using namespace stowpocket;

/// libFuzzer's inputs may be longer than any list is read.
constexpr std::size_t longest = 60'000;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    if (const auto strings = gvariantStringsIn(text)) {
        invariant(std::ranges::all_of(*strings, [&](const auto& each) { return text.find(each) != text.npos; }),
                  "strings are kept as they are written");
        invariant(gvariantStringsIn(gvariantArray(*strings)) == strings, "what is written reads back");
    }
    const std::string quoted = gvariantString(text);
    invariant(std::ranges::any_of(text, isControl) || gvariantStringsIn('[' + quoted + ']') == std::vector{quoted} ||
                  quoted.size() > longest,
              "a string stays one");
    return 0;
}
