// Operations on the sound library in any order, while devices appear, hang, misreport and
// disappear: results stay within their ranges, and the position never goes backwards nor ahead of
// the sound.
#include "Expect.h"
#include "MemoryFile.h"
#include "Operation.h"
#include "SimulatedOutput.h"

#include <FMOD/FMOD.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

constexpr std::size_t musicBytes = 60000;
constexpr int askedEveryMs = 5;
constexpr int lateMs = 10; // by which a device may ask for what is heard already, see Output.h

// The first two seconds of the show's music, so that its end is often met.
const fuzz::MemoryFile& Music() {
    static const fuzz::MemoryFile music = [] {
        std::ifstream file(MUSIC, std::ios::binary);
        const std::vector<char> bytes(std::istreambuf_iterator<char>(file), {});
        EXPECT(bytes.size() > musicBytes);
        return fuzz::MemoryFile(reinterpret_cast<const std::uint8_t*>(bytes.data()), musicBytes);
    }();
    return music;
}

class Player {
public:
    Player() {
        fuzz::ResetOutput();
        EXPECT(FMOD::System_Create(&system) == FMOD_OK);
        Init();
    }
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;
    ~Player() { EXPECT(system->release() == FMOD_OK); }

    void Do(std::uint8_t operation, int argument) {
        if (operation < fuzz::play) {
            DoToDevice(operation, argument);
        } else if (operation < fuzz::setPaused) {
            DoToSystem(operation, argument);
        } else if (Playing& playing = playings[argument % 2 == 0 ? 0 : 1];
                   playing.channel != nullptr) {
            DoToChannel(operation, argument / 2, playing);
        }
        AskPositions();
    }

private:
    /// A channel that was answered once, and what it plays.
    struct Playing {
        FMOD::Channel* channel = nullptr;
        const FMOD::Sound* sound = nullptr; ///< none: it was released, or plays elsewhere
        unsigned int lastPosition = 0;
        std::int64_t heardBefore = 0;
    };

    void Init() { EXPECT(system->init(2, FMOD_INIT_NORMAL, nullptr) == FMOD_OK); }

    void DoToDevice(std::uint8_t operation, int argument) {
        switch (operation) {
        case fuzz::passTime:
            PassTime(argument < 128 ? argument : 4 * (argument - 95));
            break;
        case fuzz::suspend:
            fuzz::Suspend(8 * argument);
            break;
        case fuzz::openDevice:
            fuzz::OpenDevice(argument % 4 == 0 ? 350 * argument : 44000 + argument);
            break;
        case fuzz::openGraph: // of 64 to 8192 frames
            fuzz::OpenGraph(argument % 4 == 0 ? 350 * argument : 44000 + argument,
                            64 << (argument % 8), std::int64_t{300} * (argument / 8));
            break;
        case fuzz::repeatPosition:
            fuzz::RepeatPosition(std::int64_t{8} * argument);
            break;
        case fuzz::hangDevice:
            fuzz::HangDevice(16 * argument);
            break;
        case fuzz::failDevice:
            fuzz::FailDevice();
            break;
        case fuzz::misreport:
            fuzz::MisreportBy(std::int64_t{100} * (argument - 128));
            break;
        case fuzz::interrupt:
            fuzz::InterruptNextRender(argument);
            break;
        default:
            fuzz::LetDecoderLag(argument % 2 == 1);
        }
    }

    void PassTime(int ms) {
        for (int passed = 0; passed < ms; passed += askedEveryMs) {
            fuzz::PassTime(std::min(askedEveryMs, ms - passed));
            AskPositions();
        }
    }

    void DoToSystem(std::uint8_t operation, int argument) {
        FMOD::Sound*& sound = sounds[argument / 16 % 2 == 0 ? 0 : 1];
        switch (operation) {
        case fuzz::play:
            Play(sound, argument);
            break;
        case fuzz::releaseSound:
            if (sound != nullptr) {
                EXPECT(sound->release() == FMOD_OK);
                Forget(sound);
                sound = nullptr;
            }
            break;
        case fuzz::restart:
            EXPECT(system->close() == FMOD_OK);
            sounds = {};
            playings = {};
            Init();
            break;
        case fuzz::askSpectrum:
            AskSpectrum(argument);
            break;
        default:
            EXPECT(system->update() == FMOD_OK);
        }
    }

