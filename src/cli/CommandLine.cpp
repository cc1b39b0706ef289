// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"

#include "cli/CommandText.h"
#include "foundation/Text.h"
#include "services/RunningShelf.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <string_view>
#include <utility>

namespace stowpocket {
namespace {

enum class Operands { none, any, some };

struct VerbRule {
    std::string_view word;
    Verb verb;
    Operands operands;
};

constexpr VerbRule startRule{"", Verb::start, Operands::any};
constexpr std::array<VerbRule, 11> verbRules{{{"add", Verb::add, Operands::some},
                                              {"list", Verb::list, Operands::none},
                                              {"remove", Verb::remove, Operands::some},
                                              {"clear", Verb::clear, Operands::none},
                                              {"undo", Verb::undo, Operands::none},
                                              {"copy", Verb::copy, Operands::any},
                                              {"paste", Verb::paste, Operands::none},
                                              {"open", Verb::open, Operands::any},
                                              {"show", Verb::show, Operands::none},
                                              {"toggle", Verb::toggle, Operands::none},
                                              {"quick-drop", Verb::quickDrop, Operands::none}}};

const VerbRule& ruleFor(std::string_view word) {
    const auto rule = std::ranges::find(verbRules, word, &VerbRule::word);
    return rule == verbRules.end() ? startRule : *rule;
}

/// The number of letters to replace, insert or delete to turn one word into the other.
std::size_t distance(std::string_view one, std::string_view other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (const char letter : one) {
        std::size_t diagonal = row[0]++;
        for (std::size_t at = 0; at < other.size(); ++at) {
            const std::size_t changed = diagonal + (letter == other[at] ? 0 : 1);
            diagonal = row[at + 1];
            row[at + 1] = std::min({changed, diagonal + 1, row[at] + 1});
        }
    }
    return row.back();
}

/// The beginning of a verb has distance 0.
std::string_view nearestVerb(std::string_view word) {
    const auto far = [word](const VerbRule& rule) {
        return rule.word.starts_with(word) ? 0 : distance(word, rule.word);
    };
    return std::ranges::min_element(verbRules, {}, far)->word;
}

/// Whether the argument may be a mistyped verb, and not a path or URL.
bool isWord(std::string_view argument) {
    return !argument.empty() && !argument.starts_with('-') && argument.find_first_of("/:") == std::string_view::npos;
}

std::string named(const VerbRule& rule) {
    return rule.verb == Verb::start ? std::string() : std::string(rule.word) + ": ";
}

constexpr std::string_view formatOption = "--format=";

/// True if the option is known.
bool applyOption(std::string_view option, Command& command) {
    if (option == "--help" || option == "-h")
        command.verb = Verb::help;
    else if (option == "--version")
        command.verb = Verb::version;
    else if (option == "--json" && command.verb == Verb::list)
        command.asJSON = true;
    else if (option == "-0" && command.verb == Verb::list)
        command.listEnd = '\0';
    else if (option.starts_with(formatOption) && command.verb == Verb::list)
        command.listFormat = option.substr(formatOption.size());
    else
        return false;
    return true;
}

/// Why the options do not make a list; empty if they do.
std::string listProblem(const Command& command) {
    const StagedFile sample{"", *FileURL::fromPath("/")};
    if (!listText({&sample, 1}, command.listFormat, command.listEnd))
        return "list: the format " + printable(command.listFormat) + " is not understood";
    const Command plain;
    const bool isPlain = command.listFormat == plain.listFormat && command.listEnd == plain.listEnd;
    return command.asJSON && !isPlain ? "list: --json goes with no other option" : "";
}

/// Replaces the folder `path` (without a trailing slash, so that "" is the root) with its parent.
void goUp(std::string& path, const LinkTarget& linkTarget) {
    if (path.empty())
        return;
    if (std::optional<std::string> target = linkTarget(path))
        path = std::move(*target);
    path.resize(path.rfind('/') == std::string::npos ? 0 : path.rfind('/'));
}

}  // namespace

std::variant<Command, UsageError> parsedCommandLine(std::span<const std::string> arguments,
                                                    const std::function<bool(const std::string& argument)>& isThere) {
    const VerbRule& rule = arguments.empty() ? startRule : ruleFor(arguments.front());
    if (rule.verb != Verb::start)
        arguments = arguments.subspan(1);
    Command command{.verb = rule.verb};
    bool optionsEnded = false;
    bool isFormatNext = false;
    for (const std::string& argument : arguments) {
        if (std::exchange(isFormatNext, false))
            command.listFormat = argument;
        else if (optionsEnded || argument == "-" || !argument.starts_with('-'))
            command.operands.push_back(argument);
        else if (argument == "--")
            optionsEnded = true;
        else if (argument == "--format" && rule.verb == Verb::list)
            isFormatNext = true;
        else if (!applyOption(argument, command))
            return UsageError{named(rule) + "unknown option " + printable(argument)};
        if (command.verb == Verb::help || command.verb == Verb::version)
            return Command{.verb = command.verb};
    }
    if (rule.verb == Verb::start && !arguments.empty() && isWord(arguments.front()) && !isThere(arguments.front()))
        return UsageError{printable(arguments.front()) + " is neither a verb nor a file; the nearest verb is " +
                          std::string(nearestVerb(arguments.front()))};
    if (rule.operands == Operands::some && command.operands.empty())
        return UsageError{named(rule) + "which files?"};
    if (rule.operands == Operands::none && !command.operands.empty())
        return UsageError{named(rule) + "takes no files"};
    if (isFormatNext)
        return UsageError{"list: --format needs a format"};
    if (std::string problem = listProblem(command); !problem.empty())
        return UsageError{std::move(problem)};
    return command;
}

std::optional<std::string> absolutePath(std::string_view path, std::string_view workingDirectory,
                                        const LinkTarget& linkTarget) {
    if (path.empty())
        return std::nullopt;
    std::string rest(path);
    if (!path.starts_with('/')) {
        if (!workingDirectory.starts_with('/'))
            return std::nullopt;
        rest = std::string(workingDirectory) + '/' + rest;
    }
    std::string absolute;
    for (std::size_t at = 0; at < rest.size();) {
        const std::size_t end = std::min(rest.find('/', at), rest.size());
        const std::string_view name = std::string_view(rest).substr(at, end - at);
        at = end + 1;
        if (name == "..")
            goUp(absolute, linkTarget);
        else if (!name.empty() && name != ".")
            absolute.append("/").append(name);
    }
    return absolute.empty() ? "/" : absolute;
}

std::optional<FileURL> fileOfArgument(std::string_view argument, std::string_view workingDirectory,
                                      std::string_view localHost, const LinkTarget& linkTarget) {
    constexpr std::string_view scheme = "file:";
    std::string path(argument);
    if (asciiLowercased(argument.substr(0, scheme.size())) == scheme) {
        const std::optional<FileURL> url = FileURL::parse(argument, localHost);
        if (!url)
            return std::nullopt;
        path = url->path();
    }
    const std::optional<std::string> absolute = absolutePath(path, workingDirectory, linkTarget);
    return absolute ? FileURL::fromPath(*absolute) : std::nullopt;
}

}  // namespace stowpocket
