// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"

#include "cli/CommandText.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace stowpocket {
namespace {

enum class Operands { none, any, some };

struct VerbRule {
    std::string_view word;
    Verb verb;
    Operands operands;
};

constexpr VerbRule openRule{"", Verb::open, Operands::any};
constexpr std::array<VerbRule, 7> verbRules{{{"add", Verb::add, Operands::some},
                                             {"list", Verb::list, Operands::none},
                                             {"remove", Verb::remove, Operands::some},
                                             {"clear", Verb::clear, Operands::none},
                                             {"show", Verb::show, Operands::none},
                                             {"toggle", Verb::toggle, Operands::none},
                                             {"quick-drop", Verb::quickDrop, Operands::none}}};

const VerbRule& ruleFor(std::string_view word) {
    const auto rule = std::ranges::find(verbRules, word, &VerbRule::word);
    return rule == verbRules.end() ? openRule : *rule;
}

std::string named(const VerbRule& rule) {
    return rule.verb == Verb::open ? std::string() : std::string(rule.word) + ": ";
}

/// True when `option` was understood.
bool applyOption(std::string_view option, Command& command) {
    if (option == "--help" || option == "-h")
        command.verb = Verb::help;
    else if (option == "--version")
        command.verb = Verb::version;
    else if (option == "--json" && command.verb == Verb::list)
        command.asJSON = true;
    else
        return false;
    return true;
}

}  // namespace

std::variant<Command, UsageError> parsedCommandLine(std::span<const std::string> arguments) {
    const VerbRule& rule = arguments.empty() ? openRule : ruleFor(arguments.front());
    if (rule.verb != Verb::open)
        arguments = arguments.subspan(1);
    Command command{.verb = rule.verb};
    bool optionsEnded = false;
    for (const std::string& argument : arguments) {
        if (optionsEnded || argument == "-" || !argument.starts_with('-'))
            command.operands.push_back(argument);
        else if (argument == "--")
            optionsEnded = true;
        else if (!applyOption(argument, command))
            return UsageError{named(rule) + "unknown option " + printable(argument)};
        if (command.verb == Verb::help || command.verb == Verb::version)
            return Command{.verb = command.verb};
    }
    if (rule.operands == Operands::some && command.operands.empty())
        return UsageError{named(rule) + "which files?"};
    if (rule.operands == Operands::none && !command.operands.empty())
        return UsageError{named(rule) + "takes no files"};
    return command;
}

}  // namespace stowpocket
