// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace stowpocket {

/// The platform's curves: how far a movement has come when `progress`, from 0 to 1, of its time is over.
[[nodiscard]] double easeInOut(double progress);
[[nodiscard]] double easeOut(double progress);

/// A mass on a spring that starts at rest at 0 and comes to rest at 1, with overshoot: the damping fraction is more
/// than 0, for swinging for ever, and less than 1, for not swinging at all. The response is the time, in seconds,
/// that one swing would take without any damping.
struct Spring {
    double response = 0;
    double dampingFraction = 0;

    [[nodiscard]] double position(double seconds) const;
    /// From when on it stays closer to 1 than a thousandth.
    [[nodiscard]] double settlingTime() const;
};

/// Time within a movement.
using Seconds = std::chrono::duration<double>;

/// How a property gets from its old value to its new one.
class Movement {
public:
    enum class Reversing { no, yes };

    [[nodiscard]] static constexpr Movement linear(Seconds duration) { return {Curve::linear, duration}; }
    [[nodiscard]] static constexpr Movement easeOut(Seconds duration) { return {Curve::easeOut, duration}; }
    [[nodiscard]] static constexpr Movement easeInOut(Seconds duration) { return {Curve::easeInOut, duration}; }
    [[nodiscard]] static constexpr Movement spring(Seconds response, double dampingFraction) {
        return {Curve::spring, response, dampingFraction};
    }
    /// The same again and again, each time from the old value or, reversing, back and forth.
    [[nodiscard]] constexpr Movement repeatedForever(Reversing reversing) const {
        Movement repeated = *this;
        repeated.repeats_ = reversing == Reversing::yes ? Repeats::backAndForth : Repeats::fromTheStart;
        return repeated;
    }

    /// How far the value has come that long after the start: 0 is the old value, 1 the new one. A spring goes beyond.
    [[nodiscard]] double progress(Seconds elapsed) const;
    [[nodiscard]] bool isRepeated() const { return repeats_ != Repeats::never; }
    [[nodiscard]] bool isReversing() const { return repeats_ == Repeats::backAndForth; }
    /// Until nothing moves any more, or until the first repetition.
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
