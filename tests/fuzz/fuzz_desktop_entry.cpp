// SPDX-License-Identifier: MIT
// An autostart entry that anybody may have edited, and the commands in it.
#include "foundation/Invariant.h"
#include "platform/linux/session/DesktopEntry.h"

using namespace stowpocket;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    if (const auto entry = parsedDesktopEntry(text)) {
        for (const auto& [key, value] : *entry) {
            invariant(key.find_first_of("=[\n") == std::string::npos, "a key is one plain word");
            const auto command = commandOfExec(value);
            invariant(!command || !command->empty(), "a command names a program");
        }
    }
    const auto written = parsedDesktopEntry("[Desktop Entry]\nExec=" + escapedValue(execValue(text)) + "\nOther=1\n");
    if (text.size() < maxDesktopEntrySize / 8) {
        invariant(written && written->size() == 2, "no name breaks out of its line");
        invariant(commandOfExec(written->at("Exec")) == std::vector<std::string>{text}, "what is written reads back");
    }
    return 0;
}
