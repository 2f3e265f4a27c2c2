// The files that a recording leaves, one by one.
#include "Picture.h"
#include "PictureComparison.h"
#include "PngWriter.h"
#include "UnfinishedFile.h"
#include "WavFile.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

using record::Picture;
using record::UnfinishedFile;
using record::WavFile;

// Files of others, and who may give a file away: root alone has either.
namespace owners {

struct Owner {
    uid_t user;
    gid_t group;
    bool operator==(const Owner&) const = default;
};

constexpr uid_t unchanged = static_cast<uid_t>(-1);

// By path.
static std::map<std::string, Owner> former; ///< of what is replaced
static std::map<std::string, Owner> given;  ///< what was not refused

static bool mayGiveAway = true;

} // namespace owners

// The names that the linker's --wrap gives.
extern "C" {
int __real_stat(const char* path, struct stat* status);
int __wrap_stat(const char* path, struct stat* status);
int __wrap_chown(const char* path, uid_t user, gid_t group);
}

int __wrap_stat(const char* path, struct stat* status) {
    const int result = __real_stat(path, status);
    if (const auto found = owners::former.find(path); found != owners::former.end()) {
        status->st_uid = found->second.user;
        status->st_gid = found->second.group;
    }
    return result;
}

int __wrap_chown(const char* path, uid_t user, gid_t group) {
    if (!owners::mayGiveAway && user != owners::unchanged) {
        errno = EPERM;
        return -1;
    }
    owners::given[path] = {user, group};
    return 0;
}

namespace {

namespace fs = std::filesystem;

class Files : public testing::Test {
protected:
    Files() {
        std::string name = testing::TempDir() + "record.XXXXXX";
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no folder to write to");
        }
        folder = name;
        owners::former.clear();
        owners::mayGiveAway = true;
        owners::given.clear();
    }
    ~Files() override { fs::remove_all(folder); }

    std::string Path(const std::string& name) const { return folder / name; }

    static void Write(const std::string& path, const std::string& text) {
        std::ofstream(path) << text;
    }

    static std::string Read(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    std::ptrdiff_t Count() const {
        return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    }

    fs::path folder;
};

TEST_F(Files, UnfinishedOneHasItsNameOnlyOnceItIsKept) {
    UnfinishedFile file(Path("a"));
    Write(file.Path(), "whole");
    EXPECT_FALSE(fs::exists(Path("a")));
    file.Commit();
    EXPECT_EQ(Read(Path("a")), "whole");
    EXPECT_EQ(Count(), 1);
}

TEST_F(Files, UnfinishedOneGoesAndLeavesTheFormerAsItWas) {
    Write(Path("a"), "former");
    {
        UnfinishedFile file(Path("a"));
        Write(file.Path(), "half");
    }
    EXPECT_EQ(Read(Path("a")), "former");
    EXPECT_EQ(Count(), 1);
}

TEST_F(Files, KeptOneTakesThePlaceOfTheFormer) {
    Write(Path("a"), "former");
    UnfinishedFile file(Path("a"));
    Write(file.Path(), "new");
    file.Commit();
    EXPECT_EQ(Read(Path("a")), "new");
}

TEST_F(Files, NeitherFolderNorDeviceIsReplaced) {
    fs::create_directory(Path("folder"));
    EXPECT_THROW(UnfinishedFile(Path("folder")), std::runtime_error);
    EXPECT_THROW(UnfinishedFile("/dev/null"), std::runtime_error);
    EXPECT_THROW(UnfinishedFile(Path("none/a")), std::runtime_error);
    EXPECT_EQ(Count(), 1);
}

TEST_F(Files, LinkIsFollowedToAFileThatIsNotThereYet) {
    fs::create_directory(Path("folder"));
    fs::create_symlink("folder/second", Path("first"));
    fs::create_symlink("../real", Path("folder/second"));
    UnfinishedFile file(Path("first"));
    Write(file.Path(), "whole");
    file.Commit();
    EXPECT_EQ(fs::read_symlink(Path("first")), "folder/second");
    EXPECT_EQ(fs::read_symlink(Path("folder/second")), "../real");
    EXPECT_FALSE(fs::is_symlink(Path("real")));
    EXPECT_EQ(Read(Path("real")), "whole");
    EXPECT_EQ(Count(), 3);
}

TEST_F(Files, LinkThatLeadsNowhereIsSaid) {
    fs::create_symlink("none/file", Path("a"));
    fs::create_symlink("loop", Path("loop"));
    const auto says = [this](const std::string& name) {
        try {
            const UnfinishedFile file(Path(name));
            return std::string("nothing");
        } catch (const std::runtime_error& failure) {
            return std::string(failure.what());
        }
    };
    EXPECT_EQ(says("a"), "No such file or directory");
    EXPECT_EQ(says("loop"), "Too many levels of symbolic links");
    EXPECT_EQ(Count(), 2);
}

TEST_F(Files, KeptOneHasThePermissionsOfTheFormer) {
    for (const unsigned int mode : {0600U, 0444U, 0640U, 0777U}) {
        Write(Path("a"), "former");
        fs::permissions(Path("a"), static_cast<fs::perms>(mode));
        UnfinishedFile file(Path("a"));
        EXPECT_EQ(fs::status(file.Path()).permissions(),
                  fs::perms::owner_read | fs::perms::owner_write);
        Write(file.Path(), "new");
        file.Commit();
        EXPECT_EQ(fs::status(Path("a")).permissions(), static_cast<fs::perms>(mode));
        EXPECT_EQ(Read(Path("a")), "new");
        fs::remove(Path("a"));
    }
}

TEST_F(Files, NewOneHasThePermissionsOfAnyNewFile) {
    Write(Path("other"), "");
    UnfinishedFile(Path("a")).Commit();
    EXPECT_EQ(fs::status(Path("a")).permissions(), fs::status(Path("other")).permissions());
}

TEST_F(Files, KeptOneHasTheOwnerOfTheFormer) {
    Write(Path("a"), "former");
    owners::former = {{Path("a"), {.user = 1001, .group = 1002}}};
    UnfinishedFile file(Path("a"));
    const std::map<std::string, owners::Owner> expected = {
        {file.Path(), {.user = 1001, .group = 1002}}};

    file.Commit();

    EXPECT_EQ(owners::given, expected);
}

TEST_F(Files, WhoMayNotGiveItAwayKeepsItsGroup) {
    Write(Path("a"), "former");
    owners::former = {{Path("a"), {.user = 1001, .group = 1002}}};
    owners::mayGiveAway = false;
    UnfinishedFile file(Path("a"));
    const std::map<std::string, owners::Owner> expected = {
        {file.Path(), {.user = owners::unchanged, .group = 1002}}};

    file.Commit();

    EXPECT_EQ(owners::given, expected);
    EXPECT_TRUE(fs::exists(Path("a")));
}

TEST_F(Files, NameMayBeAsLongAsTheSystemAllows) {
    const std::string beginning(240, 'n');
    UnfinishedFile first(Path(beginning + std::string(15, '1')));
    UnfinishedFile second(Path(beginning + std::string(15, '2')));
    first.Commit();
    second.Commit();
    EXPECT_TRUE(fs::exists(Path(beginning + std::string(15, '1'))));
    EXPECT_TRUE(fs::exists(Path(beginning + std::string(15, '2'))));
    EXPECT_EQ(Count(), 2);
}

TEST_F(Files, LongNameIsCutBetweenLetters) {
    for (const std::string start : {"", "n"}) {
        std::string letters = start;
        while (letters.size() < 100) {
            letters += "\u00F8";
        }
        const UnfinishedFile file(Path(letters));
        const std::string name = fs::path(file.Path()).filename();
        EXPECT_LE(name.size(), letters.size());
        const std::string kept = name.substr(0, name.find('.'));
        EXPECT_EQ(kept.size() % 2, start.size()) << kept;
        EXPECT_TRUE(letters.starts_with(kept));
    }
}

TEST_F(Files, PngHasThePicturesRowsFromTheTopDown) {
    Picture picture(2, 3);
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        picture.pixels[i] = static_cast<unsigned char>(10 * i); // alpha is left out
    }
    record::WritePng(picture, Path("a.png"));
    const recordtest::Image image = recordtest::ReadPng(Path("a.png"));
    EXPECT_EQ(image.width, 2);
    EXPECT_EQ(image.height, 3);
    EXPECT_EQ(image.bytes, (std::vector<unsigned char>{160, 170, 180, 200, 210, 220, //
                                                       80, 90, 100, 120, 130, 140,   //
                                                       0, 10, 20, 40, 50, 60}));
}

