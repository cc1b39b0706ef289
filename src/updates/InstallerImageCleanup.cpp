// SPDX-License-Identifier: MIT
#include "updates/InstallerImageCleanup.h"

#include "services/Dispatch.h"
#include "services/Files.h"
#include "services/OtherPrograms.h"

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// Long enough for the desktop to settle after the first start of a fresh copy.
constexpr auto pauseAfterLaunch = 8s;

struct InstallerImage {
    std::string mountPoint;
    std::string imagePath;
};

const PropertyValue::Array* arrayUnder(const PropertyValue& dictionary, std::string_view key) {
    const PropertyValue::Dictionary* const entries = dictionary.dictionary();
    const PropertyValue* const value = entries == nullptr ? nullptr : find(*entries, key);
    return value == nullptr ? nullptr : value->array();
}

const std::string* stringUnder(const PropertyValue& dictionary, std::string_view key) {
    const PropertyValue::Dictionary* const entries = dictionary.dictionary();
    const PropertyValue* const value = entries == nullptr ? nullptr : find(*entries, key);
    return value == nullptr ? nullptr : value->string();
}

bool isInApplicationsFolder(const FileURL& bundle, const std::optional<FileURL>& home) {
    const std::string path = bundle.path();
    return path.starts_with("/Applications") || (home && path.starts_with(home->appending("Applications").path()));
}

/// The mount point of `image` that contains a file with that name; null if there is none.
const std::string* mountPointWith(const std::string& bundleName, const PropertyValue& image, FileManager& files) {
    const PropertyValue::Array* const entities = arrayUnder(image, "system-entities");
    if (entities == nullptr)
        return nullptr;
    for (const PropertyValue& entity : *entities) {
        const std::string* const mountPoint = stringUnder(entity, "mount-point");
        if (mountPoint == nullptr)
            continue;
        const std::optional<FileURL> copy = FileURL::fromPath(*mountPoint + "/" + bundleName);
        if (copy && files.fileExists(*copy))
            return mountPoint;
    }
    return nullptr;
}

std::optional<InstallerImage> findInstallerImage(const InstallerImageServices& services,
                                                 const std::string& bundleName) {
    const std::optional<Bytes> output = services.childProcess.run(services.imageTool, {"info", "-plist"});
    const std::optional<PropertyValue> info = output ? services.propertyLists.parse(*output) : std::nullopt;
    const PropertyValue::Array* const images = info ? arrayUnder(*info, "images") : nullptr;
    if (images == nullptr)
        return std::nullopt;
    for (const PropertyValue& image : *images) {
        const std::string* const imagePath = stringUnder(image, "image-path");
        if (imagePath == nullptr)
            continue;
        if (const std::string* const mountPoint = mountPointWith(bundleName, image, services.core.files))
            return InstallerImage{*mountPoint, *imagePath};
    }
    return std::nullopt;
}

void putAway(const InstallerImageServices& services, const InstallerImage& image) {
    if (!services.childProcess.run(services.imageTool, {"detach", image.mountPoint, "-quiet"}))
        return;
    if (const std::optional<FileURL> file = FileURL::fromPath(image.imagePath))
        static_cast<void>(services.trash.trashItem(*file));
}

}  // namespace

InstallerImageCleanup::InstallerImageCleanup(const InstallerImageServices& services, const FileURL& bundle,
                                             const std::optional<FileURL>& home)
    : services_(services), bundle_(bundle), home_(home) {}

InstallerImageCleanup::~InstallerImageCleanup() = default;

void InstallerImageCleanup::cleanUp() {
    if (!isInApplicationsFolder(bundle_, home_))
        return;
    pending_ =
        services_.core.dispatch.after(pauseAfterLaunch, [services = services_, name = bundle_.lastPathComponent()] {
            services.core.dispatch.whenIdle([services, name] {
                if (const std::optional<InstallerImage> image = findInstallerImage(services, name))
                    putAway(services, *image);
            });
        });
}

}  // namespace stowpocket
