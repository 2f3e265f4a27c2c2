#include "Schedule.h"

#include <algorithm>
#include <utility>

void Schedule::ArmTimer(double nowMs, double delayMs, TimerCallback callback, int value) {
    const double dueMs = nowMs + delayMs;
    const auto later = std::find_if(timers.begin(), timers.end(),
                                    [dueMs](const Timer& timer) { return timer.dueMs > dueMs; });
    timers.insert(later, {dueMs, callback, value});
}

void Schedule::PostRedisplay() {
    isRedisplayPosted = true;
}

void Schedule::PostReshape() {
    isReshapePosted = true;
}

Schedule::Due Schedule::Take(double nowMs) {
    if (std::exchange(isReshapePosted, false)) {
        wasReshaped = true;
        return {Work::Reshape, nullptr, 0};
    }
    const bool mustDraw = std::exchange(wasReshaped, false);
    if (!mustDraw && TimerIsDue(passMs)) {
        return TakeTimer();
    }
    passMs = nowMs;
    if (std::exchange(isRedisplayPosted, false) || mustDraw) {
        return {Work::Display, nullptr, 0};
    }
    if (TimerIsDue(passMs)) {
        return TakeTimer();
    }
    return {Work::None, nullptr, 0};
}

double Schedule::WaitMs(double nowMs) const {
    if (isReshapePosted || wasReshaped || isRedisplayPosted) {
        return 0.0;
    }
    if (timers.empty()) {
        return -1.0;
    }
    return std::max(0.0, timers.front().dueMs - nowMs);
}

bool Schedule::TimerIsDue(double atMs) const {
    return !timers.empty() && timers.front().dueMs <= atMs;
}

Schedule::Due Schedule::TakeTimer() {
    const Timer timer = timers.front();
    timers.pop_front();
    return {Work::Timer, timer.callback, timer.value};
}
