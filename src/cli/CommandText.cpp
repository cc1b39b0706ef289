// SPDX-License-Identifier: MIT
#include "cli/CommandText.h"

#include "foundation/Utf8.h"

#include <cstdint>

namespace stowpocket {
namespace {

constexpr std::string_view hexDigits = "0123456789abcdef";

bool isControl(char character) {
    const auto byte = static_cast<std::uint8_t>(character);
    return byte < 0x20 || byte == 0x7F;
}

/// U+0080 to U+009F: terminals obey some of these as well.
bool holdsHighControl(std::string_view text) {
    for (std::size_t at = text.find('\xC2'); at != std::string_view::npos; at = text.find('\xC2', at + 1)) {
        if (at + 1 < text.size() && static_cast<std::uint8_t>(text[at + 1]) < 0xA0)
            return true;
    }
    return false;
}

bool isPlain(std::string_view text) {
    for (const char character : text) {
        if (isControl(character))
            return false;
    }
    return validUtf8(text) == text && !holdsHighControl(text);
}

std::string hex(char character) {
    const auto byte = static_cast<std::uint8_t>(character);
    return {hexDigits[byte >> 4u], hexDigits[byte & 0x0Fu]};
}

/// In double quotes; `text` is UTF-8.
std::string jsonString(std::string_view text) {
    std::string quoted = "\"";
    for (const char character : text) {
        if (isControl(character))
            quoted += "\\u00" + hex(character);
        else if (character == '"' || character == '\\')
            quoted.append("\\").append(1, character);
        else
            quoted += character;
    }
    return quoted + '"';
}

}  // namespace

std::string_view helpText() {
    return R"(Usage: stowpocket [FILES...]
       stowpocket VERB [OPTIONS] [--] [FILES...]

Without a verb the program starts, or the one that runs opens its shelf, with FILES on it.

Verbs:
  add FILES...         put files on the shelf; starts the program if needed
  list [--json]        print the files on the shelf, one a line, oldest first
  remove FILES|IDS...  take files off the shelf; the files themselves stay
  clear                take all files off the shelf
  show                 open the shelf; starts the program if needed
  toggle               open or close the shelf; starts the program if needed
  quick-drop           add what is selected in the file manager; starts the program if needed

FILES are paths or file: URLs. A file called like a verb is written ./add.

Options:
  -h, --help           print this and end
      --version        print the version and end

Exit codes: 0 all done; 1 some files were not taken or not found; 2 wrong usage;
3 the program is not running or does not answer.
)";
}

std::string printable(std::string_view text) {
    if (isPlain(text))
        return std::string(text);
    // Bytes above 0x7F are escaped too, since what follows a broken sequence could be read as its end.
    std::string quoted = "$'";
    for (const char character : text) {
        if (character == '\n')
            quoted += "\\n";
        else if (character == '\t')
            quoted += "\\t";
        else if (character == '\'' || character == '\\')
            quoted.append("\\").append(1, character);
        else if (isControl(character) || static_cast<std::uint8_t>(character) > 0x7F)
            quoted += "\\x" + hex(character);
        else
            quoted += character;
    }
    return quoted + '\'';
}

std::string listText(std::span<const StagedFile> files) {
    std::string text;
    for (const StagedFile& file : files)
        text += printable(file.fileURL.path()) + '\n';
    return text;
}

std::string listJSON(std::span<const StagedFile> files) {
    std::string text = "[";
    for (const StagedFile& file : files) {
        const std::string path = file.fileURL.path();
        text += text.size() == 1 ? "\n  " : ",\n  ";
        text += "{\"id\": " + jsonString(file.id);
        text += ", \"url\": " + jsonString(file.fileURL.string());
        text += ", \"path\": " + (validUtf8(path) == path ? jsonString(path) : "null");
        text += std::string(", \"available\": ") + (file.isAvailable ? "true" : "false");
        text += ", \"size\": " + std::to_string(file.fileSize) + "}";
    }
    return text + (files.empty() ? "]\n" : "\n]\n");
}

}  // namespace stowpocket
