// SPDX-License-Identifier: MIT
#include "platform/linux/files/BookmarkSearch.h"

#include "platform/linux/files/Folders.h"
#include "platform/linux/files/PosixFileManager.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdlib>
#include <deque>
#include <limits>
#include <map>
#include <memory>
#include <set>
#include <unordered_map>

namespace stowpocket {
namespace {

/// How many levels below the parent of its own folder a moved file is looked for.
constexpr int depthAroundOldFolder = 2;

std::string joined(const std::string& folder, std::string_view name) {
    std::string path = folder == "/" ? std::string() : folder;
    return path.append("/").append(name);
}

/// Trash as freedesktop.org defines it: in the home folder, or at the top of a volume.
bool isInTrash(const std::string& path) {
    return path.find("/Trash/files/") != std::string::npos || path.find("/.Trash-") != std::string::npos ||
           path.find("/.Trash/") != std::string::npos;
}

/// Counts the entries that the search has looked at.
class Budget {
public:
    Budget(std::size_t entries, std::chrono::milliseconds time)
        : entriesLeft_(entries), deadline_(std::chrono::steady_clock::now() + time) {}

    [[nodiscard]] bool takeEntry() {
        constexpr std::size_t entriesPerLookAtClock = 64;
        if (entriesLeft_ == 0)
            return false;
        --entriesLeft_;
        if (taken_++ % entriesPerLookAtClock == 0 && std::chrono::steady_clock::now() >= deadline_)
            entriesLeft_ = 0;
        return entriesLeft_ > 0;
    }

private:
    std::size_t entriesLeft_;
    std::size_t taken_ = 0;
    std::chrono::steady_clock::time_point deadline_;
};

/// The entries of one folder, without mount points: even a look at a mount may hang.
class Folder {
public:
    Folder(std::string path, const std::set<std::string, std::less<>>& mountPoints)
        : path_(std::move(path)),
          mountPoints_(mountPoints),
          entries_(FileDescriptor(::open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))) {
        const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path_.c_str(), nullptr), &std::free);
        realPath_ = real ? real.get() : path_;
    }

    /// Returns null at the end and when the budget is spent.
    const dirent* next(Budget& budget) {
        while (const dirent* const entry = entries_.isOpen() ? entries_.next() : nullptr) {
            if (!budget.takeEntry())
                return nullptr;
            if (!mountPoints_.contains(joined(realPath_, entry->d_name)))
                return entry;
        }
        return nullptr;
    }
    [[nodiscard]] Sighting look(const dirent& entry, Detail detail = Detail::inode) const {
        return lookAt(entries_.folder(), entry.d_name, detail);
    }
    [[nodiscard]] std::string pathOf(const dirent& entry) const { return joined(path_, entry.d_name); }
    [[nodiscard]] bool isFolder(const dirent& entry) const {
        return entry.d_type == DT_DIR ||
               (entry.d_type == DT_UNKNOWN && look(entry).identity.type == FileType::folder);
    }

private:
    const std::string path_;
    std::string realPath_;
    const std::set<std::string, std::less<>>& mountPoints_;
    DirectoryStream entries_;
};

class Search {
public:
    Search(const std::vector<BookmarkRecord>& missing, const Mounts& mounts, const SearchLimits& limits)
        : missing_(missing),
          found_(missing.size()),
          limits_(limits),
          budget_(std::numeric_limits<std::size_t>::max(), limits.timeInOwnFolders) {
        for (const Mount& mount : mounts)
            mountPoints_.insert(mount.point);
        for (std::size_t index = 0; index < missing.size(); ++index) {
            wanted_.emplace(missing[index].identity.inode.inode, index);
            devices_.push_back(deviceAround(missing[index].url.parent().path()));
        }
    }

    std::vector<std::optional<std::string>> run(const std::vector<SearchRoot>& roots) {
        std::set<std::string> folders;
        for (const BookmarkRecord& record : missing_) {
            if (const std::optional<std::string> folder = presentFolder(record, 0))
                folders.insert(*folder);
        }
        for (const std::string& folder : folders)
            scan(folder, 0);
        for (std::size_t index = 0; index < missing_.size(); ++index) {
            if (!found_[index])
                ahead_.push_back({missing_[index].url.parent().parent().path(), depthAroundOldFolder});
        }
        ahead_.insert(ahead_.end(), roots.begin(), roots.end());
        budget_ = Budget(limits_.entries, limits_.time);
        searchAhead();
        return std::move(found_);
    }

private:
    /// The file system that holds a path, or held it before its last folders disappeared.
    static std::uint64_t deviceAround(std::string path) {
        for (;;) {
            const Sighting sighting = lookAt(AT_FDCWD, path.c_str());
            if (sighting.kind == Sighting::Kind::present || path == "/")
                return sighting.identity.device;
            path = parentFolder(path);
        }
    }

