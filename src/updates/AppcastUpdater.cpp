// SPDX-License-Identifier: MIT
#include "updates/AppcastUpdater.h"

#include "services/Dispatch.h"
#include "services/MainBundle.h"
#include "services/Preferences.h"

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

constexpr auto timeBetweenChecks = 24h;
/// How often to see whether a check is due. A single timer of a day would stop while the machine sleeps.
constexpr auto timeBetweenDueChecks = 1h;
/// At the start of a session the network has better uses, and a program that has run this long works.
constexpr auto timeToFirstCheck = 1min;
/// The icon is there by then.
constexpr auto timeToTellOfPreviousVersion = 1s;

std::string infoOf(const MainBundle& bundle, std::string_view key) {
    const std::string* const text = bundle.infoString(key);
    return text == nullptr ? std::string() : *text;
}

std::string runningVersionOf(const MainBundle& bundle) {
    const std::string version = infoOf(bundle, infoKey::bundleVersion);
    return version.empty() ? infoOf(bundle, infoKey::bundleShortVersionString) : version;
}

}  // namespace

AppcastUpdater::AppcastUpdater(AppcastUpdaterServices services) : services_(std::move(services)) {
    const MainBundle& bundle = services_.core.bundle;
    status_.programName = infoOf(bundle, infoKey::bundleName);
    status_.runningVersion = runningVersionOf(bundle);
    status_.canInstall = services_.ownsItsFile && !infoOf(bundle, infoKey::publicEDKey).empty();
    canCheck_ = !infoOf(bundle, infoKey::feedURL).empty() && !status_.runningVersion.empty();
    choices_ = services_.window.chosen().connect([this](UpdateChoice choice) { choose(choice); });
    scheduleChecks();
}

AppcastUpdater::~AppcastUpdater() {
    services_.transport.cancel();
    services_.window.close();
}

void AppcastUpdater::setState(UpdateState state) {
    status_.state = state;
    if (isShown_)
        services_.window.show(status_);
    // A second request during a check has no effect; in every other state it brings up the window.
    const bool can = !infoOf(services_.core.bundle, infoKey::feedURL).empty() && !status_.runningVersion.empty() &&
                     !(isShown_ && state == UpdateState::checking);
    if (can != canCheck_) {
        canCheck_ = can;
        canCheckChanged_.emit(can);
    }
}

/// Shows the progress that was hidden so far.
void AppcastUpdater::showProgress() {
    isShown_ = true;
    setState(status_.state);
    services_.window.bringToFront();
}

void AppcastUpdater::finish() {
    isShown_ = false;
    isInstallAsked_ = false;
    services_.window.close();
    setState(UpdateState::idle);
}

void AppcastUpdater::fail(UpdateFailure failure) {
    if (!isShown_)
        return finish();
    status_.failure = failure;
    setState(UpdateState::failed);
}

void AppcastUpdater::scheduleChecks() {
    if (!canCheck_)
        return;
    previousVersion_ =
        services_.core.dispatch.after(timeToTellOfPreviousVersion, [this] { tellOfPreviousVersion(); });
    firstCheck_ = services_.core.dispatch.after(timeToFirstCheck, [this] {
        forgetReplacedVersion();
        checkIfDue();
    });
    dueChecks_ = services_.core.dispatch.every(timeBetweenDueChecks, [this] { checkIfDue(); });
}

/// The newer version that was installed is not the one that runs: it is offered again only when the user asks.
void AppcastUpdater::tellOfPreviousVersion() {
    const std::string installed = services_.core.preferences.string(installedVersionKey);
    if (status_.state != UpdateState::idle || compareVersions(installed, status_.runningVersion) <= 0)
        return;
    services_.core.preferences.removeValue(installedVersionKey);
    services_.core.preferences.setValue(skippedVersionKey, installed);
    status_.item.version = installed;
    isShown_ = true;
    fail(UpdateFailure::didNotStay);
}

/// The file of the previous version is kept until this one has run for a while, in case this one is broken. It goes
/// also where a crash kept the installation from being noted.
void AppcastUpdater::forgetReplacedVersion() {
    services_.transport.removeReplaced();
    services_.core.preferences.removeValue(installedVersionKey);
}

void AppcastUpdater::checkIfDue() {
    if (status_.state == UpdateState::idle && isCheckDue())
        check();
}

