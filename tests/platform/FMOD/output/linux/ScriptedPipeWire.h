// A scripted double of PipeWire's library, which LoadPipeWire returns.
#pragma once

#include <pipewire/pipewire.h>
#include <spa/param/audio/raw.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace devices {

using Calls = std::vector<std::string>;
using Properties = std::map<std::string, std::string>;

/// The library's scripted answers, and the calls it received.
struct ScriptedPipeWire {
    bool isInstalled = true;
    const char* version = "1.4.2";
    bool hasDaemon = true;
    bool answers = true;
    bool dies = false; // instead of answering
    const char* mediaClass = "Audio/Sink";

    Calls calls;
    Properties contextProperties;
    Properties streamProperties;
    spa_audio_info_raw format = {};
    std::uint32_t flags = 0;

    const pw_core_events* coreEvents = nullptr;
    const pw_registry_events* registryEvents = nullptr;
    const pw_stream_events* streamEvents = nullptr;
    void* listener = nullptr;

    pw_time time = {};
    std::uint64_t requested = 0;
    std::vector<float> space;
    spa_chunk chunk = {};
    spa_data data = {};
    spa_buffer spaBuffer = {};
    pw_buffer buffer = {};
    bool hasBuffer = true;
};

/// Of the running test.
extern ScriptedPipeWire script;

} // namespace devices
