// SPDX-License-Identifier: MIT
#include "platform/linux/updates/UpdateHelperProtocol.h"

#include <QUrl>

namespace stowpocket {
namespace {

bool isLoopback(const QUrl& url) {
    const QString host = url.host();
    return host == QLatin1String("127.0.0.1") || host == QLatin1String("::1") || host == QLatin1String("localhost");
}

bool isPlainLoopback(const QUrl& url) {
    return url.scheme() == QLatin1String("http") && isLoopback(url);
}

}  // namespace

bool mayBeAsked(const QUrl& url) {
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == QLatin1String("https") || isPlainLoopback(url));
}

bool mayRedirect(const QUrl& from, const QUrl& to) {
    return mayBeAsked(to) && (isLoopback(from) || !isLoopback(to));
}

}  // namespace stowpocket
