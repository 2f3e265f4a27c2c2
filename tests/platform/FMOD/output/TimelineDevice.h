// The output timeline, a source and a device for it, in a time that the test controls.
#pragma once

#include "OutputTimeline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <vector>

namespace devices {

inline constexpr std::int64_t ms = 1'000'000; ///< in ns

inline constexpr int fadeFrames = 512; ///< until a device that took over in the music is at full

/// A source whose frames hold their own number plus one: 1, 2, 3, ... (0 is silence).
struct Counter {
    std::int64_t next = 0;
    std::function<void()> whileRendering = [] {};

    static void Render(void* context, float* block, std::int32_t frames) noexcept {
        auto* self = static_cast<Counter*>(context);
        self->whileRendering();
        for (std::int32_t i = 0; i < frames; ++i) {
            ++self->next;
            *block++ = static_cast<float>(self->next);
            *block++ = static_cast<float>(self->next);
        }
    }
    static void Wait(void*, std::int32_t) noexcept {}

    sound::Source AsSource() { return {this, Render, Wait}; }
};

/// A started device, with @p latencyFrames always in its buffer, which plays in real time from
/// @p beginNs on.
struct Device {
    using Reports = sound::DeviceFeed::Reports;

    Device(sound::OutputTimeline& timeline, std::int64_t fillNs, std::int64_t beginNs,
           std::int32_t latencyFrames, Reports reports = Reports::Estimated)
        : feed(timeline, reports), startNs(beginNs) {
        Ask(latencyFrames, fillNs);
    }

    std::int64_t Played(std::int64_t nowNs) const {
        return std::max<std::int64_t>(sound::FramesIn(nowNs - startNs), 0);
    }

    bool Ask(std::int32_t frames, std::int64_t nowNs) {
        std::vector<float> block(2 * static_cast<std::size_t>(frames), -1.0F);
        const bool wanted = feed.Render(block.data(), frames, Played(nowNs) + positionError, nowNs);
        for (std::size_t i = 0; i < block.size(); i += 2) {
            sounding += block[i] != 0.0F ? 1 : 0;
            given.push_back(sounding > fadeFrames ? static_cast<std::int64_t>(block[i]) : 0);
        }
        return wanted;
    }

    // Asks for 10 ms every 10 ms.
    void RunUntil(std::int64_t& nowNs, std::int64_t endNs) {
        for (; nowNs < endNs; nowNs += 10 * ms) {
            Ask(441, nowNs);
        }
    }

    // The number, plus one, of the source's frame that is heard; 0: silence.
    std::int64_t Sounding(std::int64_t nowNs) const {
        return given.at(static_cast<std::size_t>(Played(nowNs)));
    }

    sound::DeviceFeed feed;
    std::int64_t startNs;
    std::int64_t positionError = 0;  ///< error of the reported position, in frames
    std::vector<std::int64_t> given; ///< silence also while it fades in
    int sounding = 0;                ///< frames given that were not silent
};

inline void ExpectNear(std::int64_t found, std::int64_t expected, std::int64_t tolerance) {
    EXPECT_LE(std::abs(found - expected), tolerance) << found << " instead of " << expected;
}

/// A timeline from 0 on that has no device yet.
class TimelineFixture : public testing::Test {
protected:
    Counter counter;
    sound::OutputTimeline timeline{counter.AsSource(), 0};
    std::int64_t now = 0;
};

} // namespace devices
