// SPDX-License-Identifier: MIT
#pragma once

#include "services/UpdateFramework.h"
#include "updates/UpdateStatus.h"

#include <QUrl>

#include <optional>

namespace stowpocket {

/// The interface between the program and `stowpocket-updater`, which is started for each of these jobs with the
/// arguments named here and ends with `updaterExitCode`.
namespace updaterCommand {
/// URL. Prints the HTTP status, a line feed and the body.
inline constexpr auto fetch = "fetch";
/// URL of a list of releases, public key or nothing. Prints its items as `encodedItems` writes them.
inline constexpr auto list = "list";
/// URL of a page. Prints its text.
inline constexpr auto notes = "notes";
/// URL, length, signature, public key, the program's file. Prints the number of bytes received, one line each time.
inline constexpr auto download = "download";
/// Length, signature, public key, the program's file.
inline constexpr auto install = "install";
/// The program's file.
inline constexpr auto discardDownload = "discard-download";
inline constexpr auto removeReplaced = "remove-replaced";
}  // namespace updaterCommand

namespace detail {
constexpr int firstFailureCode = 10;

[[nodiscard]] inline bool isLoopback(const QUrl& url) {
    const QString host = url.host();
    return host == QLatin1String("127.0.0.1") || host == QLatin1String("::1") || host == QLatin1String("localhost");
}
}  // namespace detail

[[nodiscard]] constexpr int updaterExitCode(std::optional<UpdateFailure> failure) {
    return failure ? detail::firstFailureCode + static_cast<int>(*failure) : 0;
}

/// None for success. An exit code that is no failure is `other`: the process was killed, or could not be started.
[[nodiscard]] constexpr std::optional<UpdateFailure> failureOfExitCode(int code) {
    if (code == 0)
        return std::nullopt;
    const int index = code - detail::firstFailureCode;
    return index >= 0 && index <= static_cast<int>(UpdateFailure::other) ? static_cast<UpdateFailure>(index)
                                                                         : UpdateFailure::other;
}

/// Whether `url` may be requested: over HTTPS, or over HTTP on this machine only.
[[nodiscard]] inline bool mayBeAsked(const QUrl& url) {
    const bool isPlainLoopback = url.scheme() == QLatin1String("http") && detail::isLoopback(url);
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == QLatin1String("https") || isPlainLoopback);
}

/// Whether an answer may redirect from one address to the other. Nobody on the network may redirect to a program on
/// this machine.
[[nodiscard]] inline bool mayRedirect(const QUrl& from, const QUrl& to) {
    return mayBeAsked(to) && (detail::isLoopback(from) || !detail::isLoopback(to));
}

}  // namespace stowpocket
