// What a sound server may do to the show: it goes on in real time whatever that is, and is heard
// again as soon as it can be.
#include "LiveFixture.h"

namespace {

class LiveFaultsTest : public LiveFixture {
protected:
    void SetUp() override {
        ASSERT_TRUE(server.IsRunning());
        server.BeginRecording(); // which also keeps the sink awake
    }

    // The music is over at @p lengthMs, and was heard again after it had been at @p backMs.
    void ExpectHeardAgain(unsigned int backMs, unsigned int lengthMs) {
        ExpectRealTime("after", Watch(2 * lengthMs, &server));
        EXPECT_EQ(Position(), lengthMs);
        ExpectInStep("after", server.EndRecording(), backMs, lengthMs - 100);
    }

    void ExpectSilentToTheEnd(unsigned int lengthMs) {
        ExpectRealTime("after", Watch(2 * lengthMs));
        EXPECT_EQ(Position(), lengthMs);
    }

    PrivateServer server;
};

} // namespace

TEST_F(LiveFaultsTest, KilledServerLeavesTheMusicGoingSilently) {
    OpenAndPlay(4.0);
    ExpectRealTime("before", Watch(1500));

    testing::internal::CaptureStderr();
    server.Kill();
    ExpectSilentToTheEnd(4000);

    EXPECT_EQ(testing::internal::GetCapturedStderr(), silentNotice);
}

TEST_F(LiveFaultsTest, RestartedServerIsHeardAgain) {
    OpenAndPlay(9.0);
    ExpectRealTime("before", Watch(1500));

    server.Restart();
    server.BeginRecording();
    ExpectHeardAgain(Position(), 9000);
}

TEST_F(LiveFaultsTest, ServerThatHungForSecondsIsHeardAgain) {
    OpenAndPlay(8.0);
    ExpectRealTime("before", Watch(1500));

    server.Stop();
    ExpectRealTime("hung", Watch(4500));
    server.Continue();
    ExpectHeardAgain(Position(), 8000);
}

TEST_F(LiveFaultsTest, ServerThatHungForAMomentIsHeardAgain) {
    OpenAndPlay(6.0);
    ExpectRealTime("before", Watch(1500));

    server.Stop();
    ExpectRealTime("hung", Watch(2000));
    server.Continue();
    ExpectHeardAgain(Position(), 6000);
}

TEST_F(LiveFaultsTest, ServerThatHangsLeavesTheMusicGoingSilently) {
    OpenAndPlay(4.0);
    ExpectRealTime("before", Watch(1500));

    server.Stop();
    ExpectSilentToTheEnd(4000);
    Release();
}

TEST_F(LiveFaultsTest, ServerThatHungAndDiedIsReplaced) {
    OpenAndPlay(9.0);
    ExpectRealTime("before", Watch(1500));

    server.Stop();
    ExpectRealTime("hung", Watch(2500));
    server.Restart();
    server.BeginRecording();
    ExpectHeardAgain(Position(), 9000);
}

TEST_F(LiveFaultsTest, ServerThatIsGoneWhenTheMusicStartsIsNotWaitedFor) {
    Open(3.0);

    server.Kill();
    Play();
    ExpectSilentToTheEnd(3000);
}

TEST_F(LiveFaultsTest, ServerThatHangsFromTheStartIsHeardOnceItGoesOn) {
    server.Stop();
    OpenAndPlay(5.0);
    ExpectRealTime("hung", Watch(1500));

    server.Continue();
    ExpectHeardAgain(Position(), 5000);
}

TEST_F(LiveFaultsTest, ServerThatHangsWhenTheMusicStartsIsHeardOnceItGoesOn) {
    Open(5.0);

    server.Stop();
    Play();
    ExpectRealTime("hung", Watch(1500));
    server.Continue();
    ExpectHeardAgain(Position(), 5000);
}
