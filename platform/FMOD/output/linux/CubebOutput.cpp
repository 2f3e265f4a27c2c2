#include "CubebOutput.h"

#include "Clock.h"
#include "JackGate.h"
#include "Output.h"
#include "OutputTimeline.h"

#include <cubeb/cubeb.h>

#include <optional>
#include <string_view>

#include <malloc.h>

namespace sound {

// Each attempt to find a server briefly allocates megabytes and hardly touches them. As separate
// mappings they cost nothing; on the heap, where malloc puts them from the second attempt on, they
// would stay resident.
static constexpr int largestStoredBytes = 128 * 1024;

// 200 ms: beside busy processes a callback may be more than 100 ms late.
static constexpr std::uint32_t latencyFrames = outputRateHz / 5;

void CubebOutput::DeleteContext::operator()(cubeb* owned) const {
    cubeb_destroy(owned);
}

void CubebOutput::DeleteStream::operator()(cubeb_stream* owned) const {
    cubeb_stream_stop(owned);
    cubeb_stream_destroy(owned);
}

CubebOutput::~CubebOutput() = default;

static void Notice(cubeb_stream*, void* feed, cubeb_state state) {
    if (state == CUBEB_STATE_ERROR) {
        static_cast<DeviceFeed*>(feed)->Fail();
    }
}

static cubeb* OpenedContext(const char* backend) {
    std::optional<JackGate> gate;
    if (std::string_view(backend) != "jack") {
        gate.emplace();
    }
    cubeb* context = nullptr;
    cubeb_init(&context, "Skovra", backend);
    return context;
}

// Or cubeb has opened another, which is tried by its own name.
static bool IsOf(std::string_view backend, cubeb* context) {
    return std::string_view(cubeb_get_backend_id(context)).starts_with(backend); // pulse-rust, too
}

bool CubebOutput::Start() {
    mallopt(M_MMAP_THRESHOLD, largestStoredBytes); // the default, but no longer adjusted
    cubeb* openedContext = OpenedContext(backend);
    context.reset(openedContext);
    if (openedContext == nullptr || !IsOf(backend, openedContext)) {
        return false;
    }

    cubeb_stream_params params = {};
    params.format = CUBEB_SAMPLE_FLOAT32NE;
    params.rate = static_cast<std::uint32_t>(outputRateHz);
    params.channels = 2;
    params.layout = CUBEB_LAYOUT_STEREO;
    params.prefs = CUBEB_STREAM_PREF_NONE;
    cubeb_stream* openedStream = nullptr;
    if (cubeb_stream_init(openedContext, &openedStream, "Music", nullptr, nullptr, nullptr, &params,
                          latencyFrames, Fill, Notice, &feed) != CUBEB_OK) {
        return false;
    }
    stream.reset(openedStream);
    return cubeb_stream_start(openedStream) == CUBEB_OK;
}

// The position is read only here: elsewhere cubeb takes a lock for it. (With ALSA it takes one
// here, too, which nobody else holds while a stream plays.) The latency is never read: after a
// server has died, that makes cubeb end the process.
long CubebOutput::Fill(cubeb_stream* stream, void* feed, const void*, void* output,
                       long frames) noexcept {
    std::uint64_t played = 0;
    const bool known = cubeb_stream_get_position(stream, &played) == CUBEB_OK;
    const bool wanted = static_cast<DeviceFeed*>(feed)->Render(
        static_cast<float*>(output), static_cast<std::int32_t>(frames),
        known ? static_cast<std::int64_t>(played) : unknownPosition, MonotonicNs());
    return wanted ? frames : static_cast<long>(CUBEB_ERROR);
}

} // namespace sound
