// SPDX-License-Identifier: MIT
#include "cli/ShelfCommands.h"

#include "app/AppDelegate.h"
#include "services/Preferences.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace stowpocket {
namespace {

std::optional<FileURL> fileNamed(const std::string& url) {
    return url.size() > maxNameLength ? std::nullopt : FileURL::parse(url);
}

/// Items on the shelf and items that are being prepared: both count towards the capacity.
std::int64_t occupied(const ShelfManager& shelf) {
    return static_cast<std::int64_t>(shelf.items().size()) + shelf.pendingAddCount();
}

/// The outcome for each URL when a shelf with `items` accepts the first `taken` files that it does not have.
std::vector<AddOutcome> outcomesOf(std::span<const std::optional<FileURL>> files, const std::vector<ShelfItem>& items,
                                   std::int64_t taken) {
    std::unordered_map<FileURL, AddOutcome> known;
    for (const ShelfItem& item : items)
        known.emplace(item.fileURL, AddOutcome::alreadyOnShelf);
    std::vector<AddOutcome> outcomes;
    for (const std::optional<FileURL>& file : files) {
        const auto seen = file ? known.find(*file) : known.end();
        if (!file) {
            outcomes.push_back(AddOutcome::malformed);
        } else if (seen != known.end()) {
            outcomes.push_back(seen->second);
        } else {
            outcomes.push_back(taken > 0 ? AddOutcome::added : AddOutcome::shelfFull);
            known.emplace(*file, taken-- > 0 ? AddOutcome::alreadyOnShelf : AddOutcome::shelfFull);
        }
    }
    return outcomes;
}

/// Finds items by id or URL, each item once.
class ItemFinder {
public:
    explicit ItemFinder(const std::vector<ShelfItem>& items) {
        for (const ShelfItem& item : items) {
            ids_.insert(item.id);
            idsByPath_[item.fileURL.path()].push_back(item.id);
        }
    }
    [[nodiscard]] std::vector<UUID> take(const std::string& name) {
        std::vector<UUID> found;
        if (const std::optional<UUID> id = UUID::parse(name))
            found.push_back(*id);
        else if (const std::optional<FileURL> file = fileNamed(name))
            found = std::exchange(idsByPath_[file->path()], {});
        std::erase_if(found, [this](const UUID& id) { return ids_.erase(id) == 0; });
        return found;
    }

private:
    std::unordered_set<UUID> ids_;
    std::unordered_map<std::string, std::vector<UUID>> idsByPath_;
};

bool isThere(const ShelfManager& shelf, const UUID& id) {
    const auto item = std::ranges::find(shelf.items(), id, &ShelfItem::id);
    return item != shelf.items().end() && item->isAvailable;
}

}  // namespace

ShelfCommands::ShelfCommands(AppDelegate& app, UseTokens useTokens)
    : app_(app),
      useTokens_(std::move(useTokens)),
      itemsChanged_(shelf().itemsChanged.connect([this](const ShelfChange&) { completeAdditions(); })) {}

ShelfManager& ShelfCommands::shelf() const {
    return app_.shelfViewModel().shelfManager();
}

void ShelfCommands::add(std::span<const std::string> urls, AddCompletion completion) {
    std::vector<std::optional<FileURL>> files;
    std::vector<FileURL> offered;
    for (const std::string& url : urls) {
        files.push_back(fileNamed(url));
        if (files.back())
            offered.push_back(*files.back());
    }
    const std::vector<ShelfItem> itemsBefore = shelf().items();
    const std::int64_t before = occupied(shelf());
    const std::uint64_t batchBefore = shelf().latestBatch();
    app_.shelfViewModel().addFileURLs(offered);
    std::vector<AddOutcome> outcomes = outcomesOf(files, itemsBefore, occupied(shelf()) - before);
    if (std::ranges::find(outcomes, AddOutcome::shelfFull) != outcomes.end())
        app_.showPopover(Animation::animated);
    auto complete = [this, outcomes = std::move(outcomes), completion = std::move(completion)] {
        completeWhenSaved(outcomes, completion);
    };
    if (shelf().latestBatch() == batchBefore)
        complete();
    else
        waiting_.push_back({shelf().latestBatch(), std::move(complete)});
}

