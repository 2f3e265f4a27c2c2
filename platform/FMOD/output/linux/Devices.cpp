#include "Devices.h"

#include "CubebOutput.h"
#include "PipeWireOutput.h"
#include "SoundServers.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace sound {

static std::unique_ptr<Device> MakePipeWire(DeviceFeed& feed) {
    return PipeWireMayRun() ? std::make_unique<PipeWireOutput>(feed) : nullptr;
}

static std::unique_ptr<Device> MakePulse(DeviceFeed& feed) {
    return std::make_unique<CubebOutput>(feed, "pulse");
}

static std::unique_ptr<Device> MakeAlsa(DeviceFeed& feed) {
    return std::make_unique<CubebOutput>(feed, "alsa");
}

static std::unique_ptr<Device> MakeJack(DeviceFeed& feed) {
    return JackServerRuns() ? std::make_unique<CubebOutput>(feed, "jack") : nullptr;
}

static constexpr std::array<DeviceKind, 4> devices = {
    {{"pipewire", DeviceFeed::Reports::Exact, MakePipeWire},
     {"pulse", DeviceFeed::Reports::Estimated, MakePulse},
     {"alsa", DeviceFeed::Reports::Estimated, MakeAlsa},
     {"jack", DeviceFeed::Reports::Estimated, MakeJack}}};

std::span<const DeviceKind> ChosenDevices() {
    const char* value = std::getenv("SKOVRA_SOUND");
    const std::string_view name = value == nullptr ? "" : value;
    if (name == "none") {
        return {};
    }
    const std::span<const DeviceKind> all = devices;
    const auto named = std::find_if(all.begin(), all.end(),
                                    [name](const DeviceKind& kind) { return kind.name == name; });
    if (named != all.end()) {
        return all.subspan(static_cast<std::size_t>(named - all.begin()), 1);
    }
    if (!name.empty()) {
        std::fprintf(stderr,
                     "%s: SKOVRA_SOUND=%s is none of pipewire, pulse, alsa, jack, none; "
                     "trying all\n",
                     program_invocation_short_name, value);
    }
    return all;
}

} // namespace sound
