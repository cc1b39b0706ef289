// SPDX-License-Identifier: MIT
#include "platform/linux/session/DesktopEntry.h"

#include <algorithm>

namespace stowpocket {
namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string unescapedValue(std::string_view value) {
    constexpr std::string_view letters = "sntr\\";
    constexpr std::string_view meanings = " \n\t\r\\";
    std::string text;
    for (std::size_t at = 0; at < value.size(); ++at) {
        const std::size_t escape =
            value[at] == '\\' && at + 1 < value.size() ? letters.find(value[at + 1]) : std::string_view::npos;
        text += escape == std::string_view::npos ? value[at] : meanings[escape];
        at += escape == std::string_view::npos ? 0 : 1;
    }
    return text;
}

/// Characters that keep a meaning between double quotes and lose it behind a backslash.
bool isSpecialInQuotes(char character) {
    constexpr std::string_view specials = "\"`$\\";
    return specials.find(character) != std::string_view::npos;
}

/// Reads one argument after another off the value of the key Exec.
class ExecReader {
public:
    explicit ExecReader(std::string_view rest) : rest_(rest) {}

    /// False at the end, and on a quote that is not closed: then `failed`.
    bool next(std::string& argument) {
        argument.clear();
        hasArgument_ = false;
        rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\n"), rest_.size()));
        while (!rest_.empty() && !isBlank(rest_.front()) && !failed_) {
            if (rest_.front() == '"')
                readQuoted(argument);
            else
                readCharacter(argument);
        }
        return !failed_ && (hasArgument_ || !rest_.empty());
    }
    /// Whether the argument read last was more than a field code.
    [[nodiscard]] bool hasArgument() const { return hasArgument_; }
    [[nodiscard]] bool failed() const { return failed_; }

private:
    static bool isBlank(char character) { return character == ' ' || character == '\t' || character == '\n'; }

    void readQuoted(std::string& argument) {
        rest_.remove_prefix(1);
        hasArgument_ = true;
        while (!rest_.empty() && rest_.front() != '"') {
            if (rest_.front() == '\\' && rest_.size() > 1 && isSpecialInQuotes(rest_[1]))
                rest_.remove_prefix(1);
            readCharacter(argument);
        }
        failed_ = rest_.empty();
        rest_.remove_prefix(failed_ ? 0 : 1);
    }
    /// "%%" is a percent sign; any other letter behind one is filled in by whoever runs the command.
    void readCharacter(std::string& argument) {
        const bool isCode = rest_.front() == '%' && rest_.size() > 1;
        const bool isText = !isCode || rest_[1] == '%';
        if (isText)
            argument += rest_.front();
        hasArgument_ = hasArgument_ || isText;
        rest_.remove_prefix(isCode ? 2 : 1);
    }

    std::string_view rest_;
    bool hasArgument_ = false;
    bool failed_ = false;
};

}  // namespace

std::optional<DesktopEntry> parsedDesktopEntry(std::string_view text) {
    if (text.size() > maxDesktopEntrySize)
        return std::nullopt;
    std::optional<DesktopEntry> entry;
    bool inGroup = false;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.starts_with('[')) {
            inGroup = line == "[Desktop Entry]";
            if (inGroup && !entry)
                entry.emplace();
            continue;
        }
        const std::size_t equals = line.find('=');
        if (!inGroup || line.starts_with('#') || equals == std::string_view::npos)
            continue;
        const std::string_view key = trimmed(line.substr(0, equals));
        if (!key.empty() && key.find('[') == std::string_view::npos)
            entry->insert_or_assign(std::string(key), unescapedValue(trimmed(line.substr(equals + 1))));
    }
    return entry;
}

std::string escapedValue(std::string_view value) {
    std::string text;
    for (const char character : value) {
        if (character == '\\')
            text += "\\\\";
        else if (character == '\n')
            text += "\\n";
        else if (character == '\t')
            text += "\\t";
        else if (character == '\r')
            text += "\\r";
        else
            text += character;
    }
    return text;
}

std::string execValue(std::string_view program) {
    std::string quoted = "\"";
    for (const char character : program) {
        if (isSpecialInQuotes(character))
            quoted += '\\';
        quoted.append(character == '%' ? 2 : 1, character);
    }
    return quoted + '"';
}

std::optional<std::vector<std::string>> commandOfExec(std::string_view value) {
    std::vector<std::string> command;
    ExecReader reader(value);
    for (std::string argument; reader.next(argument);) {
        if (reader.hasArgument())
            command.push_back(argument);
    }
    return reader.failed() || command.empty() ? std::nullopt : std::optional(std::move(command));
}

}  // namespace stowpocket
