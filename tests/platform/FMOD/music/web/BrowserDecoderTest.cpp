// Music that the browser decodes; the browser does what the test says.
#include "BrowserDecoder.h"

#include "Mp3Files.h"
#include "Stream.h"
#include "Tone.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

using files::Bytes;
using files::Folder;
using sound::Stream;
using namespace std::chrono_literals;

namespace {

struct Browser {
    Bytes bytes;
    std::int32_t frames = -1;
    int begun = 0;
    int forgotten = 0;
};

Browser browser;

class BrowserDecoderTest : public testing::Test {
protected:
    BrowserDecoderTest() { browser = Browser(); }

    FMOD_RESULT Open(const std::string& path) { return Stream::Open(path.c_str(), stream); }

    std::string Write(const Bytes& bytes) {
        files::WriteAll(folder.Path("input.mp3"), bytes);
        return folder.Path("input.mp3");
    }

    static Bytes Music() {
        const Folder own;
        files::EncodeMp3(own.Path("tone.mp3"), tone::Sine(44100.0, 440.0, 440.0, 0.5, 44100),
                         44100);
        return files::ReadAll(own.Path("tone.mp3"));
    }

    // What is read in one go, in blocks of the voice's size.
    std::vector<float> ReadAll() {
        std::vector<float> all;
        std::vector<float> block(std::size_t{2} * 512);
        for (;;) {
            const std::size_t got = stream->Read(block.data(), 512);
            all.insert(all.end(), block.begin(), block.begin() + static_cast<long>(2 * got));
            if (got < 512) {
                return all;
            }
        }
    }

    Folder folder;
    std::unique_ptr<Stream> stream;
};

} // namespace

int SkovraMusicBegin(const unsigned char* bytes, std::uint32_t size, std::uint32_t rateHz) {
    EXPECT_EQ(rateHz, 44100U);
    browser.bytes.assign(bytes, bytes + size);
    return 6 + ++browser.begun;
}

std::int32_t SkovraMusicFrames(int music) {
    EXPECT_EQ(music, 7);
    return browser.frames;
}

// The left side counts up, the right side down.
void SkovraMusicCopy(int music, std::int32_t first, std::int32_t count, float* frames) {
    EXPECT_EQ(music, 7);
    EXPECT_LE(first + count, browser.frames);
    for (std::int32_t i = first; i < first + count; ++i) {
        *frames++ = static_cast<float>(i);
        *frames++ = static_cast<float>(-i);
    }
}

void SkovraMusicForget(int music) {
    EXPECT_EQ(music, 7);
    ++browser.forgotten;
}

TEST_F(BrowserDecoderTest, HandsTheBrowserWhatIsBehindTheTags) {
    const Bytes music = Music();

    EXPECT_EQ(Open(Write(files::Joined({files::Tag(5000, 5000), music}))), FMOD_OK);

    EXPECT_EQ(browser.bytes, music);
}

TEST_F(BrowserDecoderTest, SaysAtOnceWhichFilesAreNoMusic) {
    EXPECT_EQ(Open(folder.Path("nothing")), FMOD_ERR_FILE_NOTFOUND);
    EXPECT_EQ(Open(""), FMOD_ERR_FILE_NOTFOUND);
    EXPECT_EQ(Open(folder.Path("")), FMOD_ERR_FILE_BAD);
    EXPECT_EQ(Open(Write({})), FMOD_ERR_FORMAT);
    EXPECT_EQ(Open(Write(files::Noise(100'000))), FMOD_ERR_FORMAT);
    EXPECT_EQ(browser.begun, 0);
}

TEST_F(BrowserDecoderTest, HasNothingUntilTheBrowserIsReady) {
    ASSERT_EQ(Open(Write(Music())), FMOD_OK);
    stream->WaitUntilReady(4410, 10ms);
    EXPECT_EQ(stream->Available(), 0U);
    EXPECT_EQ(stream->GetSupply(), Stream::Supply::Decoding);
    EXPECT_EQ(ReadAll(), std::vector<float>());

    browser.frames = 100'000;
    float none = 0.0F;
    EXPECT_EQ(stream->Read(&none, 0), 0U); // as a voice does that has none to read

    EXPECT_EQ(stream->Available(), 44100U);
}

TEST_F(BrowserDecoderTest, GivesEachFrameOnce) {
    ASSERT_EQ(Open(Write(Music())), FMOD_OK);
    browser.frames = 100'001;
    stream->WaitUntilReady(4410, 10ms);

    const auto all = ReadAll();

    ASSERT_EQ(all.size(), 2U * 100'001);
    for (std::size_t i = 0; i < all.size() / 2; ++i) {
        ASSERT_EQ(all[2 * i], static_cast<float>(i));
        ASSERT_EQ(all[2 * i + 1], -static_cast<float>(i));
    }
    EXPECT_EQ(stream->GetSupply(), Stream::Supply::Ended);
}

TEST_F(BrowserDecoderTest, IsBrokenWhereTheBrowserRefuses) {
    ASSERT_EQ(Open(Write(Music())), FMOD_OK);
    browser.frames = -2;

    stream->WaitUntilReady(4410, 10ms);

    EXPECT_EQ(stream->GetSupply(), Stream::Supply::Broken);
    EXPECT_EQ(stream->Available(), 0U);
}

TEST_F(BrowserDecoderTest, IsPlayedAgainWithoutBeingDecodedAgain) {
    ASSERT_EQ(Open(Write(Music())), FMOD_OK);
    browser.frames = 1000;
    stream->WaitUntilReady(4410, 10ms);
    const auto first = ReadAll();

    EXPECT_EQ(stream->Rewind(), FMOD_OK);
    stream->WaitUntilReady(4410, 10ms);

    EXPECT_EQ(stream->Available(), 1000U);
    EXPECT_EQ(ReadAll(), first);
    EXPECT_EQ(browser.begun, 1);
}

TEST_F(BrowserDecoderTest, LetsGoOfTheMusic) {
    ASSERT_EQ(Open(Write(Music())), FMOD_OK);

    stream.reset();

    EXPECT_EQ(browser.forgotten, 1);
}
