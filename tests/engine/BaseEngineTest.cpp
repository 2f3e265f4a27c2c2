// Where the engine finds its files.
#include "BaseEngine.h"

#include "Bundle.h"
#include "Effects.h"
#include "Fixture.h"

#include <string>

namespace {

using doubles::EffectsOf;
using doubles::Lines;

constexpr char warning[] = "WARNING: CFURLGetFileSystemRepresentation returned FALSE\n";

class BaseEngineTest : public doubles::Fixture {
protected:
    std::string Find(const std::string& name, const std::string& type) {
        std::string path;
        printed =
            doubles::OutputOf([&] { path = engine::BaseEngine().GetFileFromBundle(name, type); });
        return path;
    }

    std::string printed; // by Find
};

TEST_F(BaseEngineTest, TakesTheMainBundle) {
    CFBundleRef bundle = nullptr;
    EXPECT_EQ(EffectsOf([&] { bundle = engine::BaseEngine().bundle; }),
              Lines({"CFBundleGetMainBundle()"}));
    EXPECT_EQ(bundle, CFBundleGetMainBundle());
}

TEST_F(BaseEngineTest, FindsAResourceAndReleasesWhatItMadeForThat) {
    engine::BaseEngine base;
    std::string path;
    EXPECT_EQ(
        EffectsOf([&] { path = base.GetFileFromBundle("texture", "png"); }),
        Lines({
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "texture", kCFStringEncodingMacRoman))",
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "png", kCFStringEncodingMacRoman))",
            R"(CFBundleCopyResourceURL(main bundle, "texture", "png", null))",
            R"(CFURLGetFileSystemRepresentation("/resources/texture.png", true, 1024))",
            R"(CFRelease("texture"))",
            R"(CFRelease("png"))",
            R"(CFRelease("/resources/texture.png"))",
        }));
    EXPECT_EQ(path, "/resources/texture.png");
}

TEST_F(BaseEngineTest, MissingResourceGivesAnEmptyPathAndReleasesNoNullReference) {
    engine::BaseEngine base;
    std::string path = "none";
    EXPECT_EQ(
        EffectsOf([&] { path = base.GetFileFromBundle("absent", "png"); }),
        Lines({
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "absent", kCFStringEncodingMacRoman))",
            R"(CFStringCreateWithCString(kCFAllocatorDefault, "png", kCFStringEncodingMacRoman))",
            R"(CFBundleCopyResourceURL(main bundle, "absent", "png", null))",
            R"(CFURLGetFileSystemRepresentation(null, true, 1024))",
            R"(print "WARNING: CFURLGetFileSystemRepresentation returned FALSE\n")",
            R"(CFRelease("absent"))",
            R"(CFRelease("png"))",
        }));
    EXPECT_EQ(path, "");
}

TEST_F(BaseEngineTest, PathOf1023BytesIsGivenWhole) {
    const std::string path = "/" + std::string(1022, 'a');
    doubles::bundle.paths["long.png"] = path;
    EXPECT_EQ(Find("long", "png"), path);
    EXPECT_EQ(printed, "");
}

TEST_F(BaseEngineTest, PathOf1024BytesIsAFailure) {
    doubles::bundle.paths["long.png"] = "/" + std::string(1023, 'a');
    EXPECT_EQ(Find("long", "png"), "");
    EXPECT_EQ(printed, warning);
    EXPECT_EQ(doubles::UnreleasedObjects(), 0U);
}

} // namespace
