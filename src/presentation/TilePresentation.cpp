// SPDX-License-Identifier: MIT
#include "presentation/TilePresentation.h"

#include "foundation/Text.h"
#include "shelf/ShelfItem.h"

namespace stowpocket {
namespace {

enum class Shown { asIs, asBlank, notAtAll };

bool isBetween(std::string_view character, std::string_view first, std::string_view last) {
    return character.size() == first.size() && character >= first && character <= last;
}

Shown shownAs(std::string_view character) {
    if (isControl(character.front()))
        return Shown::asBlank;
    if (isBetween(character, "\u0080", "\u009f") || isBetween(character, "\u2028", "\u2029"))
        return Shown::asBlank;
    // NOLINTNEXTLINE(misc-misleading-bidirectional): these are the ones
    if (isBetween(character, "\u202a", "\u202e") || isBetween(character, "\u2066", "\u2069"))
        return Shown::notAtAll;
    return Shown::asIs;
}

std::size_t characterLength(std::string_view text) {
    std::size_t length = 1;
    while (length < text.size() && isUtf8Continuation(text[length]))
        ++length;
    return length;
}

}  // namespace

std::string displayName(std::string_view filename) {
    std::string name;
    while (!filename.empty()) {
        const std::string_view character = filename.substr(0, characterLength(filename));
        filename.remove_prefix(character.size());
        switch (shownAs(character)) {
        case Shown::asIs:
            name += character;
            break;
        case Shown::asBlank:
            name += ' ';
            break;
        case Shown::notAtAll:
            break;
        }
    }
    return name;
}

std::string TilePresentation::accessibleName() const {
    return name + ", " + size + (isMissing ? ", Missing" : "");
}

TilePresentation tilePresentation(const ShelfItem& item, const ByteCountText& byteCountText) {
    return {displayName(item.filename), byteCountText(item.fileSize), !item.isAvailable, item.isAvailable};
}

}  // namespace stowpocket
