// Synthetic logs of a sink, whose sound is known.
#pragma once

#include "GroundTruth.h"
#include "Mp3Files.h"
#include "SinkLog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <random>
#include <span>
#include <string>
#include <vector>

/// Three seconds of noise from -@p level to @p level, by the lame program with @p options: each
/// moment of it is like no other.
inline bench::Music* MakeNoise(unsigned int seed, float level,
                               const std::vector<std::string>& options) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> levels(-level, level);
    std::vector<float> noise(std::size_t{2} * 3 * bench::rateHz);
    std::generate(noise.begin(), noise.end(), [&] { return levels(random); });
    files::Folder folder;
    files::EncodeMp3(folder.Path("noise.mp3"), noise, bench::rateHz, options);
    return new bench::Music(folder.Path("noise.mp3"));
}

/// Adds a block of @p frames to the log @p path.
inline void AppendBlock(const std::string& path, bench::SinkBlock block,
                        std::span<const bench::Frame> frames) {
    std::ofstream log(path, std::ios::binary | std::ios::app);
    block.size = static_cast<std::int64_t>(frames.size_bytes());
    log.write(reinterpret_cast<const char*>(&block), sizeof(block));
    log.write(reinterpret_cast<const char*>(frames.data()), block.size);
}

class SinkLogTest : public testing::Test {
protected:
    static constexpr std::int64_t beginNs = 5'000'000'000;
    static constexpr std::int64_t blockFrames = 1102;

    static void SetUpTestSuite() { music = MakeNoise(1, 0.4F, {"-b", "192", "-t"}); }
    static void TearDownTestSuite() {
        delete music;
        music = nullptr;
    }

    void PlayZeros(std::size_t count) { sound.resize(sound.size() + count, bench::Frame{}); }

    void Play(std::ptrdiff_t from, std::ptrdiff_t to, float gain = 1.0F) {
        std::transform(music->Frames().begin() + from, music->Frames().begin() + to,
                       std::back_inserter(sound), [gain](bench::Frame frame) {
                           return bench::Frame{frame.left * gain, frame.right * gain};
                       });
    }

    static std::int64_t NsOf(std::int64_t frame) { return beginNs + frame * 10'000'000 / 441; }

    // Writes @p count frames from @p from on as one block.
    void WriteBlock(std::int64_t from, std::int64_t count) {
        AppendBlock(folder.Path("sink"), {NsOf(from), bench::rateHz, 0, 0},
                    std::span(sound).subspan(static_cast<std::size_t>(from),
                                             static_cast<std::size_t>(count)));
    }

    // Writes the frames from @p from on, which the sink renders for the first time or again.
    bench::GroundTruth Read(std::int64_t from = 0) {
        for (; from < std::ssize(sound); from += blockFrames) {
            WriteBlock(from, std::min(blockFrames, std::ssize(sound) - from));
        }
        return bench::GroundTruth(folder.Path("sink"), *music);
    }

    // Frame @p musicFrame of the music is heard at frame @p sinkFrame of the sink.
    static void ExpectHeard(const bench::GroundTruth& heard, std::int64_t sinkFrame,
                            std::int64_t musicFrame) {
        EXPECT_NEAR(heard.At(NsOf(sinkFrame)).musicMs,
                    static_cast<double>(musicFrame) * 1000.0 / bench::rateHz, 0.02)
            << "at frame " << sinkFrame << " of the sink";
    }

    inline static bench::Music* music = nullptr;
    files::Folder folder;
    std::vector<bench::Frame> sound;
};
