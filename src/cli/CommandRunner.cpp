// SPDX-License-Identifier: MIT
#include "cli/CommandRunner.h"

#include "cli/CommandText.h"
#include "foundation/UUID.h"
#include "services/RunningShelf.h"

#include <algorithm>
#include <span>

namespace stowpocket {
namespace {

void refuse(CommandResult& result, std::string_view name, std::string_view reason) {
    if (result.code == ExitCode::done)
        result.code = ExitCode::partlyDone;
    result.err.append("stowpocket: ").append(printable(name)).append(": ").append(reason).append("\n");
}

CommandResult failed(CommandResult result, const RunningShelf& shelf) {
    result.code = shelf.runsElsewhere() ? ExitCode::runsElsewhere : ExitCode::unreachable;
    result.err += "stowpocket: " + printable(shelf.problem()) + '\n';
    return result;
}

void report(CommandResult& result, const FileURL& file, AddOutcome outcome) {
    const std::string path = file.path();
    switch (outcome) {
    case AddOutcome::added:
        result.out += "added: " + printable(path) + '\n';
        return;
    case AddOutcome::alreadyOnShelf:
        result.out += "already on the shelf: " + printable(path) + '\n';
        return;
    case AddOutcome::shelfFull:
        return refuse(result, path, "not added, the shelf is full");
    case AddOutcome::malformed:
        return refuse(result, path, "not added, the name was not understood");
    }
}

void report(CommandResult& result, const std::string& operand, RemoveOutcome outcome) {
    if (outcome == RemoveOutcome::removed)
        result.out += "removed: " + printable(operand) + '\n';
    else
        refuse(result, operand, "not on the shelf");
}

void report(CommandResult& result, const std::string& operand, UseOutcome outcome, ItemUse what) {
    switch (outcome) {
    case UseOutcome::done:
        result.out += (what == ItemUse::copy ? "copied: " : "opened: ") + printable(operand) + '\n';
        return;
    case UseOutcome::missing:
        return refuse(result, operand, "the file is missing");
    case UseOutcome::notOnShelf:
    case UseOutcome::malformed:
        return refuse(result, operand, "not on the shelf");
    }
}

void noteSaving(CommandResult& result, const RunningShelf& shelf) {
    if (shelf.saveProblem().empty() || result.code == ExitCode::notSaved)
        return;
    result.code = ExitCode::notSaved;
    result.err += "stowpocket: not saved yet: " + printable(shelf.saveProblem()) + '\n';
}

/// Calls `request` with parts of `all` that fit into one request, and reports the outcome for each element of
/// `named`, which are the same names as the user wrote them. False if a part had no response.
template <class Element, class Named, class Request>
bool requestInParts(std::span<const Element> all, std::span<const Named> named, CommandResult& result,
                    const RunningShelf& shelf, const Request& request) {
    while (!all.empty()) {
        const std::size_t count = std::min(all.size(), maxFilesPerRequest);
        const auto outcomes = request(all.first(count));
        if (!outcomes)
            return false;
        for (std::size_t at = 0; at < std::min(count, outcomes->size()); ++at)
            report(result, named[at], (*outcomes)[at]);
        noteSaving(result, shelf);
        all = all.subspan(count);
        named = named.subspan(count);
    }
    return true;
}

CommandResult runAdd(const Command& command, const CommandEnvironment& environment, RunningShelf& shelf) {
    CommandResult result;
    const std::vector<FileURL> files = filesToAdd(command, environment, result);
    if (files.empty() && command.verb == Verb::add)
        return result;
    if (!shelf.reach(StartProgram::ifNeeded))
        return failed(std::move(result), shelf);
    const bool added = requestInParts<FileURL, FileURL>(
        files, files, result, shelf, [&](std::span<const FileURL> part) { return shelf.add(part); });
    if (!added || (command.verb == Verb::start && !shelf.perform(ShelfAction::show)))
        return failed(std::move(result), shelf);
    return result;
}

/// The operands as the shelf knows them, ids or URLs, and as they were typed. Each other operand adds a line to
/// `result`.
struct ItemNames {
    std::vector<std::string> names;
    std::vector<std::string> operands;
};

ItemNames itemNames(const Command& command, const CommandEnvironment& environment, CommandResult& result) {
    ItemNames items;
    for (const std::string& operand : command.operands) {
        std::optional<std::string> name;
        if (UUID::parse(operand))
            name = operand;
        else if (const auto file = fileOfArgument(operand, environment.workingDirectory, environment.localHost,
                                                  environment.linkTarget))
            name = file->string();
        if (!name) {
            refuse(result, operand, "not a file of this machine");
            continue;
        }
        items.names.push_back(std::move(*name));
        items.operands.push_back(operand);
    }
    return items;
}

CommandResult runRemove(const Command& command, const CommandEnvironment& environment, RunningShelf& shelf) {
    CommandResult result;
    const ItemNames items = itemNames(command, environment, result);
    const bool removed = shelf.reach(StartProgram::never) &&
                         requestInParts<std::string, std::string>(
                             items.names, items.operands, result, shelf,
                             [&](std::span<const std::string> part) { return shelf.remove(part); });
    return removed ? result : failed(std::move(result), shelf);
}

/// Without operands it is for everything on the shelf.
CommandResult runUse(ItemUse what, const Command& command, const CommandEnvironment& environment,
                     RunningShelf& shelf) {
    CommandResult result;
    ItemNames items = itemNames(command, environment, result);
    if (!shelf.reach(StartProgram::never))
        return failed(std::move(result), shelf);
    if (command.operands.empty()) {
        const std::optional<std::vector<StagedFile>> files = shelf.list();
        if (!files)
            return failed(std::move(result), shelf);
        for (const StagedFile& file : *files) {
            items.names.push_back(file.id);
            items.operands.push_back(file.fileURL.path());
        }
    }
    if (items.names.empty())
        return result;
    const std::optional<std::vector<UseOutcome>> outcomes = shelf.use(what, items.names);
    if (!outcomes)
        return failed(std::move(result), shelf);
    for (std::size_t at = 0; at < std::min(outcomes->size(), items.operands.size()); ++at)
        report(result, items.operands[at], (*outcomes)[at], what);
    return result;
}

CommandResult runList(const Command& command, RunningShelf& shelf) {
    CommandResult result;
    if (!shelf.reach(StartProgram::never))
        return failed(std::move(result), shelf);
    const std::optional<std::vector<StagedFile>> files = shelf.list();
    if (!files)
        return failed(std::move(result), shelf);
    result.out = command.asJSON ? listJSON(*files)
                                : listText(*files, command.listFormat, command.listEnd).value_or(std::string());
    return result;
}

CommandResult runAction(ShelfAction action, StartProgram start, RunningShelf& shelf) {
    CommandResult result;
    if (!shelf.reach(start) || !shelf.perform(action))
        return failed(std::move(result), shelf);
    noteSaving(result, shelf);
    return result;
}

}  // namespace

std::vector<FileURL> filesToAdd(const Command& command, const CommandEnvironment& environment,
                                CommandResult& result) {
    std::vector<FileURL> files;
    for (const std::string& operand : command.operands) {
        std::optional<FileURL> file =
            fileOfArgument(operand, environment.workingDirectory, environment.localHost, environment.linkTarget);
        if (!file)
            refuse(result, operand, "not a file of this machine");
        else if (!environment.fileExists(*file))
            refuse(result, operand, "no such file, or it may not be looked at");
        else
            files.push_back(std::move(*file));
    }
    return files;
}

CommandResult usageErrorResult(const std::string& message) {
    return {.code = ExitCode::usageError,
            .err = "stowpocket: " + message + "\nTry 'stowpocket --help' for more information.\n"};
}

CommandResult runCommand(const Command& command, const CommandEnvironment& environment, RunningShelf& shelf) {
    switch (command.verb) {
    case Verb::start:
    case Verb::add:
        return runAdd(command, environment, shelf);
    case Verb::list:
        return runList(command, shelf);
    case Verb::remove:
        return runRemove(command, environment, shelf);
    case Verb::clear:
        return runAction(ShelfAction::clear, StartProgram::never, shelf);
    case Verb::undo:
        return runAction(ShelfAction::undo, StartProgram::never, shelf);
    case Verb::copy:
        return runUse(ItemUse::copy, command, environment, shelf);
    case Verb::paste:
        return runAction(ShelfAction::paste, StartProgram::ifNeeded, shelf);
    case Verb::open:
        return runUse(ItemUse::open, command, environment, shelf);
    case Verb::show:
        return runAction(ShelfAction::show, StartProgram::ifNeeded, shelf);
    case Verb::toggle:
        return runAction(ShelfAction::toggle, StartProgram::ifNeeded, shelf);
    case Verb::quickDrop:
        return runAction(ShelfAction::quickDrop, StartProgram::ifNeeded, shelf);
    case Verb::help:
        return {.out = std::string(helpText())};
    case Verb::version:
        return {.out = "stowpocket " + environment.version + '\n'};
    }
    return {};
}

}  // namespace stowpocket
