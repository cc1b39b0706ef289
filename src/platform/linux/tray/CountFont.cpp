// SPDX-License-Identifier: MIT
#include "platform/linux/tray/CountFont.h"

#include "platform/linux/tray/StatusItemPainter.h"

#include <QThread>

#include <utility>

namespace stowpocket {

CountFont::CountFont() = default;

CountFont::~CountFont() {
    if (loading_)
        loading_->wait();
}

void CountFont::whenLoaded(std::function<void()> then) {
    if (isLoaded_)
        return then();
    then_ = std::move(then);
    if (loading_)
        return;
    loading_.reset(QThread::create(loadCountFont));
    QObject::connect(loading_.get(), &QThread::finished, loading_.get(), [this] {
        isLoaded_ = true;
        std::exchange(then_, {})();
    });
    loading_->start();
}

}  // namespace stowpocket
