// Where the bundle finds resources, asked of a program copied into folders made for each case.
#include <CoreFoundation/CoreFoundation.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;

class MainBundle : public testing::Test {
protected:
    MainBundle() {
        auto pattern = (fs::temp_directory_path() / "bundle-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        root = fs::canonical(pattern);
        program = Install(root / "bin");
    }
    ~MainBundle() override { fs::remove_all(root); }
    MainBundle(const MainBundle&) = delete;
    MainBundle& operator=(const MainBundle&) = delete;

    static fs::path Install(const fs::path& folder, const std::string& name = "program") {
        fs::create_directories(folder);
        fs::copy_file(BUNDLE_PATH, folder / name);
        return folder / name;
    }

    static fs::path Put(const fs::path& file) {
        fs::create_directories(file.parent_path());
        std::ofstream(file) << "content";
        return file;
    }

    /// What the program prints on that stream when it runs in the root folder of this case.
    std::string Ask(const fs::path& asked, const std::string& name, const std::string& type,
                    const std::string& stream = "2>&-") {
        const auto command = "cd '" + root.string() + "' && '" + asked.string() + "' '" + name +
                             "' '" + type + "' " + stream;
        std::FILE* output = popen(command.c_str(), "r");
        if (output == nullptr) {
            throw std::runtime_error(command);
        }
        std::string answer;
        for (int letter = std::fgetc(output); letter != EOF; letter = std::fgetc(output)) {
            answer += static_cast<char>(letter);
        }
        if (pclose(output) != 0) {
            throw std::runtime_error(command);
        }
        return answer;
    }

    /// A folder so deep that file "a.b" in its resources/ has a path of that many bytes.
    fs::path FolderForPathOf(std::size_t bytes) {
        auto folder = root;
        const std::string end = "/resources/a.b";
        while (bytes - end.size() - folder.string().size() > 200) {
            folder /= std::string(100, 'd');
        }
        folder /= std::string(bytes - end.size() - folder.string().size() - 1, 'e');
        return folder;
    }

    fs::path root;
    fs::path program; // in its bin/
};

TEST_F(MainBundle, FindsAResourceBesideTheProgram) {
    const auto file = Put(root / "bin/resources/texture.png");
    EXPECT_EQ(Ask(program, "texture", "png"), file.string());
}

TEST_F(MainBundle, FindsAnInstalledResource) {
    const auto file = Put(root / "share/program/texture.png");
    EXPECT_EQ(Ask(program, "texture", "png"), file.string());
}

TEST_F(MainBundle, FindsWhatProgramsOfOneFamilyShare) {
    program = Install(root / "bin", "family-member-b");
    const auto shared = Put(root / "share/family/texture.png");
    EXPECT_EQ(Ask(program, "texture", "png"), shared.string());
    const auto own = Put(root / "share/family-member-b/texture.png");
    EXPECT_EQ(Ask(program, "texture", "png"), own.string());
}

TEST_F(MainBundle, WithoutAFamilySharesNothing) {
    program = Install(root / "bin", "-b");
    Put(root / "share/texture.png");
    EXPECT_EQ(Ask(program, "texture", "png"), "no URL");
}

TEST_F(MainBundle, PrefersTheFolderBesideTheProgram) {
    Put(root / "share/program/texture.png");
    const auto file = Put(root / "bin/resources/texture.png");
    EXPECT_EQ(Ask(program, "texture", "png"), file.string());
}

TEST_F(MainBundle, LooksIntoOneFolderOnly) {
    Put(root / "share/program/texture.png");
    Put(root / "bin/resources/other.png");
    EXPECT_EQ(Ask(program, "texture", "png"), "no URL");
}

TEST_F(MainBundle, AFileNamedResourcesIsNoFolderOfThem) {
    Put(root / "bin/resources");
    const auto file = Put(root / "share/program/texture.png");
    EXPECT_EQ(Ask(program, "texture", "png"), file.string());
}

TEST_F(MainBundle, WithoutAFolderHasNoUrls) {
    EXPECT_EQ(Ask(program, "texture", "png"), "no URL");
}

TEST_F(MainBundle, AMissingResourceHasNoUrl) {
    Put(root / "bin/resources/texture.png");
    EXPECT_EQ(Ask(program, "textur", "png"), "no URL");
    EXPECT_EQ(Ask(program, "texture", "mp3"), "no URL");
    EXPECT_EQ(Ask(program, "Texture", "png"), "no URL");
}

constexpr const char* standardError = "2>&1 >/dev/null";

TEST_F(MainBundle, SaysWhichResourceIsMissingFromItsFolder) {
    Put(root / "bin/resources/texture.png");
    Put(root / "share/program/music.mp3");
    EXPECT_EQ(Ask(program, "music", "mp3", standardError),
              "program: resource music.mp3 not found; searched " +
                  (root / "bin/resources").string() + "\n");
}

TEST_F(MainBundle, SaysWhereItLookedForAFolder) {
    program = Install(root / "bin", "family-member");
    const auto folders = (root / "bin/resources").string() + ", " +
                         (root / "share/family-member").string() + ", " +
                         (root / "share/family").string();
    const auto line =
        "family-member: resource kj\u00F8re.png not found; searched " + folders + "\n";
    EXPECT_EQ(Ask(program, "kj\xBFre", "png", standardError), line);
    Put(root / "share/family/texture.png");
    EXPECT_EQ(Ask(program, "kj\xBFre", "png", standardError), line);
}

TEST_F(MainBundle, SaysWhyAResourceCannotBeReached) {
    const auto folder = root / "bin/resources";
    fs::create_directories(folder);
    fs::create_symlink("loop.png", folder / "loop.png");
    EXPECT_EQ(Ask(program, "loop", "png", standardError),
              "program: resource loop.png cannot be reached in " + folder.string() +
                  ": Too many levels of symbolic links\n");
    const std::string name(252, 'n');
    EXPECT_EQ(Ask(program, name, "png", standardError),
              "program: resource " + name + ".png cannot be reached in " + folder.string() +
                  ": File name too long\n");
}

TEST_F(MainBundle, SaysWhyAFolderCannotBeSearched) {
    const auto folder = root / "bin/resources";
    fs::create_symlink("resources", folder);
    EXPECT_EQ(Ask(program, "a", "png", standardError),
              "program: resource a.png not found; searched " + folder.string() +
                  " (Too many levels of symbolic links), " + (root / "share/program").string() +
                  "\n");
}

TEST_F(MainBundle, SaysThatAPathIsTooLong) {
    const auto folder = FolderForPathOf(1024);
    program = Install(folder);
    const auto file = Put(folder / "resources/a.b");
    EXPECT_EQ(Ask(program, "a", "b", standardError),
              "program: resource " + file.string() +
                  " has a path of 1024 bytes, more than the 1023 that are possible\n");
}

TEST_F(MainBundle, SaysThatANameCannotBeConverted) {
    const auto* name =
        CFStringCreateWithCString(kCFAllocatorDefault, "\xFF", kCFStringEncodingUTF8);
    if (name != nullptr) {
        CFRelease(name);
        FAIL() << "it can be";
    }
    testing::internal::CaptureStderr();
    EXPECT_EQ(CFBundleCopyResourceURL(CFBundleGetMainBundle(), name, nullptr, nullptr), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "test_CoreFoundation: resource (unknown) not found: its name cannot be converted\n");
}

TEST_F(MainBundle, SaysNothingOfAResourceThatIsThere) {
    Put(root / "bin/resources/texture.png");
    EXPECT_EQ(Ask(program, "texture", "png", standardError), "");
}

TEST_F(MainBundle, HasNoSubdirectories) {
    Put(root / "bin/resources/texture.png");
    Put(root / "bin/resources/there/texture.png");
    EXPECT_EQ(Ask(program, "texture", "png", "there 2>&-"), "no URL");
}

TEST_F(MainBundle, DoesNotLookIntoTheWorkingDirectory) {
    Put(root / "texture.png");
    Put(root / "resources/texture.png");
    EXPECT_EQ(Ask(program, "texture", "png"), "no URL");
}

TEST_F(MainBundle, IsThatOfTheProgramNotOfALinkToIt) {
    const auto file = Put(root / "bin/resources/texture.png");
    Put(root / "elsewhere/resources/texture.png");
    fs::create_symlink(program, root / "elsewhere/link");
    EXPECT_EQ(Ask(root / "elsewhere/link", "texture", "png"), file.string());
}

TEST_F(MainBundle, FolderMayBeALink) {
    Put(root / "pictures/texture.png");
    fs::create_directory_symlink(root / "pictures", root / "bin/resources");
    EXPECT_EQ(Ask(program, "texture", "png"), (root / "bin/resources/texture.png").string());
}

TEST_F(MainBundle, PathsKeepSpacesAndLetters) {
    program = Install(root / "my s\u00F8k \u65E5");
    const auto file = Put(root / "my s\u00F8k \u65E5/resources/a texture.png");
    EXPECT_EQ(Ask(program, "a texture", "png"), file.string());
}

TEST_F(MainBundle, PathsKeepBytesThatAreNoLetters) {
    program = Install(root / "s\xF8k");
    const auto file = Put(root / "s\xF8k/resources/texture.png");
    EXPECT_EQ(Ask(program, "texture", "png"), file.string());
}

TEST_F(MainBundle, NamesAreTurnedIntoUtf8) {
    const auto file = Put(root / "bin/resources/kj\u00F8re.png");
    EXPECT_EQ(Ask(program, "kj\xBFre", "png"), file.string());
}

TEST_F(MainBundle, AFolderHasAUrl) {
    fs::create_directories(root / "bin/resources/texture.png");
    EXPECT_EQ(Ask(program, "texture", "png"), (root / "bin/resources/texture.png").string());
}

TEST_F(MainBundle, AnUnreadableFileHasAUrl) {
    const auto file = Put(root / "bin/resources/texture.png");
    fs::permissions(file, fs::perms::none);
    EXPECT_EQ(Ask(program, "texture", "png"), file.string());
}

TEST_F(MainBundle, ALinkToAFileHasAUrl) {
    Put(root / "picture");
    fs::create_directories(root / "bin/resources");
    fs::create_symlink(root / "picture", root / "bin/resources/texture.png");
    EXPECT_EQ(Ask(program, "texture", "png"), (root / "bin/resources/texture.png").string());
}

TEST_F(MainBundle, ALinkToNothingHasNoUrl) {
    fs::create_directories(root / "bin/resources");
    fs::create_symlink(root / "nothing", root / "bin/resources/texture.png");
    EXPECT_EQ(Ask(program, "texture", "png"), "no URL");
}

TEST_F(MainBundle, APathOf1023BytesIsRepresented) {
    const auto folder = FolderForPathOf(1023);
    program = Install(folder);
    const auto file = Put(folder / "resources/a.b");
    ASSERT_EQ(file.string().size(), 1023U);
    EXPECT_EQ(Ask(program, "a", "b"), file.string());
}

TEST_F(MainBundle, APathOf1024BytesIsNotCutShort) {
    const auto folder = FolderForPathOf(1024);
    program = Install(folder);
    const auto file = Put(folder / "resources/a.b");
    ASSERT_EQ(file.string().size(), 1024U);
    EXPECT_EQ(Ask(program, "a", "b"), "no path");
}

} // namespace
