#include "Schedule.h"

#include <algorithm>

namespace sound {

void Schedule::Clear(std::int64_t timelineFrame) {
    runs.clear();
    next = timelineFrame;
}

void Schedule::BeginRun(std::int64_t contextFrame) {
    runs.push_back({contextFrame, next, 0});
}

void Schedule::Extend(std::int64_t frames) {
    runs.back().frames += frames;
    next += frames;
}

void Schedule::MoveRun(std::int64_t contextFrame) {
    runs.back().contextFrame = contextFrame;
}

std::int64_t Schedule::End() const {
    return runs.empty() ? 0 : runs.back().contextFrame + runs.back().frames;
}

std::int64_t Schedule::At(std::int64_t contextFrame) const {
    if (runs.empty()) {
        return next;
    }
    const auto later = std::find_if(runs.begin() + 1, runs.end(), [contextFrame](const Run& run) {
        return run.contextFrame > contextFrame;
    });
    const Run& run = *(later - 1);
    return run.timelineFrame + std::min(contextFrame - run.contextFrame, run.frames);
}

void Schedule::ForgetBefore(std::int64_t contextFrame) {
    while (runs.size() > 1 && runs[1].contextFrame <= contextFrame) {
        runs.pop_front();
    }
}

} // namespace sound
