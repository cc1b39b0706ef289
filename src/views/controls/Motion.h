// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/Movement.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QVariantAnimation>
#include <QWidget>

#include <chrono>
#include <functional>

namespace stowpocket {

namespace Motion {

/// Whether `view` may be animated. If the desktop asks for reduced motion, changes are shown immediately.
[[nodiscard]] bool isWanted(const QWidget& view);
/// The same for a view that does not exist yet.
[[nodiscard]] bool isWanted();
/// Gives the animation its duration and the ease-in-out curve.
void prepare(QVariantAnimation& animation, std::chrono::milliseconds duration);
/// Moves the animation, running or not, to the end of its direction.
void finish(QVariantAnimation& animation);

}  // namespace Motion

/// Schedules the frames of an animation. Main thread.
class FrameClock {
public:
    virtual ~FrameClock() = default;
    /// The time since an arbitrary moment in the past; never runs backwards.
    [[nodiscard]] virtual Seconds now() const = 0;
    /// Calls `frame` once after `delay`, replacing any earlier request. Never calls it before returning.
    virtual void callAfter(Seconds delay, std::function<void()> frame) = 0;
    virtual void stop() = 0;
};

/// The machine's monotonic clock.
class QtFrameClock : public FrameClock {
public:
    QtFrameClock();
    [[nodiscard]] Seconds now() const override;
    void callAfter(Seconds delay, std::function<void()> frame) override;
    void stop() override { timer_.stop(); }

private:
    QElapsedTimer elapsed_;
    QTimer timer_;
    std::function<void()> frame_;
};

/// A wheel that turns while an operation of unknown duration is running. It stops while it is hidden, and does not
/// move at all if the desktop asks for reduced motion.
class Spinner : public QWidget {
public:
    Spinner();
    [[nodiscard]] bool isTurning() const { return timer_.isActive(); }

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QTimer timer_;
    int step_ = 0;
};

}  // namespace stowpocket
