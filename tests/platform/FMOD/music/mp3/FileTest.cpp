// Opening and reading a file.
#include "File.h"

#include "Mp3Files.h"
#include "ReadScript.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

using sound::File;

class FileTest : public testing::Test {
protected:
    FMOD_RESULT Open(const std::string& path) { return File::Open(path.c_str(), file); }

    files::Folder folder;
    std::unique_ptr<File> file;
};

TEST_F(FileTest, IsNotFoundWhenThereIsNone) {
    EXPECT_EQ(Open(folder.Path("nowhere")), FMOD_ERR_FILE_NOTFOUND);
    EXPECT_EQ(Open(folder.Path("nowhere/file")), FMOD_ERR_FILE_NOTFOUND);
    EXPECT_EQ(Open(""), FMOD_ERR_FILE_NOTFOUND);
    EXPECT_EQ(Open(std::string(10000, 'x')), FMOD_ERR_FILE_NOTFOUND);
}

TEST_F(FileTest, IsNotFoundBelowAnotherFile) {
    files::WriteAll(folder.Path("file"), {1});

    EXPECT_EQ(Open(folder.Path("file/inside")), FMOD_ERR_FILE_NOTFOUND);
}

TEST_F(FileTest, IsBadWhenItIsAFolder) {
    EXPECT_EQ(Open(folder.Path("")), FMOD_ERR_FILE_BAD);
}

TEST_F(FileTest, IsBadWhenItIsAPipeThatNobodyWritesTo) {
    ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);

    EXPECT_EQ(Open(folder.Path("pipe")), FMOD_ERR_FILE_BAD);
}

TEST_F(FileTest, IsBadWhenItMayNotBeRead) {
    files::WriteAll(folder.Path("file"), {1});
    ASSERT_EQ(chmod(folder.Path("file").c_str(), 0000), 0);
    ASSERT_EQ(chmod(folder.Path("").c_str(), 0755), 0);

    // The superuser may read everything; for this call this thread is somebody else.
    const int before = setfsuid(geteuid() == 0 ? 65534 : geteuid());
    const FMOD_RESULT result = Open(folder.Path("file"));
    setfsuid(static_cast<uid_t>(before));

    EXPECT_EQ(result, FMOD_ERR_FILE_BAD);
}

TEST_F(FileTest, TakesMemoryThatRanOutForWhatItIs) {
    files::WriteAll(folder.Path("file"), {1});
    const std::string path = folder.Path("file");
    std::unique_ptr<File> none;
    std::vector<int> taken;
    for (int null = open("/dev/null", O_RDONLY); null >= 0; null = open("/dev/null", O_RDONLY)) {
        taken.push_back(null);
    }

    const FMOD_RESULT result = File::Open(path.c_str(), none);
    for (const int descriptor : taken) {
        close(descriptor);
    }

    EXPECT_EQ(result, FMOD_ERR_MEMORY);
}

TEST_F(FileTest, ReadsLessOnlyAtTheEnd) {
    files::WriteAll(folder.Path("file"), {1, 2, 3, 4, 5});
    ASSERT_EQ(Open(folder.Path("file")), FMOD_OK);
    std::array<unsigned char, 3> bytes = {};

    EXPECT_EQ(file->Size(), 5);
    EXPECT_EQ(file->Read(bytes.data(), 3), 3);
    EXPECT_EQ(file->Read(bytes.data(), 3), 2);
    EXPECT_EQ(file->Read(bytes.data(), 3), 0);
    EXPECT_FALSE(file->Failed());
}

TEST_F(FileTest, RemembersThatReadingFailed) {
    files::WriteAll(folder.Path("file"), {1, 2, 3});
    ASSERT_EQ(Open(folder.Path("file")), FMOD_OK);
    std::array<unsigned char, 2> bytes = {};
    reads::Reset();
    reads::FailAfter(2);

    EXPECT_EQ(file->Read(bytes.data(), 2), 2);
    EXPECT_FALSE(file->Failed());
    EXPECT_EQ(file->Read(bytes.data(), 2), -1);
    EXPECT_TRUE(file->Failed());
    reads::Reset();
}

TEST_F(FileTest, ReadsNoMoreOnceInterrupted) {
    files::WriteAll(folder.Path("file"), {1, 2, 3});
    ASSERT_EQ(Open(folder.Path("file")), FMOD_OK);
    std::array<unsigned char, 2> bytes = {};

    file->Interrupt();

    EXPECT_EQ(file->Read(bytes.data(), 2), -1);
    EXPECT_FALSE(file->Failed());
    file->Resume();
    EXPECT_EQ(file->Read(bytes.data(), 2), 2);
}

TEST_F(FileTest, ReadsNoMoreThanIsAllowed) {
    files::WriteAll(folder.Path("file"), {1, 2, 3, 4, 5, 6, 7});
    ASSERT_EQ(Open(folder.Path("file")), FMOD_OK);
    std::array<unsigned char, 2> bytes = {};

    file->Allow(3);
    EXPECT_EQ(file->Read(bytes.data(), 2), 2);
    EXPECT_EQ(file->Read(bytes.data(), 2), 1);
    EXPECT_EQ(file->Read(bytes.data(), 2), 0);
    EXPECT_FALSE(file->Failed());
    file->Allow(3);
    EXPECT_EQ(file->Read(bytes.data(), 2), 2);
    EXPECT_EQ(bytes[0], 4);
}
