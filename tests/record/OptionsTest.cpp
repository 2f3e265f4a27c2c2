// The recorder's command line.
#include "Options.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using record::Options;
using record::ParseOptions;
using record::UsageError;

namespace {

Options Parse(const std::vector<const char*>& arguments) {
    return ParseOptions(arguments);
}

TEST(Options, AreADefaultSizeWithoutTraceForAVideoAlone) {
    const Options options = Parse({"show.mp4"});
    EXPECT_EQ(options.video, "show.mp4");
    EXPECT_EQ(options.width, 1024);
    EXPECT_EQ(options.height, 768);
    EXPECT_FALSE(options.trace);
    EXPECT_TRUE(options.wav.empty());
    EXPECT_TRUE(options.framesFolder.empty());
    EXPECT_TRUE(options.stills.empty());
}

TEST(Options, TakeTheirValuesJoinedOrBehind) {
    const Options options = Parse({"--size=640x480", "--frames", "folder", "--wav=a.wav", "--trace",
                                   "--still", "5000=a=b.png", "--still=0=c.PNG", "show.MKV"});
    EXPECT_EQ(options.width, 640);
    EXPECT_EQ(options.height, 480);
    EXPECT_EQ(options.framesFolder, "folder");
    EXPECT_EQ(options.wav, "a.wav");
    EXPECT_TRUE(options.trace);
    EXPECT_EQ(options.video, "show.MKV");
    ASSERT_EQ(options.stills.size(), 2U);
    EXPECT_EQ(options.stills[0].ms, 5000);
    EXPECT_EQ(options.stills[0].path, "a=b.png");
    EXPECT_EQ(options.stills[1].ms, 0);
    EXPECT_EQ(options.stills[1].path, "c.PNG");
}

TEST(Options, AStillIsThePictureThatIsToBeSeenThen) {
    EXPECT_EQ(Parse({"--still", "24=a.png"}).stills[0].ms, 0);
    EXPECT_EQ(Parse({"--still", "25=a.png"}).stills[0].ms, 25);
    EXPECT_EQ(Parse({"--still", "14999=a.png"}).stills[0].ms, 14975);
    EXPECT_EQ(Parse({"--still", "33000=a.png"}).stills[0].ms, 33000);
}

TEST(Options, OddSizesAreForPicturesNotForVideos) {
    EXPECT_EQ(Parse({"--size", "33x17", "--still", "0=a.png"}).width, 33);
    EXPECT_THROW(Parse({"--size", "33x18", "show.mp4"}), UsageError);
    EXPECT_THROW(Parse({"--size", "34x17", "show.mp4"}), UsageError);
}

TEST(Options, HelpAndVersionNeedNothingToRecord) {
    EXPECT_TRUE(Parse({"--help"}).help);
    EXPECT_TRUE(Parse({"--version"}).version);
}

TEST(Options, ExtensionIsWhatFollowsTheLastDotOfTheName) {
    EXPECT_EQ(record::Extension("a.b/show.MP4"), "mp4");
    EXPECT_EQ(record::Extension("a.b/show"), "");
}

TEST(Options, UsageNamesEachOfThem) {
    for (const char* name : {"--size", "--frames", "--still", "--wav", "--trace", "--help",
                             "--version", ".mp4", ".mkv", ".webm"}) {
        EXPECT_NE(record::UsageText().find(name), std::string::npos) << name;
    }
}

class WrongOptions : public testing::TestWithParam<std::vector<const char*>> {};

TEST_P(WrongOptions, AreRefused) {
    EXPECT_THROW(Parse(GetParam()), UsageError);
}

const std::vector<std::vector<const char*>> wrong = {
    {},
    {"--trace"},
    {"--fast", "show.mp4"},
    {"--trace=yes", "show.mp4"},
    {"-", "show.mp4"},
    {"show.avi"},
    {"show"},
    {"one.mp4", "two.mp4"},
    {"--size", "show.mp4"},
    {"show.mp4", "--size"},
    {"show.mp4", "--size", "640"},
    {"show.mp4", "--size", "640x"},
    {"show.mp4", "--size", "x480"},
    {"show.mp4", "--size", "640x480x"},
    {"show.mp4", "--size", "640 x 480"},
    {"show.mp4", "--size", "0x480"},
    {"show.mp4", "--size", "-2x480"},
    {"show.mp4", "--size", "16386x480"},
    {"show.mp4", "--size", "99999999999999999999x480"},
    {"--still"},
    {"--still", "5000"},
    {"--still", "5000="},
    {"--still", "=a.png"},
    {"--still", "5000=a.jpg"},
    {"--still", "5s=a.png"},
    {"--still", "-25=a.png"},
    {"--still", "33001=a.png"},
    {"--wav"},
    {"--wav="},
    {"--frames", ""},
    {"--wav", "a.wav", "--wav", "b.wav"},
    {"--still", "0=a.png", "--still", "25=a.png"},
    {"show.mp4", "--wav", "show.mp4"},
};

INSTANTIATE_TEST_SUITE_P(Each, WrongOptions, testing::ValuesIn(wrong));

} // namespace
