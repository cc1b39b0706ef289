// SPDX-License-Identifier: MIT
#include "platform/linux/drags/PromisedFiles.h"

#include <QDateTime>

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>

namespace stowpocket {
namespace {

namespace fs = std::filesystem;

bool isEmptyFile(const fs::path& path) {
    std::error_code unreadable;
    return fs::is_regular_file(fs::symlink_status(path, unreadable)) && fs::file_size(path, unreadable) == 0;
}

constexpr std::string_view promisedType = "public.data";

/// Removed with everything inside when the last user lets go of it. QTemporaryDir cannot remove names that are not
/// UTF-8.
class TemporaryFolder {
public:
    TemporaryFolder() {
        const std::optional<FileURL> temporaries = FileURL::fromPath(fs::temp_directory_path(failure_).native());
        if (temporaries)
            folder_ = DropFolder::make(*temporaries);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        if (folder_)
            fs::remove_all(folder_->url().path(), failure_);
    }
    /// Returns nothing when the folder could not be made.
    [[nodiscard]] std::optional<FileURL> url() const {
        return folder_ ? std::optional(folder_->url()) : std::nullopt;
    }

private:
    std::error_code failure_;
    std::optional<DropFolder> folder_;
};

/// The single file or folder that arrived, or else the folder of everything, renamed to something meaningful.
std::optional<FileURL> thingOf(const DropFolder& arrived) {
    const std::vector<FileURL> files = arrived.files();
    if (files.size() == 1)
        return files.front();
    const QString now = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh.mm.ss.zzz"));
    FileURL named = arrived.url().parent().appending("Files " + now.toStdString());
    std::error_code failure;
    fs::rename(arrived.url().path(), named.path(), failure);
    return failure ? std::nullopt : std::optional(std::move(named));
}

class SavedPromiseReceiver : public FilePromiseReceiver {
public:
    explicit SavedPromiseReceiver(PromiseSaving save) : save_(std::move(save)) {}

    void receivePromisedFiles(const FileURL& destination, Reader reader) override {
        save_(destination, [reader = std::move(reader)](const std::optional<DropFolder>& arrived) {
            if (!arrived)
                return reader(std::nullopt);
            for (const FileURL& file : arrived->files())
                reader(file);
        });
    }

private:
    const PromiseSaving save_;
};

class SavedPromiseProvider : public ItemProvider {
public:
    SavedPromiseProvider(PromiseSaving save, Dispatch& dispatch) : save_(std::move(save)), dispatch_(dispatch) {}

    [[nodiscard]] bool hasItemConformingTo(std::string_view type) const override {
        return type == promisedType || type == uniformType::item;
    }
    [[nodiscard]] std::vector<std::string> registeredTypeIdentifiers() const override {
        return {std::string(promisedType)};
    }
    /// Completes with nothing, because a promise has no bytes before it is a file.
    void loadItem(std::string_view, std::function<void(std::optional<Bytes>)> completion) override {
        completion(std::nullopt);
    }
    void loadFileRepresentation(std::string_view type,
                                std::function<void(std::optional<FileURL>)> completion) override {
        const auto temporary = std::make_shared<TemporaryFolder>();
        if (!hasItemConformingTo(type) || !temporary->url())
            return completion(std::nullopt);
        save_(*temporary->url(), [&dispatch = dispatch_, completion = std::move(completion),
                                  temporary](const std::optional<DropFolder>& arrived) {
            dispatch.background(
                [completion, temporary, arrived] { completion(arrived ? thingOf(*arrived) : std::nullopt); });
        });
    }

private:
    const PromiseSaving save_;
    Dispatch& dispatch_;
};

}  // namespace

std::optional<DropFolder> DropFolder::make(const FileURL& parent) {
    std::string path = parent.path() + "/drop-XXXXXX";
    if (::mkdtemp(path.data()) == nullptr)
        return std::nullopt;
    std::optional<FileURL> url = FileURL::fromPath(path);
    return url ? std::optional(DropFolder(std::move(*url))) : std::nullopt;
}

std::vector<FileURL> DropFolder::files() const {
    std::vector<FileURL> files;
    std::error_code failure;
    for (fs::directory_iterator entry(url_.path(), failure), end; !failure && entry != end;
         entry.increment(failure)) {
        std::error_code unreadable;
        const fs::file_status status = entry->symlink_status(unreadable);
        if (fs::is_regular_file(status) || fs::is_directory(status))
            files.push_back(url_.appending(entry->path().filename().native()));
    }
    std::ranges::sort(files);
    return files;
}

bool DropFolder::hasContent() const {
    return std::ranges::any_of(files(), [](const FileURL& file) { return !isEmptyFile(file.path()); });
}

std::uint64_t DropFolder::size() const {
    std::uint64_t size = 0;
    std::error_code failure;
    for (fs::recursive_directory_iterator entry(url_.path(), failure), end; !failure && entry != end;
         entry.increment(failure)) {
        std::error_code unreadable;
        if (!fs::is_regular_file(entry->symlink_status(unreadable)))
            continue;
        const std::uintmax_t bytes = entry->file_size(unreadable);
        size += unreadable ? 0 : bytes;
    }
    return size;
}

void DropFolder::discardIfEmpty() const {
    for (const FileURL& file : files()) {
        if (isEmptyFile(file.path()))
            ::unlink(file.path().c_str());
    }
    ::rmdir(url_.path().c_str());
}

FolderWatch::FolderWatch(const FileURL& folder, std::function<void()> written)
    : events_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)), written_(std::move(written)) {
    if (!events_.isOpen() ||
        ::inotify_add_watch(events_.get(), folder.path().c_str(), IN_CLOSE_WRITE | IN_MOVED_TO) < 0)
        return;
    notifier_ = std::make_unique<QSocketNotifier>(events_.get(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] { takeEvents(); });
}

void FolderWatch::takeEvents() {
    alignas(inotify_event) std::array<char, 4096> ignored{};
    while (::read(events_.get(), ignored.data(), ignored.size()) > 0) {
    }
    written_();
}

std::shared_ptr<FilePromiseReceiver> promiseReceiver(PromiseSaving save) {
    return std::make_shared<SavedPromiseReceiver>(std::move(save));
}

std::shared_ptr<ItemProvider> promiseProvider(PromiseSaving save, Dispatch& dispatch) {
    return std::make_shared<SavedPromiseProvider>(std::move(save), dispatch);
}

}  // namespace stowpocket
