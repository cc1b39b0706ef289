// SPDX-License-Identifier: MIT
#include "fuzz/Fuzz.h"
#include "platform/linux/pictures/IconTheme.h"

/// What an icon theme tells of itself.
void stowpocket::checkInput(const std::string& text) {
    for (const IconFolder& folder : parsedIconThemeIndex(QByteArray::fromStdString(text)).folders)
        invariant(folder.smallest <= folder.largest, "a folder's sizes go from the smallest to the largest");
}
