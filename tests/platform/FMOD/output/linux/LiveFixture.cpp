// The whole library as the show has it, seen and timed as by the show's main thread.
#include "LiveFixture.h"

#include "Sweep.h"
#include "Tone.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>
#include <string>
#include <thread>

// No machine is so busy that it takes this long by itself. Servers that hang do so for longer.
static constexpr std::chrono::seconds hang{2};

static double Ms(std::chrono::steady_clock::duration duration) {
    return std::chrono::duration<double, std::milli>(duration).count();
}

void LiveFixture::TearDown() {
    Release();
    RecordProperty("longestCallMs", std::to_string(Ms(longestCall)));
    EXPECT_LT(longestCall, hang) << "a call of the library hung";
}

void LiveFixture::Open(double seconds) {
    const std::string path = folder.Path("sweep.mp3");
    files::EncodeMp3(path, sweep::Frames(static_cast<std::size_t>(44100.0 * seconds)), 44100);
    Timed([&] { return FMOD::System_Create(&system); });
    Timed([&] { return system->init(1, FMOD_INIT_NORMAL, nullptr); });
    Timed([&] {
        return system->createSound(path.c_str(), FMOD_2D | FMOD_SOFTWARE | FMOD_CREATESTREAM,
                                   nullptr, &sound);
    });
}

void LiveFixture::Play() {
    Timed([&] { return system->playSound(FMOD_CHANNEL_FREE, sound, false, &channel); });
}

void LiveFixture::OpenAndPlay(double seconds) {
    Open(seconds);
    Play();
}

unsigned int LiveFixture::Position() {
    unsigned int position = 0;
    Timed([&] { return channel->getPosition(&position, FMOD_TIMEUNIT_MS); });
    return position;
}

// The time of a look is only known to lie between just before it and just after it; leaps and halts
// are measured by the bounds that hold however long this thread was kept from running.
Observation LiveFixture::Watch(unsigned int untilMs, const PrivateServer* server) {
    Observation observed;
    bool playing = true;
    std::vector<float> spectrum(512);
    const auto beforeFirst = Clock::now();
    observed.firstPosition = Position();
    const auto afterFirst = Clock::now();
    auto beforeLast = beforeFirst;
    unsigned int last = observed.firstPosition;
    while (playing && last < untilMs) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        Timed([&] { return channel->isPlaying(&playing); });
        const std::size_t recordedFrames = server != nullptr ? server->RecordedFrames() : 0;
        const auto before = Clock::now();
        const unsigned int position = Position();
        const auto after = Clock::now();
        looks.push_back({recordedFrames, position});
        const double moved = static_cast<double>(position) - last;
        observed.wentBack = observed.wentBack || position < last;
        observed.differentPositions += position != last ? 1 : 0;
        observed.leapMs = std::max(observed.leapMs, moved - Ms(after - beforeLast));
        if (playing) {
            observed.behindMs = Ms(before - afterFirst) - (position - observed.firstPosition);
        }
        Timed([&] {
            return system->getSpectrum(spectrum.data(), 512, 0, FMOD_DSP_FFT_WINDOW_TRIANGLE);
        });
        observed.strongest =
            std::max(observed.strongest, *std::max_element(spectrum.begin(), spectrum.end()));
        beforeLast = before;
        last = position;
    }
    observed.lastPosition = last;
    return observed;
}

void LiveFixture::Release() {
    if (system != nullptr) {
        Timed([&] { return system->release(); });
        system = nullptr;
    }
}

void LiveFixture::ExpectRealTime(const std::string& when, const Observation& observed) {
    RecordProperty(when + "LeapMs", std::to_string(observed.leapMs));
    RecordProperty(when + "BehindMs", std::to_string(observed.behindMs));
    EXPECT_FALSE(observed.wentBack) << when;
    EXPECT_LT(observed.leapMs, Ms(hang)) << when;
    EXPECT_LT(observed.behindMs, Ms(hang)) << when;
    EXPECT_GT(observed.differentPositions, 20U) << when;
}

// A busy machine only ever adds to the lag of what is recorded, so the least one counts.
std::vector<float> LiveFixture::ExpectInStep(const std::string& when, PrivateServer& server,
                                             unsigned int fromMs, unsigned int toMs) {
    std::vector<float> recorded = server.EndRecording();
    const std::vector<float> left = tone::Side(recorded, 0);
    std::vector<double> lagsMs;
    unsigned int firstMs = toMs;
    for (const Look& look : looks) {
        const auto played = std::span(left).first(std::min(look.recordedFrames, left.size()));
        const std::optional<double> playedMs = sweep::EndMs(played);
        if (look.positionMs >= fromMs && look.positionMs < toMs && playedMs) {
            lagsMs.push_back(look.positionMs - *playedMs);
            firstMs = std::min(firstMs, look.positionMs);
        }
    }
    EXPECT_GT(lagsMs.size(), 20U) << when << ": no sound";
    if (!lagsMs.empty()) {
        const double leastMs = *std::min_element(lagsMs.begin(), lagsMs.end());
        RecordProperty(when + "LagMs", std::to_string(leastMs));
        RecordProperty(when + "SilentMs", std::to_string(firstMs - fromMs));
        EXPECT_GT(leastMs, server.RecordingLag().fromMs) << when;
        EXPECT_LT(leastMs, server.RecordingLag().toMs) << when;
    }
    return recorded;
}

void LiveFixture::ExpectHeardAgain(PrivateServer& server, unsigned int backMs,
                                   unsigned int lengthMs) {
    ExpectRealTime("after", Watch(2 * lengthMs, &server));
    EXPECT_EQ(Position(), lengthMs);
    ExpectInStep("after", server, backMs, lengthMs - 100);
}

// The beginning of the sweep, laid where it fits best, fits everywhere. (An MP3 file is not quite
// the sweep.)
void LiveFixture::ExpectWholeBeginning(const std::vector<float>& recorded) {
    const std::vector<float> left = tone::Side(recorded, 0);
    const std::vector<float> music = tone::Side(sweep::Frames(2048), 0);
    const auto loud = std::find_if(left.begin(), left.end(), [](float x) { return x > 0.1F; });
    const auto begin = static_cast<std::size_t>(loud - left.begin());
    constexpr std::size_t reach = 300;
    ASSERT_GT(begin, reach) << "heard before it was played";
    ASSERT_GT(left.size(), begin + reach + music.size()) << "no sound";
    float least = 1.0F;
    for (std::size_t from = begin - reach; from < begin + reach; ++from) {
        float farthest = 0.0F;
        for (std::size_t i = 0; i < music.size() && farthest < least; ++i) {
            farthest = std::max(farthest, std::fabs(left[from + i] - music[i]));
        }
        least = std::min(least, farthest);
    }
    RecordProperty("beginningOff", std::to_string(least));
    EXPECT_LT(least, 0.03F) << "not the beginning of the music";
}
