// SPDX-License-Identifier: MIT
#include "platform/linux/drags/PromisedFileProvider.h"

#include "platform/linux/drags/X11DirectSaves.h"

#include <QDateTime>

#include <filesystem>

namespace stowpocket {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view promisedType = "public.data";

/// Taken away, with all that is inside, when the last who needs it lets go. Names that are not UTF-8 are beyond what
/// QTemporaryDir can remove.
class TemporaryFolder {
public:
    TemporaryFolder() {
        const std::optional<FileURL> temporaries = FileURL::fromPath(fs::temp_directory_path(failure_).native());
        if (temporaries)
            folder_ = ArrivalFolder::make(*temporaries);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        if (folder_)
            fs::remove_all(folder_->url().path(), failure_);
    }
    /// None when it could not be made.
    [[nodiscard]] std::optional<FileURL> url() const {
        return folder_ ? std::optional(folder_->url()) : std::nullopt;
    }

private:
    std::error_code failure_;
    std::optional<ArrivalFolder> folder_;
};

/// The one thing that arrived, or the folder of all that did, under a name that tells something.
std::optional<FileURL> thingOf(const ArrivalFolder& arrived) {
    const std::vector<FileURL> files = arrived.files();
    if (files.size() == 1)
        return files.front();
    const QString now = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh.mm.ss.zzz"));
    FileURL named = arrived.url().parent().appending("Files " + now.toStdString());
    std::error_code failure;
    fs::rename(arrived.url().path(), named.path(), failure);
    return failure ? std::nullopt : std::optional(std::move(named));
}

}  // namespace

bool PromisedFileProvider::hasItemConformingTo(std::string_view type) const {
    return type == promisedType || type == uniformType::item;
}

std::vector<std::string> PromisedFileProvider::registeredTypeIdentifiers() const {
    return {std::string(promisedType)};
}

void PromisedFileProvider::loadItem(std::string_view, std::function<void(std::optional<Bytes>)> completion) {
    completion(std::nullopt);
}

void PromisedFileProvider::loadFileRepresentation(std::string_view type,
                                                  std::function<void(std::optional<FileURL>)> completion) {
    const auto temporary = std::make_shared<TemporaryFolder>();
    if (!hasItemConformingTo(type) || !temporary->url())
        return completion(std::nullopt);
    saves_.save(*temporary->url(), [&dispatch = saves_.dispatch(), completion = std::move(completion),
                                    temporary](const std::optional<ArrivalFolder>& arrived) {
        dispatch.background(
            [completion, temporary, arrived] { completion(arrived ? thingOf(*arrived) : std::nullopt); });
    });
}

}  // namespace stowpocket
