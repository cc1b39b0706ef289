// SPDX-License-Identifier: MIT
#pragma once

class QUrl;

namespace stowpocket {

/// Whether `url` may be asked: over HTTPS, or over HTTP on this very machine.
[[nodiscard]] bool mayBeAsked(const QUrl& url);

/// Whether an answer may send on from one address to the other. Nobody on the way sends to a program of this machine.
[[nodiscard]] bool mayRedirect(const QUrl& from, const QUrl& to);

}  // namespace stowpocket
