// What a sound server may do to the show: it goes on in real time whatever that is, and is heard
// again as soon as it can be.
#include "LiveFixture.h"

namespace {

class LiveFaultsTest : public LiveServerFixture {
protected:
    void ExpectSilentToTheEnd(unsigned int lengthMs) {
        ExpectRealTime("after", Watch(2 * lengthMs));
        EXPECT_EQ(Position(), lengthMs);
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(EachServer, LiveFaultsTest, EachServer(), NameOf);

TEST_P(LiveFaultsTest, KilledServerLeavesTheMusicGoingSilently) {
    OpenAndPlay(4.0);
    ExpectRealTime("before", Watch(1500));

    testing::internal::CaptureStderr();
    server->Kill();
    ExpectSilentToTheEnd(4000);

    EXPECT_EQ(testing::internal::GetCapturedStderr(), silentNotice);
}

TEST_P(LiveFaultsTest, RestartedServerIsHeardAgain) {
    OpenAndPlay(9.0);
    ExpectRealTime("before", Watch(1500));

    server->Restart();
    server->BeginRecording();
    ExpectHeardAgain(*server, Position(), 9000);
}

TEST_P(LiveFaultsTest, ServerThatHungForSecondsIsHeardAgain) {
    OpenAndPlay(8.0);
    ExpectRealTime("before", Watch(1500));

    server->Stop();
    ExpectRealTime("hung", Watch(4500));
    server->Continue();
    ExpectHeardAgain(*server, Position(), 8000);
}

TEST_P(LiveFaultsTest, ServerThatHungForAMomentIsHeardAgain) {
    OpenAndPlay(7.0);
    ExpectRealTime("before", Watch(1500));

    server->Stop();
    ExpectRealTime("hung", Watch(Position() + 2000));
    server->Continue();
    ExpectHeardAgain(*server, Position(), 7000);
}

TEST_P(LiveFaultsTest, ServerThatHangsLeavesTheMusicGoingSilently) {
    OpenAndPlay(4.0);
    ExpectRealTime("before", Watch(1500));

    server->Stop();
    ExpectSilentToTheEnd(4000);
    Release();
}

TEST_P(LiveFaultsTest, ServerThatHungAndDiedIsReplaced) {
    OpenAndPlay(10.0);
    ExpectRealTime("before", Watch(1500));

    server->Stop();
    ExpectRealTime("hung", Watch(Position() + 2000));
    server->Restart();
    server->BeginRecording();
    ExpectHeardAgain(*server, Position(), 10'000);
}

TEST_P(LiveFaultsTest, ServerThatIsGoneWhenTheMusicStartsIsNotWaitedFor) {
    Open(3.0);

    server->Kill();
    Play();
    ExpectSilentToTheEnd(3000);
}

TEST_P(LiveFaultsTest, ServerThatHangsFromTheStartIsHeardOnceItGoesOn) {
    server->Stop();
    OpenAndPlay(5.5);
    ExpectRealTime("hung", Watch(2000));

    server->Continue();
    ExpectHeardAgain(*server, Position(), 5500);
}

TEST_P(LiveFaultsTest, ServerThatHangsWhenTheMusicStartsIsHeardOnceItGoesOn) {
    Open(5.5);

    server->Stop();
    Play();
    ExpectRealTime("hung", Watch(2000));
    server->Continue();
    ExpectHeardAgain(*server, Position(), 5500);
}