    void Play(FMOD::Sound*& sound, int argument) {
        if (sound == nullptr) {
            EXPECT(system->createSound(Music().Path(), FMOD_2D | FMOD_SOFTWARE | FMOD_CREATESTREAM,
                                       nullptr, &sound) == FMOD_OK);
        }
        const int index = argument % 4 - 1; // any free one, the first, the second, one too many
        FMOD::Channel* channel = nullptr;
        const FMOD_RESULT result = system->playSound(static_cast<FMOD_CHANNELINDEX>(index), sound,
                                                     argument / 4 % 2 == 1, &channel);
        EXPECT(result == (index < 2 ? FMOD_OK : FMOD_ERR_INVALID_PARAM));
        if (result == FMOD_OK) {
            Forget(sound);
            const auto same =
                std::find_if(playings.begin(), playings.end(), [channel](const Playing& playing) {
                    return playing.channel == channel;
                });
            const auto free =
                std::find_if(playings.begin(), playings.end(),
                             [](const Playing& playing) { return playing.channel == nullptr; });
            const auto place = same != playings.end() ? same : free;
            EXPECT(place != playings.end());
            *place = {channel, sound, 0, fuzz::LastHeardFrames()};
        }
    }

    void Forget(const FMOD::Sound* sound) {
        for (Playing& playing : playings) {
            if (playing.sound == sound) {
                playing.sound = nullptr;
            }
        }
    }

    void AskSpectrum(int argument) {
        const int bands = 32 << argument % 16; // from one size too small to some too large
        const bool known = bands >= 64 && bands <= 8192;
        const auto window = static_cast<FMOD_DSP_FFT_WINDOW>(argument / 16 % 2);
        std::vector<float> levels(known ? static_cast<std::size_t>(bands) : 0);
        float none = 0.0F;
        EXPECT(system->getSpectrum(known ? levels.data() : &none, bands, argument / 32 % 2,
                                   window) == (known ? FMOD_OK : FMOD_ERR_INVALID_PARAM));
        EXPECT(std::all_of(levels.begin(), levels.end(),
                           [](float level) { return level >= 0.0F && level <= 2.0F; }));
    }

    static void DoToChannel(std::uint8_t operation, int argument, Playing& playing) {
        const FMOD_RESULT expected = Expected(playing);
        const bool wanted = argument % 2 == 1;
        bool answer = wanted;
        switch (operation) {
        case fuzz::setPaused:
            EXPECT(playing.channel->setPaused(wanted) == expected);
            EXPECT(playing.channel->getPaused(&answer) == expected && answer == wanted);
            break;
        case fuzz::setMute:
            EXPECT(playing.channel->setMute(wanted) == expected);
            EXPECT(playing.channel->getMute(&answer) == expected && answer == wanted);
            break;
        default:
            EXPECT(playing.channel->setVolume(static_cast<float>(argument - 8) / 100.0F) ==
                   expected);
        }
    }

    void AskPositions() {
        for (Playing& playing : playings) {
            if (playing.channel != nullptr) {
                AskPosition(playing);
            }
        }
    }

    static void AskPosition(Playing& playing) {
        unsigned int now = playing.lastPosition;
        bool plays = false;
        EXPECT(playing.channel->getPosition(&now, FMOD_TIMEUNIT_MS) == Expected(playing));
        EXPECT(playing.channel->isPlaying(&plays) == Expected(playing));
        EXPECT(now >= playing.lastPosition);
        EXPECT(now <= (fuzz::LastHeardFrames() - playing.heardBefore) * 1000 / 44100 + 1 + lateMs);
        playing.lastPosition = now;
    }

    static FMOD_RESULT Expected(const Playing& playing) {
        return playing.sound != nullptr ? FMOD_OK : FMOD_ERR_INVALID_HANDLE;
    }

    FMOD::System* system = nullptr;
    std::array<FMOD::Sound*, 2> sounds = {};
    std::array<Playing, 2> playings = {};
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Player player;
    for (std::size_t i = 0; i + 1 < size; i += 2) {
        player.Do(bytes[i] % fuzz::operationCount, bytes[i + 1]);
    }
    return 0;
}