bool AppcastUpdater::isCheckDue() const {
    const bool isSaid = services_.core.preferences.value(enableAutomaticChecksKey).has_value();
    if (isSaid && !services_.core.preferences.boolean(enableAutomaticChecksKey))
        return false;
    const std::optional<PropertyValue> last = services_.core.preferences.value(lastCheckTimeKey);
    const std::optional<Date> time = last ? last->date() : std::nullopt;
    const Date now = services_.core.clock.now();
    // A time in the future was stored while the clock was wrong.
    return !time || *time > now || now - *time >= timeBetweenChecks;
}

void AppcastUpdater::checkForUpdates() {
    if (!canCheck_)
        return;
    if (status_.state != UpdateState::idle)
        return showProgress();
    isShown_ = true;
    check();
    services_.window.bringToFront();
}

void AppcastUpdater::check() {
    status_.item = {};
    status_.failure.reset();
    status_.received = 0;
    setState(UpdateState::checking);
    const MainBundle& bundle = services_.core.bundle;
    services_.transport.readList(infoOf(bundle, infoKey::feedURL), infoOf(bundle, infoKey::publicEDKey),
                                 [this](auto answer) {
                                     if (const UpdateFailure* const failure = std::get_if<UpdateFailure>(&answer))
                                         fail(*failure);
                                     else
                                         listArrived(std::get<0>(answer));
                                 });
}

void AppcastUpdater::listArrived(const std::vector<AppcastItem>& items) {
    services_.core.preferences.setValue(lastCheckTimeKey, services_.core.clock.now());
    // A user who checks for updates sees a skipped version again.
    const std::string skipped = isShown_ ? std::string() : services_.core.preferences.string(skippedVersionKey);
    const AppcastItem* const item = selectUpdate(items, services_.system, status_.runningVersion, skipped);
    if (item == nullptr)
        return isShown_ ? setState(UpdateState::upToDate) : finish();
    status_.item = *item;
    if (!isShown_ && downloadsAutomatically_ && status_.canInstall)
        download();
    else
        offer();
}

void AppcastUpdater::offer() {
    isShown_ = true;
    setState(UpdateState::offered);
    if (!status_.item.notes.empty() || status_.item.notesURL.empty())
        return;
    services_.transport.readNotes(status_.item.notesURL, [this](const std::string& text) {
        status_.item.notes = text;
        setState(status_.state);
    });
}

void AppcastUpdater::download() {
    setState(UpdateState::downloading);
    services_.transport.download(
        status_.item, infoOf(services_.core.bundle, infoKey::publicEDKey),
        [this](std::int64_t received) {
            status_.received = received;
            setState(received < status_.item.length ? UpdateState::downloading : UpdateState::verifying);
        },
        [this](std::optional<UpdateFailure> failure) { failure ? fail(*failure) : downloaded(); });
}

void AppcastUpdater::downloaded() {
    if (isInstallAsked_)
        return install();
    isShown_ = true;
    setState(UpdateState::ready);
}

void AppcastUpdater::install() {
    setState(UpdateState::installing);
    services_.transport.install(status_.item, infoOf(services_.core.bundle, infoKey::publicEDKey),
                                [this](std::optional<UpdateFailure> failure) {
                                    if (failure)
                                        return fail(*failure);
                                    services_.core.preferences.setValue(installedVersionKey, status_.item.version);
                                    setState(UpdateState::installed);
                                    services_.restart();
                                });
}

void AppcastUpdater::choose(UpdateChoice choice) {
    const bool isWaiting = status_.state == UpdateState::offered || status_.state == UpdateState::ready;
    switch (choice) {
    case UpdateChoice::install:
        if (!isWaiting || !status_.canInstall)
            return;
        services_.transport.cancel();  // notes that are still on their way
        isInstallAsked_ = true;
        return status_.state == UpdateState::ready ? install() : download();
    case UpdateChoice::openPage:
        services_.openPage(status_.item.pageURL);
        break;
    case UpdateChoice::skip:
        services_.core.preferences.setValue(skippedVersionKey, status_.item.version);
        break;
    case UpdateChoice::later:
    case UpdateChoice::cancel:
        break;
    }
    if (status_.state == UpdateState::installing || status_.state == UpdateState::installed)
        return;  // too late to turn back, and soon over
    services_.transport.cancel();
    if (choice == UpdateChoice::skip || choice == UpdateChoice::cancel)
        services_.transport.discardDownload();
    finish();
}

}  // namespace stowpocket