void ShelfCommands::completeAdditions() {
    const auto arrived = std::stable_partition(waiting_.begin(), waiting_.end(),
                                               [this](const Waiting& each) { return shelf().isPending(each.batch); });
    std::vector<Waiting> complete(std::make_move_iterator(arrived), std::make_move_iterator(waiting_.end()));
    waiting_.erase(arrived, waiting_.end());
    for (const Waiting& addition : complete)
        addition.complete();
}

template <class Outcome>
void ShelfCommands::completeWhenSaved(std::vector<Outcome> outcomes, Completion<Outcome> completion) {
    shelf().preferences().whenSaved([outcomes = std::move(outcomes),
                                     completion = std::move(completion)](const std::optional<std::string>& problem) {
        completion(outcomes, problem);
    });
}

std::vector<StagedFile> ShelfCommands::list() const {
    std::vector<StagedFile> files;
    for (const ShelfItem& item : shelf().items())
        files.push_back({item.id.text(), item.fileURL, item.isAvailable, item.fileSize});
    return files;
}

void ShelfCommands::remove(std::span<const std::string> names, const RemoveCompletion& completion) {
    ItemFinder finder(shelf().items());
    std::vector<RemoveOutcome> outcomes;
    std::vector<UUID> all;
    for (const std::string& name : names) {
        const std::vector<UUID> ids = finder.take(name);
        all.insert(all.end(), ids.begin(), ids.end());
        if (!ids.empty())
            outcomes.push_back(RemoveOutcome::removed);
        else
            outcomes.push_back(UUID::parse(name) || fileNamed(name) ? RemoveOutcome::notOnShelf
                                                                    : RemoveOutcome::malformed);
    }
    app_.shelfViewModel().removeItems(all);
    completeWhenSaved(std::move(outcomes), completion);
}

std::vector<UseOutcome> ShelfCommands::use(ItemUse what, std::span<const std::string> names) {
    ItemFinder finder(shelf().items());
    std::vector<UUID> all;
    std::vector<UseOutcome> outcomes;
    for (const std::string& name : names) {
        const std::vector<UUID> ids = finder.take(name);
        all.insert(all.end(), ids.begin(), ids.end());
        if (ids.empty())
            outcomes.push_back(UUID::parse(name) || fileNamed(name) ? UseOutcome::notOnShelf : UseOutcome::malformed);
        else
            outcomes.push_back(isThere(shelf(), ids.front()) ? UseOutcome::done : UseOutcome::missing);
    }
    if (what == ItemUse::copy)
        app_.shelfViewModel().copyFiles(all);
    else
        app_.openItems(all);
    return outcomes;
}

void ShelfCommands::perform(ShelfAction action, const StartupTokens& tokens, const ActionCompletion& completion) {
    if (useTokens_ && tokens != StartupTokens())
        useTokens_(tokens);
    carryOut(action);
    if (action == ShelfAction::clear || action == ShelfAction::undo)
        shelf().preferences().whenSaved(completion);
    else
        completion(std::nullopt);
}

void ShelfCommands::carryOut(ShelfAction action) {
    switch (action) {
    case ShelfAction::clear:
        shelf().clear();
        return app_.shelfViewModel().setCapacityMessage(std::nullopt);
    case ShelfAction::undo:
        return shelf().undo();
    case ShelfAction::paste:
        return app_.paste();
    case ShelfAction::show:
        return app_.bringUpPopover();
    case ShelfAction::toggle:
        return app_.togglePopover();
    case ShelfAction::quickDrop:
        return app_.quickDrop();
    }
}

}  // namespace stowpocket
