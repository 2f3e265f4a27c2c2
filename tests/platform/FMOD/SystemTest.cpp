// The system's operations: what they accept, what they answer.
#include "SystemFixture.h"

#include <algorithm>
#include <vector>

using SystemTest = SystemFixture;

class StartedSystemTest : public SystemFixture {
protected:
    StartedSystemTest() { Init(); }
};

TEST_F(SystemTest, OffersTheInterfaceVersionItDeclares) {
    unsigned int version = 0;

    EXPECT_EQ(system->getVersion(&version), FMOD_OK);
    EXPECT_EQ(version, 0x00040306U);
    EXPECT_EQ(system->getVersion(nullptr), FMOD_ERR_INVALID_PARAM);
}

TEST_F(SystemTest, IsNotMadeWithoutAPlaceForIt) {
    EXPECT_EQ(FMOD::System_Create(nullptr), FMOD_ERR_INVALID_PARAM);
}

TEST_F(SystemTest, StartsItsOutputWithInit) {
    EXPECT_FALSE(script::IsStarted());
    Init();
    EXPECT_TRUE(script::IsStarted());
}

TEST_F(SystemTest, RefusesArgumentsOfInitOutOfTheirRange) {
    int driver = 0;

    EXPECT_EQ(system->init(0, FMOD_INIT_NORMAL, nullptr), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(system->init(-1, FMOD_INIT_NORMAL, nullptr), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(system->init(65, FMOD_INIT_NORMAL, nullptr), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(system->init(1, 1, nullptr), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(system->init(1, FMOD_INIT_NORMAL, &driver), FMOD_ERR_INVALID_PARAM);
    EXPECT_FALSE(script::IsStarted());
}

TEST_F(SystemTest, DoesNothingBeforeInit) {
    FMOD::Sound* sound = nullptr;
    FMOD::Channel* channel = nullptr;
    std::vector<float> spectrum(512);

    EXPECT_EQ(system->update(), FMOD_ERR_UNINITIALIZED);
    EXPECT_EQ(system->createSound("music.mp3", streamed, nullptr, &sound), FMOD_ERR_UNINITIALIZED);
    EXPECT_EQ(system->playSound(FMOD_CHANNEL_FREE, sound, false, &channel), FMOD_ERR_UNINITIALIZED);
    EXPECT_EQ(system->getSpectrum(spectrum.data(), 512, 0, FMOD_DSP_FFT_WINDOW_TRIANGLE),
              FMOD_ERR_UNINITIALIZED);
}

TEST_F(StartedSystemTest, IsInitialisedOnce) {
    EXPECT_EQ(system->init(1, FMOD_INIT_NORMAL, nullptr), FMOD_ERR_INITIALIZED);
}

TEST_F(StartedSystemTest, EndsItsOutputWithClose) {
    Play(Open(Encoded()));

    EXPECT_EQ(system->close(), FMOD_OK);

    EXPECT_FALSE(script::IsStarted());
    EXPECT_EQ(system->update(), FMOD_ERR_UNINITIALIZED);
}

TEST_F(StartedSystemTest, MayBeInitialisedAgainAfterClose) {
    ASSERT_EQ(system->close(), FMOD_OK);

    Init();
    FMOD::Channel* channel = Play(Open(Encoded()));
    script::Pull(4410);
    script::HearAll();

    EXPECT_EQ(Position(channel), 100U);
}

TEST_F(StartedSystemTest, TellsApartWhyAFileCannotBeOpened) {
    files::WriteAll(folder.Path("text.mp3"), {'t', 'e', 'x', 't'});

    EXPECT_EQ(Create(folder.Path("nowhere.mp3")), FMOD_ERR_FILE_NOTFOUND);
    EXPECT_EQ(Create(""), FMOD_ERR_FILE_NOTFOUND);
    EXPECT_EQ(Create(folder.Path("")), FMOD_ERR_FILE_BAD);
    EXPECT_EQ(Create(folder.Path("text.mp3")), FMOD_ERR_FORMAT);
}

TEST_F(StartedSystemTest, RefusesArgumentsOfCreateSoundOutOfTheirRange) {
    const std::string path = Encoded();
    FMOD::Sound* sound = nullptr;
    int place = 0;
    auto* const exInfo = reinterpret_cast<FMOD_CREATESOUNDEXINFO*>(&place);

    EXPECT_EQ(system->createSound(nullptr, streamed, nullptr, &sound), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(system->createSound(path.c_str(), streamed, nullptr, nullptr),
              FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(system->createSound(path.c_str(), streamed, exInfo, &sound), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(system->createSound(path.c_str(), streamed | 0x10000, nullptr, &sound),
              FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(sound, nullptr);
}

TEST_F(StartedSystemTest, RefusesArgumentsOfPlaySoundOutOfTheirRange) {
    FMOD::Sound* sound = Open(Encoded());
    FMOD::Channel* channel = nullptr;
    int place = 0;
    auto* const stranger = reinterpret_cast<FMOD::Sound*>(&place);

    EXPECT_EQ(system->playSound(FMOD_CHANNEL_FREE, nullptr, false, &channel),
              FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(system->playSound(FMOD_CHANNEL_FREE, stranger, false, &channel),
              FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(system->playSound(FMOD_CHANNEL_FREE, sound, false, nullptr), FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(system->playSound(static_cast<FMOD_CHANNELINDEX>(2), sound, false, &channel),
              FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(system->playSound(static_cast<FMOD_CHANNELINDEX>(-2), sound, false, &channel),
              FMOD_ERR_INVALID_PARAM);
    EXPECT_EQ(channel, nullptr);
}

TEST_F(StartedSystemTest, GivesTheDeviceAMomentBeforeItPlays) {
    FMOD::Sound* sound = Open(Encoded());
    EXPECT_EQ(script::DevicesAwaited(), 0);

    Play(sound);

    EXPECT_EQ(script::DevicesAwaited(), 1);
}

TEST_F(StartedSystemTest, PlaysAsManySoundsAsItHasChannels) {
    FMOD::Sound* low = Open(Encoded());
    files::EncodeMp3(folder.Path("high.mp3"), tone::Sine(44100.0, 2000.0, 2000.0, 0.25, 44100),
                     44100);
    FMOD::Sound* high = Open(folder.Path("high.mp3"));

    EXPECT_NE(Play(low), Play(high));
    const auto left = tone::Side(script::Pull(30000), 0);

    EXPECT_NEAR(tone::Measure(left, 44100.0, 441.0).amplitude, 0.5, 0.01);
    EXPECT_NEAR(tone::Measure(left, 44100.0, 2000.0).amplitude, 0.25, 0.01);
}

TEST_F(StartedSystemTest, TakesAChannelFromItsSoundWhenNoneIsFree) {
    FMOD::Sound* first = Open(Encoded());
    FMOD::Sound* second = Open(Encoded());
    FMOD::Sound* third = Open(Encoded());
    FMOD::Channel* taken = Play(first);
    Play(second);
    script::Pull(10000);
    script::HearAll();

    EXPECT_EQ(Play(third), taken);
    EXPECT_EQ(Position(taken), 0U);
}

TEST_F(StartedSystemTest, KeepsTheMixWithinFullScale) {
    const auto loud = tone::Sine(44100.0, 441.0, 441.0, 0.9, 44100);
    files::EncodeMp3(folder.Path("loud.mp3"), loud, 44100);
    Play(Open(folder.Path("loud.mp3")));
    Play(Open(folder.Path("loud.mp3")));

    const auto mix = script::Pull(20000);

    EXPECT_EQ(*std::max_element(mix.begin(), mix.end()), 1.0F);
    EXPECT_EQ(*std::min_element(mix.begin(), mix.end()), -1.0F);
}

TEST_F(StartedSystemTest, FallsSilentWhenTheSoundIsReleased) {
    FMOD::Sound* sound = Open(Encoded());
    FMOD::Channel* channel = Play(sound);
    script::Pull(10000);

    EXPECT_EQ(sound->release(), FMOD_OK);

    const auto mix = script::Pull(1000);
    EXPECT_EQ(mix, std::vector<float>(2000, 0.0F));
    unsigned int position = 7;
    EXPECT_EQ(channel->getPosition(&position, FMOD_TIMEUNIT_MS), FMOD_ERR_INVALID_HANDLE);
    EXPECT_EQ(position, 7U);
}

TEST_F(StartedSystemTest, LeavesNothingToAskOfAChannelWhoseSoundIsReleased) {
    FMOD::Sound* sound = Open(Encoded());
    FMOD::Channel* channel = Play(sound);
    ASSERT_EQ(sound->release(), FMOD_OK);
    bool answer = true;

    EXPECT_EQ(channel->setVolume(0.5F), FMOD_ERR_INVALID_HANDLE);
    EXPECT_EQ(channel->setMute(false), FMOD_ERR_INVALID_HANDLE);
    EXPECT_EQ(channel->getMute(&answer), FMOD_ERR_INVALID_HANDLE);
    EXPECT_EQ(channel->setPaused(false), FMOD_ERR_INVALID_HANDLE);
    EXPECT_EQ(channel->getPaused(&answer), FMOD_ERR_INVALID_HANDLE);
    EXPECT_EQ(channel->isPlaying(&answer), FMOD_ERR_INVALID_HANDLE);
    EXPECT_TRUE(answer);
}

TEST_F(StartedSystemTest, PlaysSilenceWhenNothingPlays) {
    Open(Encoded());

    EXPECT_EQ(script::Pull(3000), std::vector<float>(6000, 0.0F));
}
