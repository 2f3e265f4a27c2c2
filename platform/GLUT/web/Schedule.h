// Which callback of a program with one window is due, in freeglut's order.
#pragma once

#include <list>

/// A pass runs the timers that were due when it began, then draws if a drawing was asked for. A new
/// size comes before anything else, and is drawn at once. Times are in ms, of any one clock.
class Schedule {
public:
    using TimerCallback = void (*)(int value);

    enum class Work { None, Reshape, Timer, Display };

    struct Due {
        Work work;
        TimerCallback callback; ///< of Work::Timer
        int value;              ///< of Work::Timer
    };

    /// The callback is due @p delayMs after @p nowMs, however late this one is; of several due at
    /// the same time, the one armed first comes first.
    void ArmTimer(double nowMs, double delayMs, TimerCallback callback, int value);

    void PostRedisplay();
    void PostReshape();

    bool IsRedisplayPosted() const { return isRedisplayPosted; }

    /// What to run now; it is no longer due then.
    Due Take(double nowMs);

    /// Until the next callback is due: 0 for now, negative for never.
    double WaitMs(double nowMs) const;

private:
    struct Timer {
        double dueMs;
        TimerCallback callback;
        int value;
    };

    bool TimerIsDue(double atMs) const;
    Due TakeTimer();

    std::list<Timer> timers; // in the order in which they are due
    double passMs = 0.0;     // when the pass began
    bool isReshapePosted = false;
    bool isRedisplayPosted = false;
    bool wasReshaped = false; // and not drawn since
};
