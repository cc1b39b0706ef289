// SPDX-License-Identifier: MIT
#include "presentation/UpdatePresentation.h"

#include "presentation/Texts.h"

#include <algorithm>

namespace stowpocket {
namespace {

constexpr auto unchanged = " Nothing has been changed.";
constexpr auto previousIsBack =
    "The new version did not start or did not keep running, so the one before it is back.";

std::string nameAndVersion(const UpdateStatus& status) {
    const AppcastItem& item = status.item;
    return status.programName + " " + (item.displayVersion.empty() ? item.version : item.displayVersion);
}

std::string failureText(UpdateFailure failure) {
    switch (failure) {
    case UpdateFailure::unreachable:
        return "The server could not be reached, or the connection broke off.";
    case UpdateFailure::unreadableList:
        return "The list of versions on the server could not be read.";
    case UpdateFailure::unsignedList:
        return "The list of versions on the server is not signed by the makers of this program, so it was not used.";
    case UpdateFailure::tooLarge:
        return "The server sent more than it should.";
    case UpdateFailure::wrongLength:
        return "The file on the server is not as large as it should be.";
    case UpdateFailure::badSignature:
        return "The file on the server is not signed by the makers of this program, so it was thrown away.";
    case UpdateFailure::notForThisMachine:
        return "The file on the server is no program for this computer.";
    case UpdateFailure::diskFull:
        return "There is not enough room on the disk.";
    case UpdateFailure::notWritable:
        return "The folder that the program is in cannot be changed by you.";
    case UpdateFailure::didNotStay:
        return previousIsBack;
    case UpdateFailure::other:
        break;
    }
    return "The update did not succeed.";
}

double doneOf(const UpdateStatus& status) {
    return status.item.length <= 0
               ? 0
               : std::clamp(static_cast<double>(status.received) / static_cast<double>(status.item.length), 0.0, 1.0);
}

UpdatePresentation offerOf(const UpdateStatus& status) {
    const bool isReady = status.state == UpdateState::ready;
    UpdatePresentation shown{.title =
                                 nameAndVersion(status) + (isReady ? " is ready to be installed" : " is available"),
                             .message = "You have version " + status.runningVersion + ".",
                             .notes = status.item.notes,
                             .buttons = {{"Skip This Version", UpdateChoice::skip}, {"Later", UpdateChoice::later}},
                             .onClose = UpdateChoice::later};
    if (status.canInstall) {
        shown.message += " Installing starts the program anew; your shelf stays as it is.";
        shown.buttons.push_back({"Install", UpdateChoice::install});
    } else if (!status.item.pageURL.empty()) {
        shown.message += " This copy cannot replace itself; the new one is on its download page.";
        shown.buttons.push_back({"Download Page", UpdateChoice::openPage});
    }
    return shown;
}

UpdatePresentation progressOf(const UpdateStatus& status) {
    const std::vector<UpdateButton> cancel{{"Cancel", UpdateChoice::cancel}};
    switch (status.state) {
    case UpdateState::checking:
        return {
            .title = "Looking for a new version", .isBusy = true, .buttons = cancel, .onClose = UpdateChoice::cancel};
    case UpdateState::downloading:
        return {.title = "Downloading " + nameAndVersion(status),
                .message = byteCountText(status.received) + " of " + byteCountText(status.item.length),
                .progress = doneOf(status),
                .buttons = cancel,
                .onClose = UpdateChoice::cancel};
    case UpdateState::verifying:
        return {.title = "Checking " + nameAndVersion(status),
                .progress = 1,
                .buttons = cancel,
                .onClose = UpdateChoice::cancel};
    default:
        return {.title = "Installing " + nameAndVersion(status), .isBusy = true};
    }
}

}  // namespace

UpdatePresentation presentationOf(const UpdateStatus& status) {
    const std::vector<UpdateButton> fine{{"OK", UpdateChoice::later}};
    switch (status.state) {
    case UpdateState::offered:
    case UpdateState::ready:
        return offerOf(status);
    case UpdateState::upToDate:
        return {.title = "You're up to date!",
                .message = status.programName + " " + status.runningVersion + " is the latest version.",
                .buttons = fine,
                .onClose = UpdateChoice::later};
    case UpdateState::failed:
        return {.title = status.item.version.empty() ? "New versions could not be looked for" : "The update failed",
                .message = failureText(status.failure.value_or(UpdateFailure::other)) +
                           (status.failure == UpdateFailure::didNotStay ? "" : unchanged),
                .buttons = fine,
                .onClose = UpdateChoice::later};
    default:
        return progressOf(status);
    }
}

}  // namespace stowpocket
