// SPDX-License-Identifier: MIT
#include "updates/UpdaterController.h"

#include "foundation/Text.h"
#include "services/Dispatch.h"
#include "services/MainBundle.h"
#include "services/Preferences.h"
#include "services/UpdateFramework.h"
#include "services/Windows.h"

namespace stowpocket {
namespace {

constexpr int httpOk = 200;

/// Whether the text of a feed opens an RSS item, with attributes or without. A body that is not UTF-8 has none.
bool hasFeedItem(const Bytes& body) {
    const std::string text(body.begin(), body.end());
    return validUtf8(text) == text &&
           (text.find("<item>") != std::string::npos || text.find("<item ") != std::string::npos);
}

bool listsAVersion(const std::optional<FeedResponse>& response) {
    return response && response->statusCode == httpOk && hasFeedItem(response->body);
}

std::string infoOr(const MainBundle& bundle, std::string_view key, const char* otherwise) {
    const std::string* const text = bundle.infoString(key);
    return text == nullptr ? otherwise : *text;
}

}  // namespace

std::shared_ptr<UpdaterController> UpdaterController::make(const UpdaterServices& services) {
    return std::shared_ptr<UpdaterController>(new UpdaterController(services));
}

UpdaterController::UpdaterController(const UpdaterServices& services) : services_(services) {
    PropertyValue::Dictionary defaults;
    defaults.emplace(automaticallyUpdateKey, true);
    services_.core.preferences.registerDefaults(std::move(defaults));
    framework_ = services_.startUpdateFramework();
    setAutomaticallyDownloadsUpdates(services_.core.preferences.boolean(automaticallyUpdateKey));
    observation_ = framework_->canCheckForUpdatesChanged().connect([this](bool can) { setCanCheckForUpdates(can); });
    setCanCheckForUpdates(framework_->canCheckForUpdates());
}

UpdaterController::~UpdaterController() = default;

void UpdaterController::setAutomaticallyDownloadsUpdates(bool automatically) {
    const bool isChange = automatically != automaticallyDownloadsUpdates_;
    automaticallyDownloadsUpdates_ = automatically;
    framework_->setAutomaticallyDownloadsUpdates(automatically);
    services_.core.preferences.setValue(automaticallyUpdateKey, automatically);
    if (isChange)
        changed_.emit();
}

void UpdaterController::setCanCheckForUpdates(bool can) {
    if (can == canCheckForUpdates_)
        return;
    canCheckForUpdates_ = can;
    changed_.emit();
}

void UpdaterController::checkForUpdates() {
    const std::string* const feed = services_.core.bundle.infoString(infoKey::feedURL);
    if (feed == nullptr || !services_.feedSession.isValid(*feed)) {
        showUpToDateAlert();
        return;
    }
    services_.feedSession.dataTask(*feed,
                                   [weak = weak_from_this(), &dispatch = services_.core.dispatch](auto response) {
                                       dispatch.async([weak, response = std::move(response)] {
                                           if (const auto self = weak.lock())
                                               self->feedArrived(response);
                                       });
                                   });
}

void UpdaterController::feedArrived(const std::optional<FeedResponse>& response) {
    if (listsAVersion(response))
        framework_->checkForUpdates();
    else
        showUpToDateAlert();
}

void UpdaterController::showUpToDateAlert() {
    const MainBundle& bundle = services_.core.bundle;
    services_.alerts.runModal({.messageText = "You're up to date!",
                               .informativeText = infoOr(bundle, infoKey::bundleName, "This app") + " " +
                                                  infoOr(bundle, infoKey::bundleShortVersionString, "1.0") +
                                                  " is the latest version.",
                               .buttonTitle = "OK"});
}

}  // namespace stowpocket
