// SPDX-License-Identifier: MIT
#include "platform/linux/updates/HttpGet.h"

#include "platform/linux/updates/UpdateHelperProtocol.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QTimer>

#include <algorithm>
#include <array>
#include <memory>

namespace stowpocket {
namespace {

constexpr int maxRedirects = 5;
constexpr qint64 readBufferSize = qint64{1} << 18u;

QNetworkRequest requestFor(const QUrl& url, const HttpLimits& limits) {
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::UserVerifiedRedirectPolicy);
    request.setMaximumRedirectsAllowed(maxRedirects);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    // Compressed data could expand without end.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("stowpocket"));
    request.setTransferTimeout(static_cast<int>(limits.silence.count()));
    return request;
}

int statusOf(const QNetworkReply& reply) {
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

/// Whether a status is final. The status of a redirection may remain if the redirections lead nowhere.
bool isFinal(int status) {
    constexpr std::array redirections{301, 302, 303, 307, 308};
    return status >= 200 && std::ranges::find(redirections, status) == redirections.end();
}

/// Whether the server has sent a complete answer; a refusal is one too.
bool isAnswered(const QNetworkReply& reply) {
    const int error = reply.error();
    return isFinal(statusOf(reply)) &&
           (error == QNetworkReply::NoError ||
            (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError) ||
            (error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError));
}

class Transfer {
public:
    Transfer(QNetworkReply& reply, const HttpLimits& limits, const HttpSink& sink)
        : reply_(reply), limits_(limits), sink_(sink) {
        reply.setReadBufferSize(readBufferSize);
        QObject::connect(&reply, &QNetworkReply::redirected, &reply, [this](const QUrl& next) { redirect(next); });
        QObject::connect(&reply, &QNetworkReply::readyRead, &reply, [this] { take(); });
        QObject::connect(&reply, &QNetworkReply::finished, &loop_, &QEventLoop::quit);
        QObject::connect(&timer_, &QTimer::timeout, &reply, [this] { stop(UpdateFailure::unreachable); });
    }

    HttpAnswer run() {
        timer_.start(limits_.total);
        if (!reply_.isFinished())
            loop_.exec();
        take();
        if (!failure_ && !isAnswered(reply_))
            failure_ = UpdateFailure::unreachable;
        return {failure_, statusOf(reply_)};
    }

private:
    void stop(UpdateFailure failure) {
        if (failure_)
            return;
        failure_ = failure;
        reply_.abort();
    }
    void redirect(const QUrl& next) {
        if (mayRedirect(reply_.url(), next))
            Q_EMIT reply_.redirectAllowed();
        else
            stop(UpdateFailure::unreachable);
    }
    void take() {
        if (failure_ || !reply_.isOpen())
            return;
        const QByteArray piece = reply_.readAll();
        received_ += piece.size();
        if (received_ > limits_.size)
            stop(UpdateFailure::tooLarge);
        else if (const std::optional<UpdateFailure> failure =
                     piece.isEmpty() ? std::nullopt : sink_(statusOf(reply_), piece))
            stop(*failure);
    }

    QNetworkReply& reply_;
    const HttpLimits& limits_;
    const HttpSink& sink_;
    QEventLoop loop_;
    QTimer timer_;
    std::int64_t received_ = 0;
    std::optional<UpdateFailure> failure_;
};

}  // namespace

HttpAnswer httpGet(const QUrl& url, const HttpLimits& limits, const HttpSink& sink) {
    if (!mayBeAsked(url))
        return {UpdateFailure::unreachable, 0};
    QNetworkAccessManager manager;
    // Addresses on this machine are not requested through a proxy.
    if (url.scheme() == QLatin1String("https"))
        QNetworkProxyFactory::setUseSystemConfiguration(true);
    const std::unique_ptr<QNetworkReply> reply(manager.get(requestFor(url, limits)));
    return Transfer(*reply, limits, sink).run();
}

}  // namespace stowpocket