TEST_F(Files, PngThatCannotBeWrittenIsSaid) {
    EXPECT_THROW(record::WritePng(Picture(2, 2), Path("none/a.png")), std::runtime_error);
    EXPECT_THROW(record::WritePng(Picture(200, 200), "/dev/full"), std::runtime_error);
}

template <typename Number>
Number At(const std::string& bytes, std::size_t offset) {
    Number number = 0;
    std::memcpy(&number, bytes.data() + offset, sizeof(number));
    return number;
}

TEST_F(Files, WavTellsWhatItHoldsAndHoldsTheSamples) {
    const std::array<float, 4> samples = {0.5F, -0.25F, 1.0F, -1.0F};
    WavFile wav(Path("a.wav"));
    wav.Add(samples);
    wav.Add(samples);
    wav.Finish();
    const std::string bytes = Read(Path("a.wav"));
    ASSERT_EQ(bytes.size(), 56U + 32U);
    EXPECT_EQ(bytes.substr(0, 4), "RIFF");
    EXPECT_EQ(At<std::uint32_t>(bytes, 4), bytes.size() - 8);
    EXPECT_EQ(bytes.substr(8, 8), "WAVEfmt ");
    EXPECT_EQ(At<std::uint16_t>(bytes, 20), 3) << "float";
    EXPECT_EQ(At<std::uint16_t>(bytes, 22), 2) << "channels";
    EXPECT_EQ(At<std::uint32_t>(bytes, 24), 44100U);
    EXPECT_EQ(At<std::uint32_t>(bytes, 28), 44100U * 8);
    EXPECT_EQ(At<std::uint16_t>(bytes, 32), 8);
    EXPECT_EQ(At<std::uint16_t>(bytes, 34), 32);
    EXPECT_EQ(At<std::uint32_t>(bytes, 44), 4U) << "frames";
    EXPECT_EQ(bytes.substr(48, 4), "data");
    EXPECT_EQ(At<std::uint32_t>(bytes, 52), 32U);
    EXPECT_EQ(At<float>(bytes, 56), 0.5F);
    EXPECT_EQ(At<float>(bytes, 84), -1.0F);
}

TEST_F(Files, WavThatCannotBeWrittenIsSaid) {
    EXPECT_THROW(WavFile(Path("none/a.wav")), std::runtime_error);
    WavFile wav("/dev/full");
    wav.Add(std::array<float, 2>{});
    EXPECT_THROW(wav.Finish(), std::runtime_error);
}

} // namespace
