// SPDX-License-Identifier: MIT
#include "platform/linux/drags/KwinDrop.h"

#include <QCoreApplication>

#include <chrono>
#include <utility>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// Targets ask within some 20 ms. Those that know the data already do not ask again, and wait for nothing either.
constexpr auto longestDelay = 200ms;

}  // namespace

KwinDrop::KwinDrop(const X11Connection& connection)
    : connection_(connection), catcher_(connection, X11ScreenCover::Kind::unmanaged) {
    limit_.setSingleShot(true);
    connect(&limit_, &QTimer::timeout, this, &KwinDrop::releaseNow);
}

void KwinDrop::begin() {
    if (!isWaylandSession() || connection_.windowManagerName() != "KWin")
        return;
    catcher_.show();
    // The filter that was installed last sees an event first, and Qt installs its own when the drag starts.
    isOn_ = true;
    QTimer::singleShot(0, this, [this] {
        if (isOn_)
            QCoreApplication::instance()->installEventFilter(this);
    });
}

void KwinDrop::asked() {
    if (release_)
        limit_.start(0ms);
}

void KwinDrop::end() {
    isOn_ = false;
    catcher_.hide();
    QCoreApplication::instance()->removeEventFilter(this);
    limit_.stop();
    release_.reset();
}

/// Movements after the release must not move the drop either.
bool KwinDrop::eventFilter(QObject* receiver, QEvent* event) {
    if (release_)
        return event->type() == QEvent::MouseMove;
    if (event->type() != QEvent::MouseButtonRelease)
        return false;
    catcher_.hide();  // takes clicks as well
    receiver_ = receiver;
    release_.reset(event->clone());
    limit_.start(longestDelay);
    return true;
}

void KwinDrop::releaseNow() {
    QCoreApplication::instance()->removeEventFilter(this);
    const std::unique_ptr<QEvent> release = std::move(release_);
    if (release && receiver_)
        QCoreApplication::sendEvent(receiver_, release.get());
}

}  // namespace stowpocket