    /// The present path of the folder `level` steps above the folder of the file; level 0 is the folder itself.
    std::optional<std::string> presentFolder(const BookmarkRecord& record, std::size_t level) {
        if (level >= record.ancestors.size())
            return std::nullopt;
        FileURL recorded = record.url.parent();
        for (std::size_t step = 0; step < level; ++step)
            recorded = recorded.parent();
        const std::string path = recorded.path();
        const auto known = presentFolders_.find(path);
        if (known != presentFolders_.end())
            return known->second;
        const InodeIdentity& wanted = record.ancestors[level];
        std::optional<std::string> present;
        const Sighting sighting = lookAt(AT_FDCWD, path.c_str());
        if (sighting.kind == Sighting::Kind::present && sighting.identity.inode == wanted)
            present = path;
        else if (const std::optional<std::string> above = presentFolder(record, level + 1))
            present = folderIn(*above, wanted);
        return presentFolders_.emplace(path, present).first->second;
    }

    std::optional<std::string> folderIn(const std::string& above, const InodeIdentity& wanted) {
        Folder folder(above, mountPoints_);
        while (const dirent* const entry = folder.next(budget_)) {
            if (entry->d_ino != wanted.inode)
                continue;
            const Sighting sighting = folder.look(*entry);
            if (sighting.identity.type == FileType::folder && sighting.identity.inode == wanted)
                return folder.pathOf(*entry);
        }
        return std::nullopt;
    }

    void searchAhead() {
        std::set<std::pair<dev_t, ino_t>> visited;
        while (!ahead_.empty() && foundCount_ < missing_.size()) {
            const SearchRoot next = ahead_.front();
            ahead_.pop_front();
            struct stat status {};
            if (::stat(next.path.c_str(), &status) == 0 && visited.emplace(status.st_dev, status.st_ino).second)
                scan(next.path, next.depth);
        }
    }

    /// Compares the inode numbers that are listed with the names, and looks only at entries with a wanted number.
    void scan(const std::string& path, int depth) {
        Folder folder(path, mountPoints_);
        while (const dirent* const entry = folder.next(budget_)) {
            const auto [first, last] = wanted_.equal_range(entry->d_ino);
            for (auto candidate = first; candidate != last; ++candidate)
                compare(candidate->second, folder, *entry);
            if (depth > 0 && entry->d_name[0] != '.' && folder.isFolder(*entry))
                ahead_.push_back({folder.pathOf(*entry), depth - 1});
        }
    }

    void compare(std::size_t index, const Folder& folder, const dirent& entry) {
        if (found_[index])
            return;
        const Sighting sighting = folder.look(entry, detailFor(missing_[index].identity));
        std::string path = folder.pathOf(entry);
        if (sighting.kind != Sighting::Kind::present || sighting.identity.device != devices_[index] ||
            !isSameFile(missing_[index].identity, sighting.identity) || isInTrash(path))
            return;
        found_[index] = std::move(path);
        ++foundCount_;
    }

    const std::vector<BookmarkRecord>& missing_;
    std::set<std::string, std::less<>> mountPoints_;
    std::vector<std::optional<std::string>> found_;
    std::size_t foundCount_ = 0;
    const SearchLimits limits_;
    Budget budget_;
    std::unordered_multimap<std::uint64_t, std::size_t> wanted_;
    std::vector<std::uint64_t> devices_;
    std::map<std::string, std::optional<std::string>> presentFolders_;
    std::deque<SearchRoot> ahead_;
};

}  // namespace

std::vector<std::optional<std::string>> searchForFiles(const std::vector<BookmarkRecord>& missing,
                                                       const std::vector<SearchRoot>& roots, const Mounts& mounts,
                                                       const SearchLimits& limits) {
    return Search(missing, mounts, limits).run(roots);
}

}  // namespace stowpocket
