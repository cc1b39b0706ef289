// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace stowpocket {

/// The easing curves of macOS: the position of a movement when `progress`, from 0 to 1, of its time has passed.
[[nodiscard]] double easeInOut(double progress);
[[nodiscard]] double easeOut(double progress);

/// A mass on a spring that moves from rest at 0 to rest at 1, with overshoot. The damping fraction is between 0
/// (swings for ever) and 1 (does not swing), exclusive. The response is the duration, in seconds, of one undamped
/// swing.
struct Spring {
    double response = 0;
    double dampingFraction = 0;

    [[nodiscard]] double position(double seconds) const;
    /// The time after which the position stays within a thousandth of 1.
    [[nodiscard]] double settlingTime() const;
};

/// Time within a movement.
using Seconds = std::chrono::duration<double>;

/// How a property moves from its old value to its new one.
class Movement {
public:
    enum class Reversing { no, yes };

    [[nodiscard]] static constexpr Movement linear(Seconds duration) { return {Curve::linear, duration}; }
    [[nodiscard]] static constexpr Movement easeOut(Seconds duration) { return {Curve::easeOut, duration}; }
    [[nodiscard]] static constexpr Movement easeInOut(Seconds duration) { return {Curve::easeInOut, duration}; }
    [[nodiscard]] static constexpr Movement spring(Seconds response, double dampingFraction) {
        return {Curve::spring, response, dampingFraction};
    }
    /// The same movement repeated, each time from the old value or, reversing, back and forth.
    [[nodiscard]] constexpr Movement repeatedForever(Reversing reversing) const {
        Movement repeated = *this;
        repeated.repeats_ = reversing == Reversing::yes ? Repeats::backAndForth : Repeats::fromTheStart;
        return repeated;
    }

    /// The position after the given time: 0 is the old value, 1 the new one. A spring overshoots.
    [[nodiscard]] double progress(Seconds elapsed) const;
    [[nodiscard]] bool isRepeated() const { return repeats_ != Repeats::never; }
    [[nodiscard]] bool isReversing() const { return repeats_ == Repeats::backAndForth; }
    /// The time until the movement ends, or until the first repetition.
    [[nodiscard]] Seconds duration() const;

private:
    enum class Curve { linear, easeOut, easeInOut, spring };
    enum class Repeats { never, fromTheStart, backAndForth };

    constexpr Movement(Curve curve, Seconds time, double dampingFraction = 0)
        : curve_(curve), time_(time), dampingFraction_(dampingFraction) {}

    [[nodiscard]] double shareOfTime(Seconds elapsed) const;

    Curve curve_;
    Seconds time_;  ///< the duration; of a spring the response
    double dampingFraction_;
    Repeats repeats_ = Repeats::never;
};

}  // namespace stowpocket
