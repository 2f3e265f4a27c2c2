// How ffmpeg is called, as far as a finished file does not show it.
#include "FfmpegArguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using record::FfmpegArguments;
using testing::IsSupersetOf;

namespace {

/// What stands behind each @p name.
std::vector<std::string> Values(const std::vector<std::string>& arguments,
                                const std::string& name) {
    std::vector<std::string> values;
    for (auto it = arguments.begin();
         (it = std::find(it, arguments.end(), name)) != arguments.end(); ++it) {
        values.push_back(*(it + 1));
    }
    return values;
}

using Strings = std::vector<std::string>;

TEST(FfmpegArguments, ReadPicturesThenSoundFromTheirPipes) {
    const Strings all = FfmpegArguments({"mp4", 640, 480}, 7, 9, "out.part");
    EXPECT_EQ(Values(all, "-i"), (Strings{"pipe:7", "pipe:9"}));
    EXPECT_EQ(Values(all, "-video_size"), Strings{"640x480"});
    EXPECT_EQ(Values(all, "-framerate"), Strings{"40"});
    EXPECT_EQ(Values(all, "-ar"), Strings{"44100"});
}

TEST(FfmpegArguments, NameTheFormatForThePathDoesNot) {
    const auto format = [](const char* extension) {
        return Values(FfmpegArguments({extension, 640, 480}, 7, 9, "out.part"), "-f").back();
    };
    EXPECT_EQ(format("mp4"), "mp4");
    EXPECT_EQ(format("mkv"), "matroska");
    EXPECT_EQ(format("webm"), "webm");
}

TEST(FfmpegArguments, APathIsNeverTakenForAnOptionOrAProtocol) {
    EXPECT_EQ(FfmpegArguments({"mp4", 640, 480}, 7, 9, "-a:b").back(), "file:-a:b");
}

TEST(FfmpegArguments, EndWithAFailureWhateverCannotBeWritten) {
    EXPECT_THAT(FfmpegArguments({"mp4", 640, 480}, 7, 9, "out.part"), IsSupersetOf({"-xerror"}));
}

} // namespace
