// The output in a page.
#include "Output.h"
#include "OutputTimeline.h"

#include <chrono>

namespace sound {

static std::int64_t NowNs() {
    return std::chrono::steady_clock::now().time_since_epoch().count();
}

struct Output {
    explicit Output(const Source& source) : timeline(source, NowNs()) {}
    OutputTimeline timeline;
};

OutputHandle StartOutput(const Source& source) {
    return OutputHandle(new Output(source));
}

void StopOutput::operator()(Output* output) const noexcept {
    delete output;
}

void AwaitDevice(Output&) noexcept {}

std::int64_t HeardFrames(Output& output) noexcept {
    output.timeline.AdvanceSilence(NowNs());
    return output.timeline.HeardFrames(NowNs());
}

} // namespace sound
