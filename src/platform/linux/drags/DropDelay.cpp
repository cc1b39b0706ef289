// SPDX-License-Identifier: MIT
#include "platform/linux/drags/DropDelay.h"

#include <QCoreApplication>

#include <chrono>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// Targets ask within some 20 ms. Those that know the data already do not ask again, and wait for nothing either.
constexpr auto longestDelay = 200ms;

}  // namespace

DropDelay::DropDelay() {
    limit_.setSingleShot(true);
    connect(&limit_, &QTimer::timeout, this, &DropDelay::drop);
}

void DropDelay::begin() {
    // Of several filters the last one installed sees an event first, and Qt installs its own when the drag starts.
    isOn_ = true;
    QTimer::singleShot(0, this, [this] {
        if (isOn_)
            QCoreApplication::instance()->installEventFilter(this);
    });
}

void DropDelay::asked() {
    if (release_)
        limit_.start(0ms);
}

void DropDelay::end() {
    isOn_ = false;
    QCoreApplication::instance()->removeEventFilter(this);
    limit_.stop();
    release_.reset();
}

/// What the hand does after the release must not move the drop either.
bool DropDelay::eventFilter(QObject* receiver, QEvent* event) {
    if (release_)
        return event->type() == QEvent::MouseMove;
    if (event->type() != QEvent::MouseButtonRelease)
        return false;
    receiver_ = receiver;
    release_.reset(event->clone());
    limit_.start(longestDelay);
    return true;
}

void DropDelay::drop() {
    QCoreApplication::instance()->removeEventFilter(this);
    const std::unique_ptr<QEvent> release = std::move(release_);
    if (release && receiver_)
        QCoreApplication::sendEvent(receiver_, release.get());
}

}  // namespace stowpocket
