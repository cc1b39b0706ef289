// SPDX-License-Identifier: MIT
#include "platform/linux/updates/UpdaterFeedSession.h"

#include "platform/linux/updates/UpdaterProtocol.h"
#include "platform/linux/updates/WebAddress.h"

#include <QUrl>

namespace stowpocket {
namespace {

std::optional<FeedResponse> responseOf(const UpdaterProcess::Result& result) {
    const qsizetype lineEnd = result.output.indexOf('\n');
    bool isNumber = false;
    const int status = result.output.left(lineEnd).toInt(&isNumber);
    if (result.failure || lineEnd < 0 || !isNumber)
        return std::nullopt;
    const QByteArray body = result.output.mid(lineEnd + 1);
    return FeedResponse{status, Bytes(body.begin(), body.end())};
}

}  // namespace

bool UpdaterFeedSession::isValid(const std::string& url) const {
    return mayBeAsked(QUrl(QString::fromStdString(url), QUrl::StrictMode));
}

void UpdaterFeedSession::dataTask(const std::string& url, Completion completion) {
    const auto task = tasks_.emplace(tasks_.end());
    *task = std::make_unique<UpdaterProcess>(
        program_, QStringList{QLatin1String(updaterCommand::fetch), QString::fromStdString(url)},
        [this, task, completion = std::move(completion)](const UpdaterProcess::Result& result) {
            const Completion finished = completion;
            tasks_.erase(task);
            finished(responseOf(result));
        });
}

}  // namespace stowpocket
